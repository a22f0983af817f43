#include "corvane/simulation/simulated_agent_tool.h"

#include "corvane/agent_view/velnor_agent_view.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using simulation::SimulatedAgentTool;

class SimulatedAgentToolTest : public HeadlessTest {
 protected:
  void makePage(const std::string& address) {
    view_ = VelnorAgentView::create(Region::custom(address), "o", false);
    page_ = SimulatedAgentTool::attach(view_);
    view_->setEventHandler([this](const AgentEvent& event) { events_.push_back(encodeJson(event)); });
  }

  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<SimulatedAgentTool> page_;
  std::vector<std::string> events_;
};

TEST_F(SimulatedAgentToolTest, ATourIsAWholeCallAtItsPace) {
  makePage("http://h/#tour");
  view_->loadBooking("b");
  loop().runUntilIdle();
  EXPECT_EQ(events_, std::vector<std::string>{R"({"didLoad":{}})"});
  loop().advance(SimulatedAgentTool::tourStep * 6 - 1ms);
  EXPECT_EQ(events_.size(), 6U);
  loop().advance(1ms);
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::running);
  EXPECT_EQ(view_->clientLocale(), "de-CH");
  loop().advance(1h);
  EXPECT_EQ(events_.size(), 18U);
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::disconnected);
}

TEST_F(SimulatedAgentToolTest, ATourEndsWithAnotherLoad) {
  makePage("http://h/#tour");
  view_->loadBooking("b1");
  loop().advance(SimulatedAgentTool::tourStep * 3);
  page_->setLoadPlan([](std::string_view) { return SimulatedAgentTool::NeverEnds{}; });
  view_->loadBooking("b2");
  loop().advance(1h);
  EXPECT_EQ(events_.size(), 4U);
}

}  // namespace
}  // namespace corvane
