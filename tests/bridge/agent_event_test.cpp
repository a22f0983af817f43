#include "corvane/bridge/agent_event.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "corvane/platform/foundation/coding_error.h"
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

TEST(AgentEvent, IsEqualByCaseAndValues) {
  EXPECT_NE(AgentEvent(AgentEvent::ProductRemovedFromCall{"A"}), AgentEvent(AgentEvent::ProductRemovedFromCart{"A"}));
  EXPECT_NE(AgentEvent(AgentEvent::ProductRemovedFromCall{"A"}), AgentEvent(AgentEvent::ProductRemovedFromCall{"B"}));
}

TEST(AgentEvent, DecodingWantsExactlyOneCase) {
  for (const std::string_view text : {"{}", R"({"didLoad":{},"error":{}})", R"({"DidLoad":{},"other":1})"}) {
    try {
      static_cast<void>(decodeJson<AgentEvent>(text));
      FAIL() << text;
    } catch (const DecodingError& error) {
      EXPECT_EQ(error.kind(), DecodingError::Kind::typeMismatch) << text;
      EXPECT_EQ(error.debugDescription(), "Invalid number of keys found, expected one.") << text;
    }
  }
  EXPECT_EQ(decodeJson<AgentEvent>(R"({"clientLocale":{"locale":"a"},"clientLocale":{"locale":"b"}})"),
            AgentEvent(AgentEvent::ClientLocale{"b"}));
  EXPECT_THROW(static_cast<void>(decodeJson<AgentEvent>(R"({"clientLocale":{"locale":"\ud800"}})")), DecodingError);
  EXPECT_EQ(decodeJson<AgentEvent>(R"({"other":1,"didLoad":{"more":2}})"), AgentEvent(AgentEvent::DidLoad{}));
}

TEST(AgentEvent, DecodingTellsWhatTheCaseLacks) {
  struct Row {
    std::string_view text;
    DecodingError::Kind kind;
    std::string_view path;
  };
  for (const Row& row : {
           Row{R"({"clientLocale":{}})", DecodingError::Kind::keyNotFound, "clientLocale"},
           Row{R"({"clientLocale":{"locale":1}})", DecodingError::Kind::typeMismatch, "clientLocale.locale"},
           Row{R"({"didLoad":1})", DecodingError::Kind::typeMismatch, "didLoad"},
           Row{R"({"productUpdateInCart":{"data":{"sku":"A"}}})", DecodingError::Kind::keyNotFound,
               "productUpdateInCart.data"},
           Row{"[]", DecodingError::Kind::typeMismatch, ""},
       }) {
    try {
      static_cast<void>(decodeJson<AgentEvent>(row.text));
      FAIL() << row.text;
    } catch (const DecodingError& error) {
      EXPECT_EQ(error.kind(), row.kind) << row.text;
      EXPECT_EQ(toText(error.codingPath()), row.path) << row.text;
    }
  }
}

}  // namespace
}  // namespace corvane
