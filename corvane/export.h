/// What every public header needs of the compiler: the language, and the marks of what is exported and borrowed.
#pragma once

#if !defined(__cplusplus) || __cplusplus < 202100L
#error "Corvane's headers need C++23: compile with -std=c++23"
#endif

/// Everything is hidden unless it carries this mark.
#define CORVANE_EXPORT __attribute__((visibility("default")))

/// For members of exported classes that nobody outside may need: they would be exported, too, unless they are inlined.
#define CORVANE_HIDDEN __attribute__((visibility("hidden")))

/// For what borrows from an object or a parameter: compilers that know the mark warn where the lender ends too early.
#if defined(__has_cpp_attribute) && __has_cpp_attribute(clang::lifetimebound)
#define CORVANE_LIFETIMEBOUND [[clang::lifetimebound]]
#else
#define CORVANE_LIFETIMEBOUND
#endif
