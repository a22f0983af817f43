#include "corvane/declarative/velnor_agent.h"

#include "tests/support/agent_screens_test.h"

namespace corvane {
namespace {

using VelnorAgentTest = AgentScreensTest;
using testing::ElementsAre;

TEST_F(VelnorAgentTest, MakesAViewAsItIsConfiguredAndLoadsTheBooking) {
  const auto container = UIView::create();
  VelnorAgent value = agent();
  EXPECT_EQ(context().agent()->connectId(), "b1");
  EXPECT_EQ(context().agentView(), nullptr) << "nothing is made before the value is shown";
  value.setTapToMaximize(true);
  value.setMinimizedOrigin(MinimizedOrigin::bottomRight());
  value.setMinimizedSize(CGSize{10, 100});
  value.setMinimizedSuperview(container);
  value.setEventHandler(noteAs("own"));
  EXPECT_EQ(value.minimizedSize(), (CGSize{10, 100}));
  EXPECT_FALSE(context().agent()->tapToMaximize()) << "the context has the value as it was made";

  host_->show(value);
  const auto view = context().agentView();
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->superview(), host_->view());
  EXPECT_EQ(view->frame(), window_->bounds());
  EXPECT_EQ(view->connectId(), "b1");
  EXPECT_EQ(loadCount(*view), 1U);
  EXPECT_TRUE(view->tapToMaximize());
  EXPECT_EQ(view->minimizedOrigin(), MinimizedOrigin::bottomRight());
  EXPECT_EQ(view->minimizedSize(), (CGSize{30, 100}));
  EXPECT_EQ(view->minimizedSuperview(), container);
  engine(*view).finishLoad();
  EXPECT_THAT(takeLog(), ElementsAre(R"(own {"didLoad":{}})"));

  // From now on, any agent's properties are those of the view.
  VelnorAgent other = agent();
  EXPECT_TRUE(other.tapToMaximize());
  EXPECT_EQ(other.minimizedOrigin(), MinimizedOrigin::bottomRight());
  EXPECT_EQ(other.minimizedSize(), (CGSize{30, 100}));
  EXPECT_EQ(other.minimizedSuperview(), container);
  EXPECT_TRUE(other.eventHandler());
  other.setTapToMaximize(false);
  other.setMinimizedOrigin(MinimizedOrigin::topRight());
  other.setMinimizedSize(CGSize{100, 10});
  other.setMinimizedSuperview(nullptr);
  other.setEventHandler(nullptr);
  EXPECT_FALSE(view->tapToMaximize() || view->minimizedSuperview() || view->eventHandler());
  EXPECT_EQ(view->minimizedOrigin(), MinimizedOrigin::topRight());
  EXPECT_EQ(view->minimizedSize(), (CGSize{100, 30}));
  host_->remove();
  EXPECT_EQ(other.minimizedSize(), (CGSize{100, 10})) << "without a view, what was asked for";
  EXPECT_TRUE(value.tapToMaximize());
}

TEST_F(VelnorAgentTest, UsesTheViewThatIsThereWhereRegionAndOrganisationAreTheSame) {
  std::vector<std::shared_ptr<ViewHost>> hosts;
  const auto show = [&](VelnorAgent value) {
    hosts.push_back(ViewHost::create(*window_));
    hosts.back()->show(std::move(value));
    return context().agentView();
  };
  const auto first = show(agent());
  first->setTapToMaximize(true);
  EXPECT_EQ(show(agent()), first);
  EXPECT_EQ(first->superview(), hosts[1]->view());
  EXPECT_EQ(loadCount(*first), 2U) << "the same booking, which has not loaded yet";
  engine(*first).finishLoad();
  EXPECT_EQ(show(agent()), first);
  EXPECT_EQ(loadCount(*first), 2U);
  EXPECT_EQ(show(agent("shop", "b2")), first);
  EXPECT_EQ(first->connectId(), "b2");
  EXPECT_EQ(loadCount(*first), 3U);
  EXPECT_TRUE(first->tapToMaximize()) << "it keeps its own settings";

  const std::vector<VelnorAgent> others{agent("Shop"),
                                        {Region::global(), "Shop", "b2", false},
                                        {Region::custom("https://a/"), "Shop", "b2", false},
                                        {Region::custom("https://b/"), "Shop", "b2", false}};
  auto former = first;
  for (const VelnorAgent& other : others) {
    const auto view = show(other);
    EXPECT_NE(view, former);
    EXPECT_EQ(view->region(), other.region());
    former = view;
  }
}

TEST_F(VelnorAgentTest, IsMadeAroundAViewThatExists) {
  const auto view = VelnorAgentView::create(Region::custom("https://a/"), "o", true);
  const VelnorAgent unloaded(view);
  EXPECT_EQ(unloaded.connectId(), "");
  EXPECT_EQ(context().agentView(), view);
  EXPECT_TRUE(context().agent().has_value());
  view->loadBooking("b7");
  engine(*view).finishLoad();
  const VelnorAgent loaded(view);
  EXPECT_EQ(loaded.connectId(), "b7");
  EXPECT_EQ(loaded.region(), view->region());
  EXPECT_EQ(loaded.organisationId(), "o");
  EXPECT_TRUE(loaded.enableSSO());
  host_->show(loaded);
  EXPECT_EQ(view->superview(), host_->view());
  EXPECT_EQ(loadCount(*view), 1U) << "not loaded again";
}

TEST_F(VelnorAgentTest, ManyEvaluationsKeepTheViewAndMakeNone) {
  host_->show(agent());
  const std::weak_ptr<VelnorAgentView> view = context().agentView();
  engine(*view.lock()).finishLoad();
  for (int i = 0; i < 1000; ++i) {
    VelnorAgent value = agent("another", "booking");
    value.setTapToMaximize(i % 2 == 0);
    host_->show(std::move(value));
  }
  EXPECT_EQ(context().agentView(), view.lock());
  EXPECT_EQ(view.lock()->organisationId(), "shop") << "a mounted value keeps what it has made";
  EXPECT_EQ(context().agent()->organisationId(), "another");
  EXPECT_EQ(loadCount(*view.lock()), 1U);
  EXPECT_FALSE(view.lock()->tapToMaximize());
  host_->remove();
  EXPECT_TRUE(view.expired());
  EXPECT_FALSE(context().agent());
}

TEST_F(VelnorAgentTest, TenThousandComingsAndGoingsLeaveNothingBehind) {
  std::weak_ptr<VelnorAgentView> former;
  for (int i = 0; i < 10'000; ++i) {
    host_->show(agent() | onAgentEvent([](const AgentEvent&) {}) | bringAgentToFront());
    ASSERT_TRUE(former.expired());
    former = context().agentView();
    host_->remove();
  }
  EXPECT_TRUE(former.expired());
  EXPECT_TRUE(host_->view()->subviews().empty());
}

TEST_F(VelnorAgentTest, AFloatingViewOutlivesItsScreenAndIsLeftWhereItIs) {
  host_->show(agent() | id(1));
  const auto view = context().agentView();
  minimize(*view);
  const CGRect frame = view->frame();
  host_->show(agent() | id(1));
  window_->setFrame({{0, 0}, {844, 390}});
  EXPECT_EQ(view->superview(), window_);
  EXPECT_EQ(view->frame(), frame);
  host_->remove();
  EXPECT_EQ(context().agentView(), view);
  EXPECT_TRUE(context().agent());
  EXPECT_EQ(view->superview(), window_);
  host_.reset();
  EXPECT_EQ(view->superview(), window_);

  // A screen that shows an agent again takes it in as it is.
  host_ = ViewHost::create(*window_);
  host_->show(agent());
  EXPECT_EQ(view->superview(), host_->view());
  EXPECT_TRUE(view->isMinimized());
  EXPECT_EQ(view->frame(), frame);
  context().maximizeAgent();
  letRest();
  EXPECT_EQ(view->frame(), (CGRect{{0, 0}, {390, 844}}));
}

TEST_F(VelnorAgentTest, NeitherSingleSignOnNorAFailedLoadMakesAnotherViewOrLoad) {
  host_->show(agent());
  const auto view = context().agentView();
  engine(*view).finishLoad();
  engine(*view).failLoad({.description = "later"});
  const auto other = ViewHost::create(*window_);
  other->show(VelnorAgent(Region::eu(), "shop", "b1", /*enableSSO=*/true));
  EXPECT_EQ(context().agentView(), view);
  EXPECT_EQ(loadCount(*view), 1U);
  context().maximizeAgent();
  EXPECT_TRUE(engine(*view).recordsOf<Engine::ScriptEvaluated>().empty()) << "it is not minimized";
}

TEST_F(VelnorAgentTest, AValueAroundAViewHasNoSettingsOfItsOwnAndLeavesFormerViewsHooked) {
  host_->show(agent());
  const auto first = context().agentView();
  first->setTapToMaximize(true);
  const auto second = VelnorAgentView::create(Region::eu(), "other", false);
  const VelnorAgent around(second);
  EXPECT_EQ(context().agentView(), second);
  EXPECT_EQ(around.connectId(), "");
  minimize(*first);
  EXPECT_TRUE(context().isMinimized()) << "the former view is still listened to";
  minimizedState().maximize();
  letRest();
  const VelnorAgent aroundFirst(first);
  EXPECT_TRUE(aroundFirst.tapToMaximize());
  host_->remove();
  EXPECT_EQ(context().agentView(), nullptr);
  EXPECT_FALSE(aroundFirst.tapToMaximize());
  EXPECT_EQ(first->superview(), window_) << "it has floated, and nobody has put it back";
}

}  // namespace
}  // namespace corvane
