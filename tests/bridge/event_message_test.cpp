#include "corvane/bridge/event_message.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "corvane/bridge/product_cart_status_coding.h"
#include "tests/support/print_events.h"

namespace corvane {
namespace {

JsonValue parse(std::string_view text) { return JsonValue::parse(text).value(); }

std::optional<AgentEvent> eventOf(std::string_view message) {
  const JsonValue value = parse(message);
  const auto [type, data] = parseEventMessage(readEventEnvelope(value));
  return makeAgentEvent(type, data);
}

TEST(EventMessage, TranslatesWhatThePageReports) {
  struct Row {
    std::string_view message;
    std::optional<AgentEvent> event;
  };
  using Event = AgentEvent;
  const Row rows[] = {
      {R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_FOWARDING"}})",
       Event::CallStatusUpdate{CallSessionStatus::forwarding}},
      {R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_FORWARDING"}})", std::nullopt},
      {R"({"eventType":"SDK_CALL_STATUS","data":{"status":["CALL_SESSION_STATUS_RUNNING"]}})", std::nullopt},
      {R"({"eventType":"SDK_CALL_STATUS"})", std::nullopt},
      {R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":{"locale":"L"},"os":1}}})",
       Event::ClientLocale{"L"}},
      {R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"locale":"L"}}})", std::nullopt},
      {R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":"L"}}})", std::nullopt},
      {R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":[]}})", std::nullopt},
      {R"({"eventType":"SDK_CALL_STARTED","data":{}})", std::nullopt},
      {R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":-1,"x":{}}})",
       Event::ProductUpdateInCart{{"A", -1}}},
      {R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":"1"}})", std::nullopt},
      {R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":9223372036854775808}})", std::nullopt},
      {R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CALL","data":{"sku":"A","quantity":0}})",
       Event::ProductRemovedFromCall{"A"}},
      {R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CALL","data":{"sku":"A"}})", std::nullopt},
      {R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CART","data":{"sku":"A","quantity":0}})",
       Event::ProductRemovedFromCart{"A"}},
      {R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CART","data":{"sku":"A"}})", std::nullopt},
      {R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":""}})", Event::RefreshSsoToken{""}},
      {R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":5}})", std::nullopt},
      {R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":[]})", std::nullopt},
      {R"({"eventType":"SDK_UNAUTHORIZED","data":17})", Event::Unauthorized{}},
      {R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})", Event::DidMinimize{}},
      {R"({"eventType":"SDK_INTERNAL_ADD_PRODUCT_TO_CART_CALLBACK","data":{"sku":"A","quantity":1}})", std::nullopt},
      {R"({"eventType":3,"data":null})", std::nullopt},
      {R"({"eventType":"SDK_SOMETHING_NEW","data":{"sku":"A","quantity":1}})", std::nullopt},
  };
  for (const Row& row : rows) EXPECT_EQ(eventOf(row.message), row.event) << row.message;
}

TEST(EventMessage, TextWithoutAnUtf8FormSpoilsOnlyTheRecordThatHoldsIt) {
  const std::string_view spoiltRecord =
      R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":1,"more":["\ud800"]}})";
  EXPECT_EQ(eventOf(spoiltRecord), std::nullopt);
  const JsonValue value = parse(spoiltRecord);
  EXPECT_THROW(static_cast<void>(decodeFromJsonObject<ProductCartStatus>(*value.find("data"))), JsonError);
  EXPECT_EQ(
      eventOf(
          R"({"eventType":"SDK_CALL_STARTED","data":{"more":"\ud800","clientPlatform":{"language":{"locale":"L"}}}})"),
      AgentEvent(AgentEvent::ClientLocale{"L"}));
  EXPECT_EQ(eventOf(R"({"eventType":"SDK_UNAUTHORIZED","more":"\ud800"})"), AgentEvent(AgentEvent::Unauthorized{}));
  EXPECT_EQ(
      eventOf(
          R"({"eventType":"SDK_CALL_STATUS","junk":1e1,"data":{"status":"CALL_SESSION_STATUS_READY","n":1000000000000000000000}})"),
      AgentEvent(AgentEvent::CallStatusUpdate{CallSessionStatus::ready}));
}

}  // namespace
}  // namespace corvane
