#include "corvane/bridge/agent_event.h"

#include <vector>

#include "tests/support/decoding_error.h"
#include "tests/support/print_events.h"

namespace corvane {
namespace {

struct Form {
  AgentEvent event;
  std::string_view json;
};

const std::vector<Form>& forms() {
  static const std::vector<Form> all{
      {AgentEvent::Unknown{}, R"({"unknown":{}})"},
      {AgentEvent::CallStatusUpdate{CallSessionStatus::running},
       R"({"callStatusUpdate":{"status":"CALL_SESSION_STATUS_RUNNING"}})"},
      {AgentEvent::ClientLocale{"de-CH"}, R"({"clientLocale":{"locale":"de-CH"}})"},
      {AgentEvent::Error{}, R"({"error":{}})"},
      {AgentEvent::DidLoad{}, R"({"didLoad":{}})"},
      {AgentEvent::WillMinimize{}, R"({"willMinimize":{}})"},
      {AgentEvent::DidMinimize{}, R"({"didMinimize":{}})"},
      {AgentEvent::WillMaximize{}, R"({"willMaximize":{}})"},
      {AgentEvent::DidMaximize{}, R"({"didMaximize":{}})"},
      {AgentEvent::PreviewStarted{}, R"({"previewStarted":{}})"},
      {AgentEvent::ProductUpdateInCart{{"A", 3}}, R"({"productUpdateInCart":{"data":{"sku":"A","quantity":3}}})"},
      {AgentEvent::ProductRemovedFromCall{"A"}, R"({"productRemovedFromCall":{"sku":"A"}})"},
      {AgentEvent::ProductRemovedFromCart{"A"}, R"({"productRemovedFromCart":{"sku":"A"}})"},
      {AgentEvent::RefreshSsoToken{"r1"}, R"({"refreshSsoToken":{"responseId":"r1"}})"},
      {AgentEvent::Unauthorized{}, R"({"unauthorized":{}})"},
  };
  return all;
}

TEST(AgentEvent, HasOneJsonFormInBothDirections) {
  ASSERT_EQ(forms().size(), std::variant_size_v<AgentEvent::Value>);
  for (std::size_t index = 0; index < forms().size(); ++index) {
    const auto& [event, json] = forms()[index];
    EXPECT_EQ(event.value().index(), index);
    EXPECT_EQ(encodeJson(event), json);
    EXPECT_EQ(decodeJson<AgentEvent>(json), event);
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
