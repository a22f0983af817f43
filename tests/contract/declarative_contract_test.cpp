// What host apps may rely on that describe their screens as values, whichever backend carries the framework.
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tests/contract/contract_platform.h"
#include "tests/support/outcome_text.h"

namespace corvane::contract {
namespace {

/// An app with two screens, and what it has noted.
struct App : ObservableObject {
  Published<bool> isCallOpen{*this, true};
  Region region = Region::eu();
  std::optional<VelnorAgent> restored;
  std::vector<std::string> log;

  void note(const std::string& line) { log.push_back(line); }
  AgentEventHandler noteAs(const std::string& who) {
    return [this, who](const AgentEvent& event) {
      note(who + (VelnorAgentContext::shared().isMinimized() ? " small " : " ") + encodeJson(event));
    };
  }
};

struct CallScreen {
  App* app;
  VelnorAgent body() const {
    if (app->restored) return *app->restored;
    VelnorAgent agent(app->region, "shop", "b", /*enableSSO=*/false);
    agent.setMinimizedOrigin(MinimizedOrigin::bottomRight());
    agent.setEventHandler(app->noteAs("own"));
    return agent;
  }
};

struct HomeScreen {
  App* app;
  auto body() const {
    return EmptyView{} | box({.backgroundColor = UIColor{.green = 1}}) | bringAgentToFront() |
           restoreAgentAction([app = app](const VelnorAgent& agent) {
             app->note("restore");
             app->restored = agent;
             app->isCallOpen.set(true);
           }) |
           onAppear([app = app] { app->note("home"); });
  }
};

struct AppScreen {
  App* app;
  auto body() const {
    return when(
               app->isCallOpen.value(), [this] { return CallScreen{app}; }, [this] { return HomeScreen{app}; }) |
           onAgentEvent(app->noteAs("hook"));
  }
};

class DeclarativeContract : public testing::TestWithParam<PlatformMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
    app_.region = Region::custom(platform_->address(PageKind::agentTool));
    host_ = ViewHost::create(*platform_->window());
    host_->show(AppScreen{&app_});
    platform_->providePages(context().agentView());
  }
  void TearDown() override {
    MinimizedState::shared().remove();
    MinimizedState::shared().resetRestoreAction();
    host_.reset();
  }

  static VelnorAgentContext& context() { return VelnorAgentContext::shared(); }
  std::vector<std::string> takeLog() { return std::exchange(app_.log, {}); }
  /// What a request of the context comes to.
  template <class Request>
  std::string outcomeOf(Request request) {
    std::string outcome;
    request([&](const auto& result) { outcome = outcomeText(result); });
    EXPECT_TRUE(platform_->runUntil([&] { return !outcome.empty(); }));
    return outcome;
  }
  bool waitFor(const std::string& lastLine) {
    return platform_->runUntil([&] { return !app_.log.empty() && app_.log.back() == lastLine; });
  }

  App app_;
  std::unique_ptr<ContractPlatform> platform_;
  std::shared_ptr<ViewHost> host_;
};

TEST_P(DeclarativeContract, ACallFloatsOverAnotherScreenAndComesBackToItsOwn) {
  using Log = std::vector<std::string>;
  const std::weak_ptr<VelnorAgentView> weak = context().agentView();
  {
    const auto view = weak.lock();
    ASSERT_TRUE(platform_->runUntil([&] { return view->isLoaded() && view->frame().size.width > 0; }));
    platform_->pagePostsValue(*view,
                              R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
    ASSERT_TRUE(platform_->runUntil([&] { return view->callSessionStatus() == CallSessionStatus::running; }));
    outcomeOf([](auto completion) { context().addProductToCart("A", completion); });
    takeLog();

    platform_->pagePostsValue(*view, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
    ASSERT_TRUE(waitFor(R"(own small {"didMinimize":{}})"));
    EXPECT_EQ(takeLog(), (Log{R"(hook {"willMinimize":{}})", R"(own small {"willMinimize":{}})",
                              R"(hook small {"didMinimize":{}})", R"(own small {"didMinimize":{}})"}));
    const CGRect floating = view->frame();

    app_.isCallOpen.set(false);
    ASSERT_TRUE(waitFor("home"));
    EXPECT_EQ(takeLog(), Log{"home"});
    EXPECT_EQ(context().agentView(), view);
    EXPECT_EQ(view->superview(), platform_->window());
    EXPECT_EQ(platform_->window()->subviews().back(), view);
    EXPECT_EQ(view->frame(), floating);
    EXPECT_EQ(outcomeOf([](auto completion) { context().isProductInCart("A", completion); }), "true");

    context().maximizeAgent();
    ASSERT_TRUE(waitFor(R"(own {"didMaximize":{}})"));
    ASSERT_TRUE(platform_->runUntil([&] { return view->superview() == host_->view(); }));
    EXPECT_EQ(takeLog(), (Log{R"(hook small {"willMaximize":{}})", R"(own {"willMaximize":{}})", "restore",
                              R"(hook {"didMaximize":{}})", R"(own {"didMaximize":{}})"}));
    EXPECT_EQ(context().agentView(), view);
    EXPECT_EQ(view->frame(), host_->view()->bounds());
    EXPECT_EQ(outcomeOf([](auto completion) { context().getCartStatus(completion); }), R"({"A":1})")
        << "the page was not loaded again";
    EXPECT_EQ(takeLog(), Log{});
  }
  app_.isCallOpen.set(false);
  EXPECT_TRUE(platform_->runUntil([&] { return weak.expired(); })) << "at full size, it goes with its screen";
  EXPECT_EQ(context().agentView(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(On, DeclarativeContract, testing::ValuesIn(platforms()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace corvane::contract
