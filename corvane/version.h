/// Which version of Corvane an app is compiled with.
#pragma once

// Apps compare them in their preprocessor.
// NOLINTBEGIN(modernize-macro-to-enum)

/// The build reads the project's version from these three.
#define CORVANE_VERSION_MAJOR 0
#define CORVANE_VERSION_MINOR 1
#define CORVANE_VERSION_PATCH 0

/// For comparisons: `#if CORVANE_VERSION >= CORVANE_VERSION_NUMBER(0, 2, 0)`.
#define CORVANE_VERSION_NUMBER(major, minor, patch) ((major) * 1000000 + (minor) * 1000 + (patch))
#define CORVANE_VERSION CORVANE_VERSION_NUMBER(CORVANE_VERSION_MAJOR, CORVANE_VERSION_MINOR, CORVANE_VERSION_PATCH)

// NOLINTEND(modernize-macro-to-enum)
