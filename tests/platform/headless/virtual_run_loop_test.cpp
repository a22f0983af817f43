#include "corvane/platform/headless/virtual_run_loop.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace corvane::headless {
namespace {

using namespace std::chrono_literals;

TEST(VirtualRunLoop, RunsTasksAndTimersInOrderAtTheirTimes) {
  VirtualRunLoop loop;
  std::vector<std::string> log;
  const auto note = [&](std::string name) {
    return [&log, &loop, name = std::move(name)] { log.push_back(name + "@" + std::to_string(loop.now() / 1ms)); };
  };
  loop.schedule(20ms, note("late"));
  loop.schedule(10ms, note("first of two"));
  loop.schedule(10ms, note("second of two"));
  loop.schedule(5ms, [&] {
    loop.post(note("posted by a timer"));
    loop.schedule(5ms, note("scheduled by a timer"));
  });
  loop.post(note("posted"));
  EXPECT_TRUE(log.empty()) << "nothing runs by itself";
  loop.runUntilIdle();
  loop.advance(19999us);
  EXPECT_EQ(log, (std::vector<std::string>{"posted@0", "posted by a timer@5", "first of two@10", "second of two@10",
                                           "scheduled by a timer@10"}));
  EXPECT_EQ(loop.pendingTaskCount(), 1U);
  loop.advance(1us);
  EXPECT_EQ(log.back(), "late@20");
  EXPECT_EQ(loop.now(), 20ms);
}

TEST(VirtualRunLoop, TimeNeverRunsBackwardsOrOver) {
  VirtualRunLoop loop;
  bool hasRun = false;
  loop.schedule(RunLoop::Time::max(), [&] { hasRun = true; });
  loop.post([&] { loop.advance(10s); });
  loop.advance(5s);
  EXPECT_EQ(loop.now(), 10s);
  loop.advance(-1s);
  EXPECT_EQ(loop.now(), 10s);
  EXPECT_FALSE(hasRun);
}

}  // namespace
}  // namespace corvane::headless
