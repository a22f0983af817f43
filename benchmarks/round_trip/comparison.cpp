#include "benchmarks/round_trip/comparison.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <random>
#include <utility>

namespace corvane::benchmarks {

namespace {

using Clock = std::chrono::steady_clock;
using Seconds = std::chrono::duration<double>;

constexpr int requestsInTurn = 50;
constexpr auto givingUpAfter = std::chrono::seconds(60);

/// What this thread has kept a processor busy for.
Seconds threadTime() {
  timespec now{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::nanoseconds(now.tv_nsec);
}

/// How long each request took, and all of them.
class Figures {
 public:
  Figures(Asker& asker, const Iterate& iterate) : asker_(asker), iterate_(iterate) {}

  /// Asks a few times in a row.
  void takeTurn() {
    const auto begin = Clock::now();
    const auto threadBegin = threadTime();
    int left = requestsInTurn;
    ask(left);
    runUntil(iterate_, [&] { return left == 0; });
    threadTimes_.push_back((threadTime() - threadBegin) / requestsInTurn);
    total_ += Clock::now() - begin;
  }
  /// Forgets what was measured.
  void restart() {
    times_.clear();
    threadTimes_.clear();
    total_ = {};
  }

  [[nodiscard]] double perSecond() const { return static_cast<double>(times_.size()) / total_.count(); }
  /// In microseconds, of the wall's time for a request.
  [[nodiscard]] double percentile(double share) { return percentileOf(times_, share); }
  /// In microseconds, of the main thread's for a request in a turn.
  [[nodiscard]] double threadMedian() { return percentileOf(threadTimes_, 0.5); }

 private:
  static double percentileOf(std::vector<Seconds>& times, double share) {
    std::ranges::sort(times);
    const auto last = static_cast<double>(times.size() - 1);
    return times[static_cast<std::size_t>(share * last)].count() * 1e6;
  }

  void ask(int& left) {
    asker_.ask([this, &left, begin = Clock::now()] {
      times_.emplace_back(Clock::now() - begin);
      if (--left > 0) ask(left);
    });
  }

  Asker& asker_;
  const Iterate& iterate_;
  std::vector<Seconds> times_;
  std::vector<Seconds> threadTimes_;
  Seconds total_{};
};

}  // namespace

bool areReady(const std::vector<Contestant>& contestants) {
  return std::ranges::all_of(contestants, [](const Contestant& contestant) { return contestant.asker.isReady(); });
}

void runUntil(const Iterate& iterate, const std::function<bool()>& condition) {
  const auto end = Clock::now() + givingUpAfter;
  while (!condition()) {
    if (Clock::now() > end) {
      std::puts("the page does not answer");
      std::exit(1);
    }
    iterate();
  }
}

void compare(const std::vector<Contestant>& contestants, std::size_t payloadSize, int rounds, const Iterate& iterate) {
  std::vector<Figures> figures;
  std::vector<std::size_t> order;
  for (const Contestant& contestant : contestants) {
    contestant.asker.setPayload(std::string(payloadSize, 'S'));
    order.push_back(figures.size());
    Figures& own = figures.emplace_back(contestant.asker, iterate);
    // The page's scripts are compiled in the meantime.
    for (int turn = 0; turn < 4; ++turn) own.takeTurn();
    own.restart();
  }
  // What one leaves behind, such as timers, must not always meet the same other one.
  std::mt19937 random(1);
  for (int round = 0; round < rounds; ++round) {
    std::ranges::shuffle(order, random);
    for (const std::size_t index : order) figures[index].takeTurn();
  }
  std::printf("round trip with %zu bytes, %d requests each\n", payloadSize, rounds * requestsInTurn);
  for (std::size_t index = 0; index < contestants.size(); ++index) {
    Figures& own = figures[index];
    Figures& least = figures.back();
    std::printf(
        "  %-28s p50 %7.1f us   p99 %7.1f us   main thread %7.1f us   %6.0f requests/s   ratio %.3f, main thread "
        "%.3f\n",
        contestants[index].name.c_str(), own.percentile(0.5), own.percentile(0.99), own.threadMedian(), own.perSecond(),
        own.percentile(0.5) / least.percentile(0.5), own.threadMedian() / least.threadMedian());
  }
}

void compareAll(const std::vector<Contestant>& contestants, const Iterate& iterate) {
  compare(contestants, 100, 100, iterate);
  compare(contestants, 64UZ * 1024, 40, iterate);
}

}  // namespace corvane::benchmarks
