/// The one macro that marks what the shared libraries offer to others.
#pragma once

/// Everything is hidden unless it carries this mark.
#define CORVANE_EXPORT __attribute__((visibility("default")))
