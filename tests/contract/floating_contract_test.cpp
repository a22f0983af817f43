// What host apps may rely on when the call floats, whichever backend carries the framework.
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "tests/contract/contract_platform.h"
#include "tests/support/outcome_text.h"
#include "tests/support/print_events.h"

namespace corvane::contract {
namespace {

class FloatingContract : public testing::TestWithParam<PlatformMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
    makeView();
  }
  void TearDown() override {
    MinimizedState::shared().remove();
    MinimizedState::shared().resetRestoreAction();
    view_.reset();
  }

  void makeView() {
    view_ = VelnorAgentView::create(Region::custom(platform_->address(PageKind::agentTool)), "shop", false);
    view_->setFrame({{0, 0}, {390, 700}});
    view_->setEventHandler([this](const AgentEvent& event) { events_.push_back(encodeJson(event)); });
    platform_->show(view_);
    view_->loadBooking("b");
    ASSERT_TRUE(platform_->runUntil([&] { return view_->isLoaded(); }));
    events_.clear();
  }
  void pageAsksToMinimize() { platform_->pagePostsValue(*view_, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})"); }
  bool waitFor(const std::string& event) {
    return platform_->runUntil([&] { return !events_.empty() && events_.back() == event; });
  }

  std::unique_ptr<ContractPlatform> platform_;
  std::shared_ptr<VelnorAgentView> view_;
  std::vector<std::string> events_;
};

TEST_P(FloatingContract, ThePageLivesOnThroughShrinkingAndGrowing) {
  platform_->pagePostsValue(*view_,
                            R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
  ASSERT_TRUE(platform_->runUntil([&] { return view_->callSessionStatus() == CallSessionStatus::running; }));
  std::string outcome;
  const auto note = [&](const auto& result) { outcome = outcomeText(result); };
  view_->addProductToCart("A", note);
  ASSERT_TRUE(platform_->runUntil([&] { return !outcome.empty(); }));
  events_.clear();

  view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  pageAsksToMinimize();
  ASSERT_TRUE(waitFor(R"({"didMinimize":{}})"));
  EXPECT_TRUE(view_->isMinimized());
  EXPECT_EQ(MinimizedState::shared().agentView(), view_);
  const CGSize container = view_->superview()->frame().size;
  EXPECT_NEAR(view_->frame().maxX(), container.width - 5, 1e-6);
  EXPECT_NEAR(view_->frame().maxY(), container.height - 5, 1e-6);
  EXPECT_NEAR(view_->bounds().size.width, 390, 1e-6);
  outcome.clear();
  MinimizedState::shared().isProductInCart("A", note);
  ASSERT_TRUE(platform_->runUntil([&] { return !outcome.empty(); }));
  EXPECT_EQ(outcome, "true");

  int restorations = 0;
  MinimizedState::shared().registerRestoreAction([&](const auto& view) { restorations += view == view_ ? 1 : 0; });
  view_->maximizeView();
  ASSERT_TRUE(waitFor(R"({"didMaximize":{}})"));
  EXPECT_EQ(restorations, 1);
  EXPECT_EQ(view_->frame(), (CGRect{{0, 0}, {390, 700}}));
  EXPECT_EQ(MinimizedState::shared().agentView(), nullptr);
  outcome.clear();
  view_->getCartStatus(note);
  ASSERT_TRUE(platform_->runUntil([&] { return !outcome.empty(); }));
  EXPECT_EQ(outcome, R"({"A":1})") << "the page was not loaded again";
  EXPECT_EQ(events_, (std::vector<std::string>{R"({"willMinimize":{}})", R"({"didMinimize":{}})",
                                               R"({"willMaximize":{}})", R"({"didMaximize":{}})"}));
}

TEST_P(FloatingContract, AFloatingViewMayEndInTheMiddleOfItsWay) {
  for (const bool isGrowing : {false, true}) {
    if (isGrowing) makeView();
    const std::weak_ptr<VelnorAgentView> weak = view_;
    pageAsksToMinimize();
    ASSERT_TRUE(waitFor(isGrowing ? R"({"didMinimize":{}})" : R"({"willMinimize":{}})"));
    if (isGrowing) view_->maximizeView();
    MinimizedState::shared().remove();
    view_->setEventHandler(nullptr);
    view_.reset();
    EXPECT_TRUE(platform_->runUntil([&] { return weak.expired(); }));
  }
  makeView();
}

INSTANTIATE_TEST_SUITE_P(On, FloatingContract, testing::ValuesIn(platforms()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace corvane::contract
