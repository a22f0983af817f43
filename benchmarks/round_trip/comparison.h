/// Who asks how fast, in one run.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/round_trip/askers.h"

namespace corvane::benchmarks {

struct Contestant {
  std::string name;
  Asker& asker;
};

/// The library first and the least last; `bare` has one of each effort, the greatest first.
[[nodiscard]] std::vector<Contestant> contestantsOf(Asker& ours, auto& bare) {
  return {{"corvane", ours},
          {"bare, a turn later", bare[0]},
          {"bare, reads", bare[1]},
          {"bare, new text", bare[2]},
          {"bare", bare[3]}};
}
[[nodiscard]] bool areReady(const std::vector<Contestant>& contestants);

/// One turn of the main loop, which waits where there is nothing to do.
using Iterate = std::function<void()>;

/// Ends the program where the page does not answer.
void runUntil(const Iterate& iterate, const std::function<bool()>& condition);
/// Lets all ask in short turns, in another random order each round, and prints what they needed. What the processor
/// does when it is idle changes the figures more than anything of ours. Ratios are those to the last contestant.
void compare(const std::vector<Contestant>& contestants, std::size_t payloadSize, int rounds, const Iterate& iterate);
/// Both sizes that the figures are kept for.
void compareAll(const std::vector<Contestant>& contestants, const Iterate& iterate);

}  // namespace corvane::benchmarks
