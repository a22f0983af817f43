#include "corvane/declarative/velnor_agent.h"

#include "tests/support/agent_screens_test.h"

namespace corvane {
namespace {

using VelnorAgentTest = AgentScreensTest;
using testing::ElementsAre;

/// What of it can be set, but for the handler.
auto settingsOf(const auto& agent) {
  return std::tuple(agent.tapToMaximize(), agent.minimizedOrigin(), agent.minimizedSize(), agent.minimizedSuperview());
}

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
  EXPECT_TRUE(value.eventHandler());
  EXPECT_EQ(settingsOf(value),
            std::tuple(true, MinimizedOrigin::bottomRight(), std::optional(CGSize{10, 100}), container));
  EXPECT_FALSE(context().agent()->tapToMaximize()) << "the context has the value as it was made";

  mount_->show(value);
  const auto view = context().agentView();
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->superview(), mount_->view());
  EXPECT_EQ(view->frame(), window_->bounds());
  EXPECT_EQ(view->connectId(), "b1");
  EXPECT_EQ(loadCount(*view), 1U);
  EXPECT_EQ(settingsOf(*view),
            std::tuple(true, MinimizedOrigin::bottomRight(), std::optional(CGSize{30, 100}), container));
  engine(*view).finishLoad();
  EXPECT_THAT(takeLog(), ElementsAre(R"(own {"didLoad":{}})"));

  // From now on, any agent's properties are those of the view.
  VelnorAgent other = agent();
  EXPECT_EQ(settingsOf(other), settingsOf(*view));
  EXPECT_TRUE(other.eventHandler());
  other.setTapToMaximize(false);
  other.setMinimizedOrigin(MinimizedOrigin::topRight());
  other.setMinimizedSize(CGSize{100, 10});
  other.setMinimizedSuperview(nullptr);
  other.setEventHandler(nullptr);
  EXPECT_EQ(settingsOf(*view), std::tuple(false, MinimizedOrigin::topRight(), std::optional(CGSize{100, 30}), nullptr));
  EXPECT_FALSE(view->eventHandler());
  mount_->remove();
  EXPECT_EQ(other.minimizedSize(), (CGSize{100, 10})) << "without a view, what was asked for";
  EXPECT_TRUE(value.tapToMaximize());
}

TEST_F(VelnorAgentTest, OnlyAnotherRegionOrOrganisationMakesAnotherView) {
  std::vector<std::shared_ptr<ViewMount>> mounts;
  const auto show = [&](const Region& region, const std::string& organisation, bool enableSSO = false) {
    mounts.push_back(ViewMount::create(*window_));
    mounts.back()->show(VelnorAgent(region, organisation, "b1", enableSSO));
    return context().agentView();
  };
  const auto first = show(Region::eu(), "shop");
  first->setTapToMaximize(true);
  engine(*first).finishLoad();
  engine(*first).failLoad({.description = "later"});
  EXPECT_EQ(show(Region::eu(), "shop", /*enableSSO=*/true), first);
  EXPECT_EQ(loadCount(*first), 1U) << "what has loaded once is not loaded again";
  EXPECT_TRUE(first->tapToMaximize()) << "it keeps its own settings";
  context().maximizeAgent();
  EXPECT_TRUE(engine(*first).recordsOf<Engine::ScriptEvaluated>().empty()) << "it is not minimized";

  mounts.back()->show(VelnorAgent(Region::eu(), "shop", "b2", false) | id(2));
  EXPECT_EQ(loadCount(*first), 2U) << "another booking is";

  auto previous = show(Region::eu(), "Shop");
  EXPECT_NE(previous, first);
  EXPECT_EQ(show(Region::eu(), "Shop"), previous);
  EXPECT_EQ(loadCount(*previous), 2U) << "what has not loaded yet is loaded again";
  for (const Region& region : {Region::global(), Region::custom("https://a/"), Region::custom("https://b/")}) {
    const auto view = show(region, "Shop");
    EXPECT_NE(view, previous);
    EXPECT_EQ(view->region(), region);
    previous = view;
  }
}

TEST_F(VelnorAgentTest, IsMadeAroundAViewThatExists) {
  const auto view = VelnorAgentView::create(Region::custom("https://a/"), "o", true);
  EXPECT_EQ(VelnorAgent(view).connectId(), "");
  EXPECT_EQ(context().agentView(), view);
  EXPECT_TRUE(context().agent().has_value());
  view->loadBooking("b7");
  const VelnorAgent loaded(view);
  EXPECT_EQ(loaded.connectId(), "b7");
  EXPECT_EQ(loaded.region(), view->region());
  EXPECT_EQ(loaded.organisationId(), "o");
  EXPECT_TRUE(loaded.enableSSO());
}

TEST_F(VelnorAgentTest, EvaluationsKeepTheViewAndMakeNone) {
  mount_->show(agent());
  const std::weak_ptr<VelnorAgentView> view = context().agentView();
  VelnorAgent value = agent("another", "booking");
  value.setTapToMaximize(true);
  mount_->show(std::move(value));
  EXPECT_EQ(context().agentView(), view.lock());
  EXPECT_EQ(view.lock()->organisationId(), "shop") << "a mounted value keeps what it has made";
  EXPECT_EQ(context().agent()->organisationId(), "another");
  EXPECT_EQ(loadCount(*view.lock()), 1U);
  mount_->remove();
  EXPECT_TRUE(view.expired());
  EXPECT_FALSE(context().agent());
}

TEST_F(VelnorAgentTest, AFloatingViewIsLeftWhereItIsAndTakenInAsItIs) {
  mount_->show(agent() | id(1));
  const auto view = context().agentView();
  minimize(*view);
  window_->setFrame({{0, 0}, {844, 390}});
  loop().advance(std::chrono::milliseconds(500));
  const CGRect frame = view->frame();
  mount_->show(agent() | id(1));
  mount_.reset();
  EXPECT_EQ(view->superview(), window_);
  EXPECT_EQ(view->frame(), frame);
  mount_ = ViewMount::create(*window_);
  mount_->show(agent());
  EXPECT_EQ(view->superview(), mount_->view());
  EXPECT_EQ(view->frame(), frame);
  context().maximizeAgent();
  letRest();
  EXPECT_EQ(view->frame(), (CGRect{{0, 0}, {390, 844}}));
}

TEST_F(VelnorAgentTest, AValueAroundAViewHasNoSettingsOfItsOwnAndLeavesFormerViewsHooked) {
  mount_->show(agent());
  const auto first = context().agentView();
  first->setTapToMaximize(true);
  const auto second = VelnorAgentView::create(Region::eu(), "other", false);
  const VelnorAgent around(second);
  EXPECT_EQ(context().agentView(), second);
  EXPECT_EQ(around.connectId(), "");
  minimize(*first);
  EXPECT_TRUE(context().isMinimized()) << "the previous view is still listened to";
  minimizedState().maximize();
  letRest();
  const VelnorAgent aroundFirst(first);
  EXPECT_TRUE(aroundFirst.tapToMaximize());
  mount_->remove();
  EXPECT_EQ(context().agentView(), nullptr);
  EXPECT_FALSE(aroundFirst.tapToMaximize());
  EXPECT_EQ(first->superview(), window_) << "it has floated, and nobody has put it back";
}

}  // namespace
}  // namespace corvane
