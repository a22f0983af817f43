/// What every run loop on a toolkit's own event loop must do. Each toolkit's tests instantiate it for its loop.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "corvane/platform/foundation/run_loop.h"
#include "tests/support/main_context.h"

namespace corvane::test {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

template <class Loop>
class RealRunLoop : public testing::Test {};
TYPED_TEST_SUITE_P(RealRunLoop);

TYPED_TEST_P(RealRunLoop, RunsTasksInOrderAndWhatTheyPostInALaterTurn) {
  TypeParam loop;
  Log log;
  loop.post([&] {
    log.emplace_back("first");
    loop.post([&] { log.emplace_back("posted by the first"); });
  });
  loop.post([&] { log.emplace_back("second"); });
  EXPECT_EQ(log, Log{}) << "never inside the call";
  g_main_context_iteration(nullptr, FALSE);
  EXPECT_EQ(log, (Log{"first", "second"})) << "input and pages get their turns in between";
  ASSERT_TRUE(runMainContextUntil([&] { return log.size() == 3; }));
  EXPECT_EQ(log.back(), "posted by the first");
}

TYPED_TEST_P(RealRunLoop, RunsTimersInTheOrderOfTheirTimesAndNeverEarly) {
  TypeParam loop;
  Log log;
  bool isEarly = false;
  const auto schedule = [&](std::string name, std::chrono::nanoseconds delay) {
    loop.schedule(delay, [&, name, due = loop.now() + delay] {
      isEarly = isEarly || loop.now() < due;
      log.push_back(name);
    });
  };
  schedule("late", 12ms);
  schedule("first of two", 10ms);
  schedule("overdue", -1s);
  loop.schedule(RunLoop::Time::max(), [&] { log.emplace_back("at the end of time"); });
  loop.schedule(10ms, [&] {
    schedule("added by a timer", 20ms);
    log.emplace_back("second of two");
  });
  loop.post([&] { log.emplace_back("posted"); });
  ASSERT_TRUE(runMainContextUntil([&] { return log.size() == 6; }));
  EXPECT_EQ(log, (Log{"posted", "overdue", "first of two", "second of two", "late", "added by a timer"}));
  EXPECT_FALSE(isEarly);
}

TYPED_TEST_P(RealRunLoop, OtherThreadsMayPostAndWakeTheMainThread) {
  TypeParam loop;
  std::array<std::vector<int>, 4> arrived;
  bool isOnMainThread = true;
  std::vector<std::jthread> threads;
  for (auto& numbers : arrived) {
    threads.emplace_back([&, main = std::this_thread::get_id()] {
      for (int number = 0; number < 250; ++number) {
        loop.post([&, main, number] {
          isOnMainThread = isOnMainThread && std::this_thread::get_id() == main;
          numbers.push_back(number);
        });
      }
    });
  }
  const auto isComplete = [](const std::vector<int>& numbers) { return numbers.size() == 250; };
  ASSERT_TRUE(runMainContextUntil([&] { return std::ranges::all_of(arrived, isComplete); }));
  EXPECT_TRUE(isOnMainThread);
  for (const auto& numbers : arrived) EXPECT_TRUE(std::ranges::is_sorted(numbers));
}

TYPED_TEST_P(RealRunLoop, ATaskMayRunTheMainContextItself) {
  TypeParam loop;
  Log log;
  loop.post([&] {
    loop.post([&] { log.emplace_back("posted inside"); });
    loop.schedule(1ms, [&] { log.emplace_back("timer inside"); });
    EXPECT_TRUE(runMainContextUntil([&] { return log.size() == 3; }));
    log.emplace_back("outer");
  });
  loop.post([&] { log.emplace_back("waiting"); });
  ASSERT_TRUE(runMainContextUntil([&] { return log.size() == 4; }));
  EXPECT_EQ(log, (Log{"waiting", "posted inside", "timer inside", "outer"}));
}

/// What a task holds may ask for more work when it ends.
struct PostsAtItsEnd {
  RunLoop& loop;
  std::shared_ptr<bool> hasRun;
  ~PostsAtItsEnd() {
    loop.post([hasRun = hasRun] { *hasRun = true; });
  }
};

TYPED_TEST_P(RealRunLoop, DestroysWhatHasNotRunWhenItEndsAlsoInsideATask) {
  for (const bool isInsideTask : {false, true}) {
    TypeParam loop;
    const auto hasRun = std::make_shared<bool>(false);
    const auto note = [hasRun] { *hasRun = true; };
    const auto before = hasRun.use_count();
    if (isInsideTask) loop.post([&] { loop.end(); });
    loop.post([note, last = std::make_unique<PostsAtItsEnd>(loop, hasRun)] { note(); });
    loop.schedule(0s, note);
    EXPECT_GT(hasRun.use_count(), before);
    if (!isInsideTask) loop.end();
    ASSERT_TRUE(runMainContextUntil([&] { return hasRun.use_count() == before; }));
    loop.post(note);
    loop.schedule(0s, note);
    EXPECT_EQ(hasRun.use_count(), before);
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
    EXPECT_FALSE(*hasRun);
  }
}

REGISTER_TYPED_TEST_SUITE_P(RealRunLoop, RunsTasksInOrderAndWhatTheyPostInALaterTurn,
                            RunsTimersInTheOrderOfTheirTimesAndNeverEarly, OtherThreadsMayPostAndWakeTheMainThread,
                            ATaskMayRunTheMainContextItself, DestroysWhatHasNotRunWhenItEndsAlsoInsideATask);

}  // namespace corvane::test
