/// A test on the headless backend that fails when it leaves work behind; brings what most tests need besides.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "corvane/agent_view/script_bridge.h"
#include "corvane/minimized/minimized_store.h"
#include "corvane/platform/headless/headless_backend.h"
#include "tests/support/reset_context.h"

namespace corvane {

class HeadlessTest : public testing::Test {
 protected:
  using Log = std::vector<std::string>;

  void TearDown() override {
    resetContext();
    MinimizedStore::shared().setAgentView(nullptr);
    MinimizedStore::shared().setRestoreAction(nullptr);
    EXPECT_EQ(backend_->runLoop().pendingTaskCount(), 0U) << "work was left behind";
  }

  headless::Backend& backend() { return *backend_; }
  headless::VirtualRunLoop& loop() { return backend_->runLoop(); }
  /// The page of a view posts a message.
  static void post(const UIView& view, std::string_view message) {
    headless::HeadlessWebEngine::of(view)->postMessage(agentEventChannel, message);
  }
  static constexpr std::string_view callIsRunning =
      R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})";
  static constexpr std::string_view minimizeRequest = R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})";
  /// What the test has noted since the last time.
  Log takeLog() { return std::exchange(log_, {}); }

  Log log_;

 private:
  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
};

}  // namespace corvane
