/// Waiting in tests for what happens on the GLib default main context.
#pragma once

#include <glib.h>

#include <chrono>

namespace corvane::test {

/// Runs the main context until the condition holds. Gives up, with false, far beyond what anything here takes. What
/// does one iteration, and says whether there was something to do, may be a toolkit's own.
template <class Condition, class Iterate>
[[nodiscard]] bool runMainContextUntil(const Condition& condition, const Iterate& iterate) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
  // Wakes the context up when nothing else does, so that waiting can be given up.
  const guint ticker = g_timeout_add(50, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
  bool holds = condition();
  while (!holds && std::chrono::steady_clock::now() < end) {
    // A condition that takes long must not keep the rest of the loop from its turns.
    iterate(true);
    for (int turn = 0; turn < 50 && iterate(false); ++turn) {
    }
    holds = condition();
  }
  g_source_remove(ticker);
  return holds;
}

template <class Condition>
[[nodiscard]] bool runMainContextUntil(const Condition& condition) {
  return runMainContextUntil(condition,
                             [](bool mayBlock) { return g_main_context_iteration(nullptr, mayBlock) != FALSE; });
}

}  // namespace corvane::test
