// What host apps may rely on that describe their screens as values, whichever backend carries the framework.
#include <optional>

#include "tests/contract/contract_test.h"

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

class DeclarativeContract : public ContractTest {
 protected:
  void SetUp() override {
    ContractTest::SetUp();
    if (platform_ == nullptr) return;
    app_.region = Region::custom(platform_->address(PageKind::agentTool));
    mount_ = ViewMount::create(*platform_->window());
    mount_->show(AppScreen{&app_});
    platform_->providePages(context().agentView());
  }

  static VelnorAgentContext& context() { return VelnorAgentContext::shared(); }
  Texts takeLog() { return std::exchange(app_.log, {}); }
  bool waitForLine(const std::string& line) {
    return platform_->runUntil([&] { return !app_.log.empty() && app_.log.back() == line; });
  }

  App app_;
  std::shared_ptr<ViewMount> mount_;
};

TEST_P(DeclarativeContract, ACallFloatsOverAnotherScreenAndComesBackToItsOwn) {
  const std::weak_ptr<VelnorAgentView> weak = context().agentView();
  {
    const auto view = weak.lock();
    ASSERT_TRUE(platform_->runUntil([&] { return view->isLoaded() && view->frame().size.width > 0; }));
    beginCall(*view);
    outcomeOf([](auto completion) { context().addProductToCart("A", completion); });
    takeLog();

    platform_->pagePostsValue(*view, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
    ASSERT_TRUE(waitForLine(R"(own small {"didMinimize":{}})"));
    EXPECT_EQ(takeLog(), (Texts{R"(hook {"willMinimize":{}})", R"(own small {"willMinimize":{}})",
                                R"(hook small {"didMinimize":{}})", R"(own small {"didMinimize":{}})"}));
    const CGRect floating = view->frame();

    app_.isCallOpen.set(false);
    ASSERT_TRUE(waitForLine("home"));
    EXPECT_EQ(takeLog(), Texts{"home"});
    EXPECT_EQ(context().agentView(), view);
    EXPECT_EQ(view->superview(), platform_->window());
    EXPECT_EQ(platform_->window()->subviews().back(), view);
    EXPECT_EQ(view->frame(), floating);
    EXPECT_EQ(outcomeOf([](auto completion) { context().isProductInCart("A", completion); }), "true");

    context().maximizeAgent();
    ASSERT_TRUE(waitForLine(R"(own {"didMaximize":{}})"));
    ASSERT_TRUE(platform_->runUntil([&] { return view->superview() == mount_->view(); }));
    EXPECT_EQ(takeLog(), (Texts{R"(hook small {"willMaximize":{}})", R"(own {"willMaximize":{}})", "restore",
                                R"(hook {"didMaximize":{}})", R"(own {"didMaximize":{}})"}));
    EXPECT_EQ(context().agentView(), view);
    EXPECT_EQ(view->frame(), mount_->view()->bounds());
    EXPECT_EQ(outcomeOf([](auto completion) { context().getCartStatus(completion); }), R"({"A":1})")
        << "the page was not loaded again";
    EXPECT_EQ(takeLog(), Texts{});
  }
  app_.isCallOpen.set(false);
  EXPECT_TRUE(platform_->runUntil([&] { return weak.expired(); })) << "at full size, it goes with its screen";
  EXPECT_EQ(context().agentView(), nullptr);
}

INSTANTIATE_TEST_SUITE_P(On, DeclarativeContract, testing::ValuesIn(platforms()), nameOf);

}  // namespace
}  // namespace corvane::contract
