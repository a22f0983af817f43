#include "corvane/platform/engine/load_tracker.h"

#include <utility>

namespace corvane::engine {

namespace {

constexpr std::string_view blankPage = "about:blank";

}  // namespace

void LoadTracker::loadRequested(std::string url) {
  loadsCancelled();
  awaited_ = AwaitedLoad{.url = std::move(url)};
}

void LoadTracker::loadsCancelled() {
  if (awaited_) awaited_->isSilent = true;
  if (running_) running_->isSilent = true;
  cancelled_.reset();
  isPageHeard_ = false;
}

bool LoadTracker::navigationDecided(std::string_view url) {
  if (awaited_ && awaited_->isSilent) {
    // The engine was told to stop before it began this load. It now never will: what begins next is another one.
    awaited_.reset();
  } else if (awaited_ && awaited_->url == url) {
    awaited_->isDecided = true;
  }
  return cancelled_ && !std::exchange(cancelled_->isReplacementDecided, true);
}

bool LoadTracker::loadStarted() {
  cancelled_.reset();
  if (!awaited_) {
    running_ = RunningLoad{};
    return true;
  }
  if (awaited_->isDecided) {
    running_ = RunningLoad{.requestedUrl = std::move(awaited_->url), .isSilent = awaited_->isSilent};
    awaited_.reset();
  } else {
    running_ = RunningLoad{.requestedUrl = {}, .isSilent = true};
  }
  return false;
}

std::optional<LoadReport> LoadTracker::loadCommitted(std::string_view url) {
  if (!running_) return std::nullopt;
  running_->phase = LoadPhase::committed;
  if (!running_->isSilent) isPageHeard_ = true;
  // The engine shows an empty page, and calls it finished, instead of connecting to a port that browsers must not use.
  const std::string& requested = running_->requestedUrl;
  if (running_->isSilent || requested.empty() || requested == blankPage || url != blankPage) return std::nullopt;
  running_->isSilent = true;
  return LoadFailed{LoadPhase::provisional, {WebError::Kind::cannotLoad, "The address cannot be loaded", requested}};
}

void LoadTracker::documentArrived() {
  if (running_) running_->hasArrived = true;
}

std::optional<LoadReport> LoadTracker::loadFinished() {
  // A load that finishes has always committed; this one is the echo of an earlier load's failure.
  if (!running_ || running_->phase == LoadPhase::provisional) return std::nullopt;
  const bool isSilent = running_->isSilent;
  running_.reset();
  if (isSilent) return std::nullopt;
  return LoadFinished{};
}

std::optional<LoadReport> LoadTracker::loadFailed(LoadPhase phase, WebError error) {
  bool isSilent = true;
  if (running_) {
    isSilent = running_->isSilent;
    running_.reset();
  } else if (awaited_ && awaited_->isDecided) {
    isSilent = awaited_->isSilent;
    awaited_.reset();
  }
  if (isSilent) return std::nullopt;
  LoadFailed failed{phase, std::move(error)};
  if (failed.error.kind != WebError::Kind::cancelled) return failed;
  cancelled_ = CancelledLoad{.failure = std::move(failed)};
  return std::nullopt;
}

std::optional<LoadReport> LoadTracker::settleCancelledLoad() {
  if (!cancelled_) return std::nullopt;
  LoadFailed failed = std::move(cancelled_->failure);
  cancelled_.reset();
  return failed;
}

std::optional<LoadReport> LoadTracker::engineBecameIdle() {
  if (!awaited_ || !awaited_->isDecided) return std::nullopt;
  const bool isSilent = awaited_->isSilent;
  awaited_.reset();
  if (isSilent) return std::nullopt;
  isPageHeard_ = true;
  return LoadFinished{};
}

std::optional<LoadReport> LoadTracker::loadTimedOut() {
  WebError error{WebError::Kind::timedOut, "The server did not answer in time", {}};
  if (awaited_ && !awaited_->isSilent) {
    awaited_->isSilent = true;
    error.failingUrl = awaited_->url;
    return LoadFailed{LoadPhase::provisional, std::move(error)};
  }
  if (running_ && !running_->isSilent) {
    running_->isSilent = true;
    error.failingUrl = running_->requestedUrl;
    return LoadFailed{running_->phase, std::move(error)};
  }
  return std::nullopt;
}

LoadReport LoadTracker::processTerminated(std::string description) {
  LoadFailed failed{LoadPhase::committed, {WebError::Kind::processTerminated, std::move(description), {}}};
  if (awaited_ && !awaited_->isSilent) {
    failed.phase = LoadPhase::provisional;
    failed.error.failingUrl = std::move(awaited_->url);
  } else if (running_ && !running_->isSilent) {
    failed.phase = running_->phase;
    failed.error.failingUrl = std::move(running_->requestedUrl);
  }
  awaited_.reset();
  running_.reset();
  cancelled_.reset();
  return failed;
}

bool LoadTracker::isDocumentAwaited() const {
  return (awaited_ && !awaited_->isSilent) || (running_ && !running_->isSilent && !running_->hasArrived);
}

std::string LoadTracker::hostUrl() const {
  if (awaited_) return awaited_->url;
  return running_ ? running_->requestedUrl : std::string();
}

bool LoadTracker::isHostWaiting() const {
  const bool isRunning = running_ && running_->phase == LoadPhase::provisional && !running_->requestedUrl.empty();
  return (awaited_ && !awaited_->isSilent) || (isRunning && !running_->isSilent);
}

}  // namespace corvane::engine
