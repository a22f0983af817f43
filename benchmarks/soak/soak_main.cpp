// The whole library on the real engine, for minutes: does it keep its promises, and its memory?
#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <string_view>
#include <vector>

#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/parts.h"

namespace corvane::soak {
namespace {

struct Part {
  std::string_view name;
  void (*run)(SoakHost&, const PartOptions&, Checks&);
  /// Whether it runs when none is chosen.
  bool isUsual = true;
};

constexpr std::array parts{Part{"requests", soakRequests},   Part{"views", soakViews},
                           Part{"processes", soakProcesses}, Part{"troubles", soakTroubles},
                           Part{"flood", soakFlood},         Part{"bare-views", soakBareViews, false}};

struct Result {
  std::string_view part;
  std::int64_t checks;
  std::int64_t failures;
  double seconds;
  std::chrono::milliseconds longestGap;
};

int usage() {
  std::puts("usage: corvane_soak [--seed=NUMBER] [--percent=NUMBER] [PART...]");
  for (const Part& part : parts) std::printf("  %s%s\n", part.name.data(), part.isUsual ? "" : "  (only when named)");
  return 2;
}

template <class Number>
bool readOption(std::string_view argument, std::string_view name, Number& value) {
  if (!argument.starts_with(name)) return false;
  argument.remove_prefix(name.size());
  return std::from_chars(argument.data(), argument.data() + argument.size(), value).ec == std::errc();
}

Result run(const Part& part, SoakHost& host, const PartOptions& options) {
  Checks checks(part.name);
  host.gaps().restart();
  const auto begin = std::chrono::steady_clock::now();
  part.run(host, options, checks);
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  return {part.name, checks.count(), checks.failureCount(), seconds.count(), host.gaps().longest()};
}

int runAll(const std::vector<Part>& chosen, const PartOptions& options) {
  std::printf("seed %llu, %d %%\n\n", static_cast<unsigned long long>(options.seed), options.percent);
  auto host = SoakHost::make();
  if (!host) {
    std::printf("soak: skipped. %s\n", host.error().c_str());
    return 0;
  }
  MemoryLog::printHeading();
  std::vector<Result> results;
  for (const Part& part : chosen) results.push_back(run(part, **host, options));
  std::puts("\n| part | checks | failed | seconds | longest gap of the main loop |\n|---|---:|---:|---:|---:|");
  for (const Result& result : results) {
    std::printf("| %s | %lld | %lld | %.0f | %lld ms |\n", result.part.data(), static_cast<long long>(result.checks),
                static_cast<long long>(result.failures), result.seconds,
                static_cast<long long>(result.longestGap.count()));
  }
  return std::ranges::any_of(results, [](const Result& result) { return result.failures > 0; }) ? 1 : 0;
}

}  // namespace
}  // namespace corvane::soak

int main(int count, char** arguments) {
  using namespace corvane::soak;
  PartOptions options;
  std::vector<Part> chosen;
  for (int place = 1; place < count; ++place) {
    const std::string_view argument = arguments[place];
    if (readOption(argument, "--seed=", options.seed) || readOption(argument, "--percent=", options.percent)) continue;
    const auto* const named = std::ranges::find(parts, argument, &Part::name);
    if (named == parts.end()) return usage();
    chosen.push_back(*named);
  }
  if (chosen.empty()) std::ranges::copy_if(parts, std::back_inserter(chosen), &Part::isUsual);
  return runAll(chosen, options);
}
