#include "corvane/declarative/agent_modifiers.h"

#include "corvane/declarative/agent_context_access.h"
#include "corvane/platform/declarative/appearance.h"
#include "tests/support/agent_screens_test.h"

namespace corvane {
namespace {

using AgentModifiersTest = AgentScreensTest;
using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(AgentModifiersTest, EventsReachTheHandlerOfTheScreenAndThenTheViewsOwn) {
  VelnorAgent value = agent();
  value.setEventHandler(noteAs("own"));
  mount_->show(value | onAgentEvent(noteAs("screen")));
  const auto view = context().agentView();
  engine(*view).finishLoad();
  EXPECT_THAT(takeLog(), ElementsAre(R"(screen {"didLoad":{}})", R"(own {"didLoad":{}})"));
  mount_->show(value | onAgentEvent(noteAs("newer")));
  engine(*view).failLoad({});
  EXPECT_THAT(takeLog(), ElementsAre(R"(screen {"error":{}})", R"(own {"error":{}})"))
      << "handlers are set when a view appears, and not when it is evaluated again";
  mount_->show(EmptyView{} | onAgentEvent(noteAs("other screen")));
  engine(*view).failLoad({});
  EXPECT_THAT(takeLog(), ElementsAre(R"(other screen {"error":{}})", R"(own {"error":{}})"))
      << "the previous screen's going does not take the handler of the one that has come";
  mount_->remove();
  engine(*view).failLoad({});
  EXPECT_THAT(takeLog(), ElementsAre(R"(own {"error":{}})"));
}

TEST_F(AgentModifiersTest, LeavingWhileTheAgentBeginsToShrinkOrToGrow) {
  mount_->show(agent() | onAgentEvent([&](const AgentEvent& event) {
                 if (event.is<AgentEvent::WillMinimize>()) mount_->remove();
               }));
  const std::weak_ptr<VelnorAgentView> first = context().agentView();
  minimize(*first.lock());
  EXPECT_EQ(context().agentView(), nullptr) << "when the event came, the view was not minimized yet";
  EXPECT_EQ(minimizedState().agentView(), first.lock());
  EXPECT_EQ(first.lock()->superview(), window_);
  EXPECT_TRUE(context().isMinimized());
  const VelnorAgent around(minimizedState().agentView());
  mount_->show(around | onAgentEvent([&](const AgentEvent& event) {
                 if (event.is<AgentEvent::WillMaximize>()) mount_->remove();
               }));
  context().maximizeAgent();
  letRest();
  EXPECT_FALSE(context().isMinimized());
  EXPECT_EQ(context().agentView(), first.lock()) << "when the event came, the view was still minimized";
  EXPECT_EQ(minimizedState().agentView(), nullptr);
}

TEST_F(AgentModifiersTest, BringsAFloatingAgentToTheFrontWhenAScreenIsShown) {
  mount_->show(agent() | bringAgentToFront());
  const auto view = context().agentView();
  minimize(*view);
  const auto cover = UIView::create();
  window_->addSubview(cover);
  mount_->show(agent() | bringAgentToFront());
  EXPECT_EQ(window_->subviews().back(), cover) << "evaluated again, not shown";
  mount_->show(EmptyView{} | bringAgentToFront());
  EXPECT_EQ(window_->subviews().back(), view);
  window_->addSubview(cover);
  minimizedState().maximize();
  mount_->show(EmptyView{} | bringAgentToFront() | id(1));
  EXPECT_EQ(window_->subviews().back(), cover) << "it is growing back";
  letRest();
}

TEST_F(AgentModifiersTest, TheRestoreActionOutlivesItsScreenUntilOneThatResetsItDisappears) {
  mount_->show(agent());
  const auto view = context().agentView();
  const auto growBackOver = [&](auto screen) {
    minimize(*view);
    mount_->show(screen);
    minimizedState().maximize();
    EXPECT_THAT(takeLog(), IsEmpty());
    letRest();
    return takeLog();
  };
  const auto noting = restoreAgentAction([&](const VelnorAgent& agent) { log_.push_back(agent.connectId()); });
  EXPECT_THAT(growBackOver(EmptyView{} | noting), ElementsAre("b1"));
  EXPECT_THAT(growBackOver(EmptyView{} | resetAgentRestoreAction()), ElementsAre("b1"));
  EXPECT_THAT(growBackOver(EmptyView{}), IsEmpty());
}

TEST_F(AgentModifiersTest, OperationsWithoutAViewAreDropped) {
  context().maximizeAgent();
  context().getCartStatus([&](const auto&) { log_.emplace_back("called"); });
  loop().advance(std::chrono::seconds(10));
  mount_->show(agent());
  context().getCartStatus([&](const auto& status) { log_.emplace_back(status.error().what()); });
  context().maximizeAgent();
  EXPECT_THAT(takeLog(), ElementsAre("noActiveCall"));
}

}  // namespace
}  // namespace corvane
