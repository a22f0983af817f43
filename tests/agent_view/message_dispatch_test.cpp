#include "corvane/agent_view/message_dispatch.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "corvane/bridge/web_agent_event_type.h"

namespace corvane {
namespace {

/// Notes what it is told, and what the call state was at that moment.
class Receiver : public PageMessageReceiver {
 public:
  explicit Receiver(const CallState& state) : state_(state) {}
  void minimizeRequested() override { log.emplace_back("minimize"); }
  void handleCallbackEvent(JsonView data) override { log.push_back("answer of " + std::to_string(data.size())); }
  void emitEvent(const AgentEvent& event) override {
    std::string line = encodeJson(event) + " " + std::string(rawValue(state_.callSessionStatus).substr(20)) + " " +
                       state_.clientLocale.value_or("-");
    for (const auto& [sku, quantity] : state_.cart) line += " " + sku + ":" + std::to_string(quantity);
    log.push_back(line);
  }
  std::vector<std::string> log;

 private:
  const CallState& state_;
};

class MessageDispatch : public testing::Test {
 protected:
  std::vector<std::string> take(std::string_view body, std::string_view channel = "agentEventHandler") {
    receiver_.log.clear();
    dispatchMessage({channel, JsonValue::parse(body).value()}, state_, receiver_);
    return receiver_.log;
  }
  std::vector<std::string> takeStatus(const std::string& status) {
    return take(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_)" + status + "\"}}");
  }
  std::vector<std::string> takeCart(const std::string& event, int quantity, const std::string& sku = "A") {
    return take(R"({"eventType":"SDK_PRODUCT_)" + event + R"(","data":{"sku":")" + sku + R"(","quantity":)" +
                std::to_string(quantity) + "}}");
  }

  CallState state_;
  Receiver receiver_{state_};
};

using Log = std::vector<std::string>;

TEST_F(MessageDispatch, TheStateFollowsBeforeTheEventIsHandedOver) {
  EXPECT_EQ(takeStatus("RUNNING"), Log{R"({"callStatusUpdate":{"status":"CALL_SESSION_STATUS_RUNNING"}} RUNNING -)"});
  EXPECT_EQ(take(R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":{"locale":"fr"}}}})"),
            Log{R"({"clientLocale":{"locale":"fr"}} RUNNING fr)"});
  EXPECT_EQ(takeCart("UPDATE_IN_CART", 3),
            Log{R"({"productUpdateInCart":{"data":{"sku":"A","quantity":3}}} RUNNING fr A:3)"});
  EXPECT_EQ(takeCart("REMOVED_FROM_CALL", 3), Log{R"({"productRemovedFromCall":{"sku":"A"}} RUNNING fr A:3)"});
  EXPECT_EQ(takeStatus("DISCONNECTED"),
            Log{R"({"callStatusUpdate":{"status":"CALL_SESSION_STATUS_DISCONNECTED"}} DISCONNECTED fr A:3)"});
  EXPECT_EQ(takeStatus("DISCONNECTING"),
            Log{R"({"callStatusUpdate":{"status":"CALL_SESSION_STATUS_DISCONNECTING"}} DISCONNECTING -)"});
}

TEST_F(MessageDispatch, TheCartFollowsUpdatesAndRemovals) {
  takeCart("UPDATE_IN_CART", 3);
  takeCart("UPDATE_IN_CART", 1, "B");
  takeCart("UPDATE_IN_CART", 4);
  EXPECT_EQ(state_.cart, (decltype(state_.cart){{"A", 4}, {"B", 1}}));
  EXPECT_EQ(takeCart("UPDATE_IN_CART", 0).size(), 1U);
  EXPECT_EQ(takeCart("UPDATE_IN_CART", -5, "C").size(), 1U) << "raised although there was nothing to remove";
  EXPECT_EQ(state_.cart, (decltype(state_.cart){{"B", 1}}));
  EXPECT_EQ(takeCart("REMOVED_FROM_CART", 9, "B").size(), 1U);
  EXPECT_TRUE(state_.cart.empty());
}

TEST_F(MessageDispatch, AMessageLeadsToOneOperationAtMost) {
  EXPECT_EQ(take(R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL","data":{}})"), Log{"minimize"});
  for (const WebAgentEventType type : allCases<WebAgentEventType>()) {
    const std::string text(rawValue(type));
    if (!text.ends_with("_CALLBACK")) continue;
    EXPECT_EQ(take(R"({"eventType":")" + text + R"(","data":{"_id":"1","result":2}})"), Log{"answer of 2"}) << text;
    EXPECT_EQ(take(R"({"eventType":")" + text + "\"}"), Log{"answer of 0"}) << text;
  }
  for (const std::string_view body :
       {R"({"eventType":"SDK_SOMETHING_CALLBACK","data":{}})", R"({"eventType":"SDK_minimize_agent_tool"})",
        R"({"eventType":"SDK_INTERNAL_ADD_PRODUCT_TO_CART","data":{"_id":"1"}})",  // the echo of an action of ours
        R"({"eventType":"unknown"})", "[]", "{}", "null", "\"SDK_UNAUTHORIZED\"", "3"}) {
    EXPECT_EQ(take(body), Log{}) << body;
  }
  EXPECT_EQ(take(R"({"eventType":"SDK_UNAUTHORIZED"})", "agentEventhandler"), Log{}) << "another channel";
}

}  // namespace
}  // namespace corvane
