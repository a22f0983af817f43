// The examples of docs/protocol.md, and that it leaves nothing out.
#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <functional>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/bridge/action.h"
#include "corvane/bridge/web_agent_event_type.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/simulation/simulated_agent_tool.h"
#include "tests/support/headless_test.h"
#include "tests/support/outcome_text.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using Json = nlohmann::json;

/// The examples, without line ends, each with the words behind its first fence; other lines have none.
std::vector<std::pair<std::string, std::string>> blocksOfTheDocument() {
  std::ifstream file(CORVANE_PROTOCOL_DOCUMENT);
  std::vector<std::pair<std::string, std::string>> blocks{{}};
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("```")) {
      blocks.emplace_back(line.substr(3), "");
    } else {
      blocks.back().second += line;
    }
  }
  return blocks;
}

class ProtocolDocument : public HeadlessTest {
 protected:
  /// A call that runs, with two shirts in the cart, whose page answers nothing by itself.
  void beginCall() {
    outcome_.clear();
    events_ = Json::array();
    view_ = VelnorAgentView::create(Region::eu(), "shop-42", false);
    window_ = UIWindow::create({{0, 0}, {390, 844}});
    window_->addSubview(view_);
    page_ = simulation::SimulatedAgentTool::attach(view_);
    page_->setTrouble(simulation::PageTrouble::ThrowsInHandler{});
    view_->loadBooking("booking-7");
    loop().runUntilIdle();
    page_->postCallStatus(CallSessionStatus::running);
    page_->postText(R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"SHIRT-M","quantity":2}})");
    view_->setEventHandler([&](const AgentEvent& event) { events_.push_back(Json::parse(encodeJson(event))); });
  }
  void post(const std::string& message) {
    page_->postText(message);
    loop().advance(1s);
  }
  /// Makes an example's request and returns what the page got, with the example's identifier.
  Json perform(const std::string& operation, const Json& example) {
    beginCall();
    const auto note = [this](const auto& outcome) { outcome_ = outcomeText(outcome); };
    const std::map<std::string, std::function<void()>> operations{
        {"addProductToCall",
         [&] { view_->addProductToCall(decodeJson<Product>(example["data"]["data"].dump()), note); }},
        {"removeProductInCall", [&] { view_->removeProductInCall("SHIRT-M", note); }},
        {"getProductsInCall", [&] { view_->getProductsInCall(note); }},
        {"isProductInCall", [&] { view_->isProductInCall("SHIRT-M", note); }},
        {"addProductToCart", [&] { view_->addProductToCart("SHIRT-M", note); }},
        {"updateProductInCart", [&] { view_->updateProductInCart("SHIRT-M", 3, note); }},
        {"removeProductInCart", [&] { view_->removeProductInCart("SHIRT-M", note); }},
        {"getProductsInCart", [&] { view_->getProductsInCart(note); }},
        {"getCartStatus", [&] { view_->getCartStatus(note); }},
        {"isProductInCart", [&] { view_->isProductInCart("SHIRT-M", note); }},
        {"refreshSsoToken", [&] { view_->refreshSsoToken("a token", "response-1"); }},
        {"signOut", [&] { view_->signOut(); }},
        {"maximizeView", [&] { view_->maximizeView(); }},
    };
    if (operation == "maximizeView") post(R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
    operations.at(operation)();
    loop().advance(1s);
    Json action = Json::parse(page_->receivedActions().at(0));
    if (action.contains("data") && action["data"].contains("_id")) {
      identifier_ = std::exchange(action["data"]["_id"], example["data"]["_id"]);
    }
    return action;
  }

  std::shared_ptr<UIWindow> window_;
  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<simulation::SimulatedAgentTool> page_;
  std::string identifier_;
  std::string outcome_;
  Json events_;
};

TEST_F(ProtocolDocument, ShowsEverythingAsItIs) {
  std::string shown;
  std::string operation;
  Json action;
  for (const auto& [info, text] : blocksOfTheDocument()) {
    SCOPED_TRACE(info + ": " + text);
    if (info != "js") shown += text;
    if (info == "text address") {
      beginCall();
      using LoadRequested = headless::HeadlessWebEngine::LoadRequested;
      const auto loads = headless::HeadlessWebEngine::of(*view_)->recordsOf<LoadRequested>();
      EXPECT_TRUE(loads.back().request.url.ends_with(text)) << loads.back().request.url;
    } else if (info == "json message") {
      beginCall();
      post(text);
    } else if (info == "json events") {
      EXPECT_EQ(events_, Json::parse(text));
    } else if (info.starts_with("json action ")) {
      operation = info.substr(12);
      action = Json::parse(text);
      EXPECT_EQ(perform(operation, action), action);
    } else if (info == "json answer") {
      static_cast<void>(perform(operation, action));
      Json answer = Json::parse(text);
      EXPECT_EQ(answer["eventType"], action["eventType"].get<std::string>() + "_CALLBACK");
      EXPECT_EQ(std::exchange(answer["data"]["_id"], identifier_), action["data"]["_id"]);
      post(answer.dump());
    } else if (info == "text outcome") {
      EXPECT_EQ(outcome_, text);
    } else {
      EXPECT_TRUE(info.empty() || info == "js") << "nobody checks this example";
    }
  }
  loop().advance(5s);

  const auto isShown = [&](char quote, std::string_view name) {
    return shown.contains(quote + std::string(name) + quote);
  };
  for (const Action each : allCases<Action>()) EXPECT_TRUE(isShown('"', rawValue(each))) << rawValue(each);
  for (const WebAgentEventType type : allCases<WebAgentEventType>()) {
    EXPECT_TRUE(type == WebAgentEventType::unknown || isShown('"', rawValue(type))) << rawValue(type);
  }
  for (const CallSessionStatus status : allCases<CallSessionStatus>()) {
    EXPECT_TRUE(isShown('`', rawValue(status))) << rawValue(status);
  }
}

}  // namespace
}  // namespace corvane
