/// A test that runs on every backend, with agent views whose events it notes.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tests/contract/contract_platform.h"
#include "tests/support/outcome_text.h"

namespace corvane::contract {

class ContractTest : public testing::TestWithParam<PlatformMaker> {
 protected:
  using Texts = std::vector<std::string>;

  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
  }
  void TearDown() override {
    MinimizedState::shared().remove();
    MinimizedState::shared().resetRestoreAction();
  }

  /// A view on screen, of which nothing is loaded yet.
  std::shared_ptr<VelnorAgentView> makeView(PageKind kind) {
    auto view = VelnorAgentView::create(Region::custom(platform_->address(kind)), "shop 42+", /*enableSSO=*/false);
    view->setFrame({{0, 0}, {390, 844}});
    view->setEventHandler([this](const AgentEvent& event) { events_.push_back(encodeJson(event)); });
    platform_->show(view);
    return view;
  }
  void beginCall(VelnorAgentView& view) {
    platform_->pagePostsValue(view,
                              R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
    EXPECT_TRUE(platform_->runUntil([&] { return view.callSessionStatus() == CallSessionStatus::running; }));
  }
  bool hasEvent(const std::string& event) const { return std::ranges::count(events_, event) > 0; }
  bool waitFor(const std::string& event) {
    return platform_->runUntil([&] { return hasEvent(event); });
  }
  /// What an operation, called with a completion, comes to.
  template <class Operation>
  std::string outcomeOf(Operation operation) {
    std::string text;
    operation([&text](const auto& outcome) { text = outcomeText(outcome); });
    EXPECT_TRUE(platform_->runUntil([&] { return !text.empty(); }));
    return text;
  }
  Texts takeEvents() { return std::exchange(events_, {}); }

  Texts events_;
  std::unique_ptr<ContractPlatform> platform_;
};

inline std::string nameOf(const testing::TestParamInfo<PlatformMaker>& parameter) { return parameter.param.name; }

}  // namespace corvane::contract
