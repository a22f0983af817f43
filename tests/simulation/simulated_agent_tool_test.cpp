#include "corvane/simulation/simulated_agent_tool.h"

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/web/wk_web_view.h"
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

TEST_F(SimulatedAgentToolTest, WhatIsMadeAndLoadedInOneGoHasAPageAllTheSame) {
  const auto openCall = [this](std::string name, const std::string& address = "http://h") {
    auto view = VelnorAgentView::create(Region::custom(address), "o", false);
    view->setEventHandler([this, name](const AgentEvent& event) { log_.push_back(name + encodeJson(event)); });
    view->loadBooking("b");
    return view;
  };
  setDiagnosticsHandler([this](const Diagnostic& diagnostic) { log_.push_back(diagnostic.text.substr(0, 23)); });
  static_cast<void>(SimulatedAgentTool::attachToNextView(backend()));  // it ends at once, and waits for nothing
  const auto first = SimulatedAgentTool::attachToNextView(backend());
  const auto second = SimulatedAgentTool::attachToNextView(backend());
  first->postUnauthorized();
  const auto ownWebView = WKWebView::create({}, {});
  auto firstCall = openCall("1 ");
  const auto secondCall = openCall("2 ", "shop.example:80/call");
  const auto thirdCall = openCall("3 ");
  EXPECT_EQ(takeLog(), (Log{"a simulated page posted", "loadBooking: shop.examp", "nobody plays http://h?o"}));
  const auto third = SimulatedAgentTool::attach(thirdCall);
  third->setLoadPlan([](std::string_view) { return SimulatedAgentTool::Fails{}; });
  static_cast<void>(SimulatedAgentTool::attach(UIView::create()));
  loop().runUntilIdle();
  EXPECT_EQ(takeLog(),
            (Log{"SimulatedAgentTool::att", R"(1 {"didLoad":{}})", R"(2 {"error":{}})", R"(3 {"error":{}})"}));
  EXPECT_EQ(secondCall->error()->kind, WebError::Kind::cannotLoad);
  firstCall.reset();
  first->postMinimize();
  third->postText("{");
  EXPECT_EQ(takeLog(), (Log{"a simulated page posted", "the simulated page post"}));
  setDiagnosticsHandler(nullptr);
}

TEST_F(SimulatedAgentToolTest, EachEventOfThePageCanBePosted) {
  makePage("http://h");
  page_->postCallStatus(CallSessionStatus::running);
  page_->postClientLocale("de-CH");
  page_->postProductUpdateInCart("A\"", 2);
  page_->postProductUpdateInCart("B", 1);
  view_->getCartStatus([this](AgentResult<CartQuantities> cart) {
    for (const auto& [sku, quantity] : valueOf(cart).value_or(CartQuantities{}))
      events_.push_back(sku + std::to_string(quantity));
    EXPECT_EQ(valueOf(AgentResult<bool>(std::unexpected(AgentError::NoActiveCall{}))), std::nullopt);
  });
  loop().advance(5s);
  page_->postProductRemovedFromCart("B");
  page_->postProductRemovedFromCall("C");
  page_->postRefreshSsoToken("r");
  page_->postUnauthorized();
  EXPECT_THROW(page_->postProductUpdateInCart("\xff", 1), EncodingError);
  EXPECT_EQ(page_->shop().cart(), (CartQuantities{{"A\"", 2}}));
  EXPECT_EQ(events_, (Log{R"({"callStatusUpdate":{"status":"CALL_SESSION_STATUS_RUNNING"}})",
                          R"({"clientLocale":{"locale":"de-CH"}})",
                          R"({"productUpdateInCart":{"data":{"sku":"A\"","quantity":2}}})",
                          R"({"productUpdateInCart":{"data":{"sku":"B","quantity":1}}})", "A\"2", "B1",
                          R"({"productRemovedFromCart":{"sku":"B"}})", R"({"productRemovedFromCall":{"sku":"C"}})",
                          R"({"refreshSsoToken":{"responseId":"r"}})", R"({"unauthorized":{}})"}));
}

}  // namespace
}  // namespace corvane
