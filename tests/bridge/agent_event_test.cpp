#include "corvane/bridge/agent_event.h"

#include "tests/support/decoding_error.h"
#include "tests/support/print_events.h"

namespace corvane {
namespace {

TEST(AgentEvent, HasOneJsonFormInBothDirections) {
  for (const std::string_view json :
       {R"({"unknown":{}})", R"({"callStatusUpdate":{"status":"CALL_SESSION_STATUS_RUNNING"}})",
        R"({"clientLocale":{"locale":"de-CH"}})", R"({"willMinimize":{}})", R"({"didMinimize":{}})",
        R"({"willMaximize":{}})", R"({"didMaximize":{}})", R"({"previewStarted":{}})",
        R"({"productUpdateInCart":{"data":{"sku":"A","quantity":3}}})", R"({"productRemovedFromCall":{"sku":"A"}})",
        R"({"productRemovedFromCart":{"sku":"A"}})", R"({"refreshSsoToken":{"responseId":"r1"}})"}) {
    EXPECT_EQ(encodeJson(decodeJson<AgentEvent>(json)), json);
  }
}

TEST(AgentEvent, DecodingWantsExactlyOneWholeCase) {
  const auto whyNot = &whyUnreadable<AgentEvent>;
  EXPECT_EQ(whyNot(R"({"didLoad":{},"error":{}})"), "typeMismatch AgentEvent at ");
  EXPECT_EQ(whyNot(R"({"DidLoad":{},"other":1})"), "typeMismatch AgentEvent at ");
  EXPECT_EQ(whyNot("[]"), "typeMismatch Object at ");
  EXPECT_EQ(whyNot(R"({"clientLocale":{}})"), "keyNotFound locale at clientLocale");
  EXPECT_EQ(whyNot(R"({"clientLocale":{"locale":1}})"), "typeMismatch String at clientLocale.locale");
  EXPECT_EQ(whyNot(R"({"clientLocale":{"locale":"\ud800"}})"), "dataCorrupted String at clientLocale.locale");
  EXPECT_EQ(whyNot(R"({"didLoad":1})"), "typeMismatch Object at didLoad");
  EXPECT_EQ(whyNot(R"({"productUpdateInCart":{"data":{"sku":"A"}}})"),
            "keyNotFound quantity at productUpdateInCart.data");
  EXPECT_EQ(decodingError<AgentEvent>("{}").debugDescription(), "Invalid number of keys found, expected one.");
  EXPECT_EQ(decodeJson<AgentEvent>(R"({"clientLocale":{"locale":"a"},"clientLocale":{"locale":"b"}})"),
            AgentEvent(AgentEvent::ClientLocale{"b"}));
  EXPECT_EQ(decodeJson<AgentEvent>(R"({"other":1,"didLoad":{"more":2}})"), AgentEvent(AgentEvent::DidLoad{}));
}

}  // namespace
}  // namespace corvane
