/// The one macro that marks what the shared libraries offer to others.
#pragma once

/// Everything is hidden unless it carries this mark.
#define CORVANE_EXPORT __attribute__((visibility("default")))

/// For members of exported classes that nobody outside may need: they would be exported, too, unless they are inlined.
#define CORVANE_HIDDEN __attribute__((visibility("hidden")))
