// The agent view's operations against a simulated page.

#include "corvane/agent_view/minimized_state.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/simulation/simulated_agent_tool.h"
#include "tests/support/headless_test.h"
#include "tests/support/outcome_text.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using simulation::PageTrouble;
using Log = std::vector<std::string>;

class AgentViewRequests : public HeadlessTest {
 protected:
  AgentViewRequests() {
    view_->loadBooking("b");
    page_->postCallStatus(CallSessionStatus::running);
    loop().runUntilIdle();
  }
  auto note() {
    return [this](const auto& outcome) { log_.push_back(outcomeText(outcome)); };
  }

  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "o", false);
  std::shared_ptr<simulation::SimulatedAgentTool> page_ = simulation::SimulatedAgentTool::attach(view_);
};

TEST_F(AgentViewRequests, AFailedScriptIsStoredBeforeItIsToldAndForgottenWithTheNextLoad) {
  const auto window = UIWindow::create({{0, 0}, {390, 844}});
  window->addSubview(view_);
  page_->postText(R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
  loop().advance(1s);
  page_->setTrouble(PageTrouble::HasNoPostAction{});
  view_->setEventHandler([this](const AgentEvent& event) {
    log_.push_back(encodeJson(event) + (view_->error() ? " " + view_->error()->description : ""));
  });
  const std::string failure = R"({"error":{}} TypeError: postAction is not a function)";
  view_->getCartStatus(note());
  loop().advance(5s);
  EXPECT_EQ(takeLog(), (Log{failure, "error requestTimeout"}));
  view_->loadBooking("b2");
  EXPECT_FALSE(view_->error());
  view_->maximizeView();
  loop().advance(1s);
  EXPECT_EQ(takeLog(), (Log{R"({"willMaximize":{}})", failure})) << "the page does not know that it has grown";
}

TEST_F(AgentViewRequests, DecrementingPassesEveryFailureOn) {
  const auto decrement = [this] {
    view_->decrementProductInCart("A", note());
    loop().advance(20s);
    return takeLog();
  };
  EXPECT_EQ(decrement(), Log{"error skuNotFound"}) << "an empty cart";
  view_->updateProductInCart("A", 3, nullptr);
  view_->updateProductInCart("B", 1, nullptr);
  loop().advance(1s);
  page_->setTrouble(PageTrouble::AnswersWithError{"closed"});
  EXPECT_EQ(decrement(), Log{"error closed"});
  page_->setTrouble(PageTrouble::AnswersWithWrongType{});
  EXPECT_EQ(decrement(), Log{"error skuNotFound"}) << "the page lists nothing";
  page_->setTrouble(PageTrouble::AnswersLate{1s});
  view_->decrementProductInCart("A", note());
  loop().advance(500ms);
  page_->postCallStatus(CallSessionStatus::reconnecting);
  loop().advance(20s);
  EXPECT_EQ(takeLog(), Log{"error noActiveCall"}) << "the update is refused";
  const std::size_t actions = page_->receivedActions().size();
  EXPECT_EQ(decrement(), Log{"error noActiveCall"});
  EXPECT_EQ(page_->receivedActions().size(), actions) << "the page is not asked";
}

TEST_F(AgentViewRequests, WhatIsDroppedIsToldToDevelopersWhoAsk) {
  setDiagnosticsHandler([this](const Diagnostic& diagnostic) { log_.push_back(diagnostic.text); });
  page_->postText(R"({"eventType":"SDK_NEWS"})");
  page_->postText(R"({"eventType":3})");
  page_->postText(R"({"eventType":"SDK_INTERNAL_GET_PRODUCTS_IN_CART_CALLBACK","data":{"_id":"x"}})");
  page_->postText(R"({"eventType":"SDK_INTERNAL_GET_PRODUCTS_IN_CART_CALLBACK"})");
  view_->loadBooking("\xff");
  const auto unplayed = VelnorAgentView::create(Region::custom("http://h"), "o", false);
  unplayed->loadBooking("b");
  MinimizedState::shared().getProductsInCall(nullptr);
  page_.reset();
  view_->loadBooking("its page has gone");
  EXPECT_EQ(log_.size(), 8U);
  EXPECT_EQ(log_[0], R"(message "SDK_NEWS": an unknown type, or data that it cannot have)");
  EXPECT_TRUE(log_[5].starts_with("nobody plays http://h?"));
  EXPECT_TRUE(log_[6].starts_with("SDK_INTERNAL_GET_PRODUCTS_IN_CALL: no agent view"));
  setDiagnosticsHandler(nullptr);
  unplayed->loadBooking("c");
  EXPECT_EQ(takeLog().size(), 8U);
}

TEST_F(AgentViewRequests, ADecrementKeepsItsViewUntilItIsDone) {
  view_->updateProductInCart("A", 3, nullptr);
  loop().advance(1s);
  page_->setTrouble(PageTrouble::AnswersLate{1s});
  view_->decrementProductInCart("A", note());
  loop().runUntilIdle();
  const std::weak_ptr<VelnorAgentView> weak = view_;
  view_.reset();
  loop().advance(1s);
  EXPECT_EQ(page_->shop().cart().at("A"), 2);
  EXPECT_TRUE(weak.expired()) << "the update was posted, and nobody waits for it";
  loop().advance(10s);
  EXPECT_TRUE(takeLog().empty());
}

}  // namespace
}  // namespace corvane
