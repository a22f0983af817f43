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
  using Kind = DecodingError::Kind;
  struct Row {
    std::string_view text;
    Kind kind;
    std::string_view path;
  };
  for (const auto& [text, kind, path] : {
           Row{"{}", Kind::typeMismatch, ""},
           Row{R"({"didLoad":{},"error":{}})", Kind::typeMismatch, ""},
           Row{R"({"DidLoad":{},"other":1})", Kind::typeMismatch, ""},
           Row{R"({"clientLocale":{}})", Kind::keyNotFound, "clientLocale"},
           Row{R"({"clientLocale":{"locale":1}})", Kind::typeMismatch, "clientLocale.locale"},
           Row{R"({"didLoad":1})", Kind::typeMismatch, "didLoad"},
           Row{R"({"productUpdateInCart":{"data":{"sku":"A"}}})", Kind::keyNotFound, "productUpdateInCart.data"},
           Row{R"({"clientLocale":{"locale":"\ud800"}})", Kind::dataCorrupted, "clientLocale.locale"},
           Row{"[]", Kind::typeMismatch, ""},
       }) {
    const auto error = decodingError<AgentEvent>(text);
    EXPECT_EQ(error.kind(), kind) << text;
    EXPECT_EQ(toText(error.codingPath()), path) << text;
  }
  EXPECT_EQ(decodingError<AgentEvent>("{}").debugDescription(), "Invalid number of keys found, expected one.");
  EXPECT_EQ(decodeJson<AgentEvent>(R"({"clientLocale":{"locale":"a"},"clientLocale":{"locale":"b"}})"),
            AgentEvent(AgentEvent::ClientLocale{"b"}));
  EXPECT_EQ(decodeJson<AgentEvent>(R"({"other":1,"didLoad":{"more":2}})"), AgentEvent(AgentEvent::DidLoad{}));
}

}  // namespace
}  // namespace corvane
