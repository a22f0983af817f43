#include "corvane/platform/engine/load_tracker.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <map>
#include <ranges>
#include <string>
#include <vector>

namespace corvane::engine {
namespace {

std::string describe(const LoadReport& report) {
  constexpr std::array kinds{"cannotLoad", "timedOut", "insecureServer", "cancelled", "processTerminated"};
  const auto* failed = std::get_if<LoadFailed>(&report);
  if (failed == nullptr) return "finished";
  const std::string phase = failed->phase == LoadPhase::provisional ? "provisional " : "committed ";
  return phase + kinds.at(static_cast<std::size_t>(failed->error.kind));
}

/// Plays the host and the engine, step by step, and gives what there was to report. A step may have an address behind
/// a colon.
std::string play(std::string_view steps) {
  using Report = std::optional<LoadReport>;
  LoadTracker tracker;
  const auto failing = [&](LoadPhase phase, WebError::Kind kind) {
    return [&tracker, phase, kind](const std::string&) { return tracker.loadFailed(phase, {.kind = kind}); };
  };
  using enum LoadPhase;
  const std::map<std::string, std::function<Report(const std::string&)>> meanings{
      {"ask", [&](const std::string& url) { return tracker.loadRequested(url), Report(); }},
      {"refuse", [&](const std::string&) { return tracker.loadsCancelled(), Report(); }},
      {"decide", [&](const std::string& url) { return static_cast<void>(tracker.navigationDecided(url)), Report(); }},
      {"start", [&](const std::string&) { return static_cast<void>(tracker.loadStarted()), Report(); }},
      {"arrive", [&](const std::string&) { return tracker.documentArrived(), Report(); }},
      {"commit", [&](const std::string& url) { return tracker.loadCommitted(url); }},
      {"finish", [&](const std::string&) { return tracker.loadFinished(); }},
      {"fail", failing(provisional, WebError::Kind::cannotLoad)},
      {"breakOff", failing(committed, WebError::Kind::cannotLoad)},
      {"cancel", failing(provisional, WebError::Kind::cancelled)},
      {"cancelLate", failing(committed, WebError::Kind::cancelled)},
      {"settle", [&](const std::string&) { return tracker.settleCancelledLoad(); }},
      {"idle", [&](const std::string&) { return tracker.engineBecameIdle(); }},
      {"timeOut", [&](const std::string&) { return tracker.loadTimedOut(); }},
      {"crash", [&](const std::string&) { return Report(tracker.processTerminated("")); }},
  };
  std::string reports;
  for (const auto part : std::views::split(steps, ' ')) {
    const std::string step(part.begin(), part.end());
    const std::size_t colon = step.find(':');
    if (step == "listen") {
      reports += tracker.isPageHeard() ? " heard" : " unheard";
      continue;
    }
    const Report report = meanings.at(step.substr(0, colon))(colon == step.npos ? "" : step.substr(colon + 1));
    if (report) reports += (reports.empty() ? "" : ", ") + describe(*report);
  }
  return reports + (tracker.isDocumentAwaited() ? " ..." : "");
}

struct Row {
  std::string_view steps;
  std::string_view reports;
};

void expectAll(const std::vector<Row>& rows) {
  for (const Row& row : rows) EXPECT_EQ(play(row.steps), row.reports) << row.steps;
}

TEST(LoadTracker, EveryLoadOfTheHostAndOfThePageIsReportedOnce) {
  // The engine says "finished" after each failure, too.
  expectAll({
      {"ask:a decide:a start commit:a", " ..."},
      {"ask:a decide:a start commit:a finish finish", "finished"},
      {"ask:a decide:a start fail finish", "provisional cannotLoad"},
      {"ask:a decide:a start finish", " ..."},
      {"ask:a decide:a fail finish", "provisional cannotLoad"},
      {"ask:a decide:a start commit:a breakOff finish", "committed cannotLoad"},
      {"decide:a start commit:a finish decide:b start fail finish", "finished, provisional cannotLoad"},
  });
}

TEST(LoadTracker, ALoadThatTheHostReplacesEndsInSilenceWhereverItStood) {
  for (const std::string first :
       {"ask:a ask:b", "ask:a decide:a ask:b start cancel finish", "ask:a decide:a start ask:b cancel finish settle",
        "ask:a decide:a start ask:b fail finish", "ask:a decide:a start commit:a ask:b finish",
        "ask:a decide:a start cancel ask:b finish settle", "ask:a decide:a start commit:a ask:b decide:b cancelLate"}) {
    EXPECT_EQ(play(first), " ...") << first;
    EXPECT_EQ(play(first + " decide:b start commit:b finish"), "finished") << first;
  }
}

TEST(LoadTracker, ACancelledLoadIsReportedUnlessThePageHasReplacedIt) {
  expectAll({
      {"ask:a decide:a start cancel finish", ""},
      {"ask:a decide:a start cancel finish settle settle", "provisional cancelled"},
      {"ask:a decide:a start commit:a decide:b cancelLate finish start settle commit:b finish", "finished"},
      {"ask:a decide:a start cancel finish decide:b start settle commit:b finish", "finished"},
      // The decision was about a frame inside the page.
      {"ask:a decide:a start cancel finish decide:b settle", "provisional cancelled"},
  });
  LoadTracker tracker;
  EXPECT_TRUE(tracker.loadStarted());
  EXPECT_FALSE(tracker.navigationDecided("b"));
  EXPECT_FALSE(tracker.loadFailed(LoadPhase::provisional, {.kind = WebError::Kind::cancelled}));
  EXPECT_TRUE(tracker.hasCancelledLoad());
  EXPECT_TRUE(tracker.navigationDecided("b"));
  EXPECT_FALSE(tracker.navigationDecided("b")) << "a page cannot put the report off again and again";
}

TEST(LoadTracker, ALoadThatWasGivenUpIsReportedOnceAndSilencesNoOther) {
  const std::string next = " decide:b start commit:b finish";
  for (const std::string late : {"", " decide:a", " decide:a idle", " timeOut"}) {
    EXPECT_EQ(play("ask:a timeOut" + late), "provisional timedOut") << late;
    EXPECT_EQ(play("ask:a timeOut" + late + next), "provisional timedOut, finished") << late;
    EXPECT_EQ(play("ask:a refuse" + late + next), "finished") << late;
  }
  expectAll({
      {"ask:a decide:a timeOut start cancel finish settle" + next, "provisional timedOut, finished"},
      {"ask:a decide:a start timeOut cancel finish settle" + next, "provisional timedOut, finished"},
      {"ask:a decide:a start commit:a timeOut cancelLate finish settle" + next, "committed timedOut, finished"},
  });
}

TEST(LoadTracker, WhatThePreviousPagePostsIsNotHeard) {
  expectAll({
      {"ask:a decide:a start commit:a arrive finish listen ask:b listen decide:b start listen commit:b listen arrive",
       "finished heard unheard unheard heard"},
      {"ask:a decide:a start ask:b commit:a listen decide:b start commit:b listen", " unheard heard ..."},
      {"ask:a#b listen decide:a#b idle listen", " unheard, finished heard"},
      {"refuse listen decide:c start commit:c listen", " unheard heard ..."},
  });
}

TEST(LoadTracker, AMoveInsideThePageFinishesWhenTheEngineIsIdle) {
  expectAll({
      {"ask:a#b decide:a#b idle idle", "finished"},
      {"ask:a#b idle decide:c idle", " ..."},
  });
}

TEST(LoadTracker, AnEmptyPageInPlaceOfTheWantedOneIsAFailure) {
  expectAll({
      {"ask:a decide:a start commit:about:blank finish", "provisional cannotLoad"},
      {"ask:about:blank decide:about:blank start commit:about:blank finish", "finished"},
      {"decide:about:blank start commit:about:blank finish", "finished"},
  });
}

TEST(LoadTracker, ALostProcessEndsEveryLoadWithOneFailure) {
  expectAll({
      {"crash finish", "committed processTerminated"},
      {"ask:a crash finish", "provisional processTerminated"},
      {"ask:a decide:a start crash finish", "provisional processTerminated"},
      {"ask:a decide:a start commit:a crash finish", "committed processTerminated"},
      {"ask:a decide:a start cancel crash settle", "committed processTerminated"},
      {"ask:a crash ask:b decide:b start commit:b finish", "provisional processTerminated, finished"},
  });
}

}  // namespace
}  // namespace corvane::engine
