#include "corvane/platform/foundation/json_coder.h"

#include <gtest/gtest.h>

#include <string>

#include "corvane/bridge/agent_event_coding.h"
#include "corvane/bridge/page_event_records.h"
#include "corvane/platform/foundation/json_text.h"
#include "tests/support/decoding_error.h"

namespace corvane {
namespace {

using Kind = DecodingError::Kind;

TEST(JsonCoder, ErrorsTellKindTypeAndPath) {
  struct Row {
    std::string_view text;
    Kind kind;
    std::string_view typeName;
    std::string_view path;
  };
  for (const Row& row : {
           Row{R"({"sku":"A"})", Kind::keyNotFound, "quantity", ""},
           Row{R"({"sku":"A","quantity":null})", Kind::valueNotFound, "Int", "quantity"},
           Row{R"({"sku":7,"quantity":1})", Kind::typeMismatch, "String", "sku"},
           Row{R"({"sku":"A","quantity":true})", Kind::typeMismatch, "Int", "quantity"},
           Row{R"({"sku":"A","quantity":1.5})", Kind::dataCorrupted, "Int", "quantity"},
           Row{R"({"sku":"A","quantity":1e30})", Kind::dataCorrupted, "Int", "quantity"},
           Row{R"([])", Kind::typeMismatch, "Object", ""},
           Row{R"({)", Kind::dataCorrupted, "JSON", ""},
       }) {
    const auto error = decodingError<ProductCartStatus>(row.text);
    EXPECT_EQ(error.kind(), row.kind) << row.text;
    EXPECT_EQ(error.typeName(), row.typeName) << row.text;
    EXPECT_EQ(toText(error.codingPath()), row.path) << row.text;
  }
  const auto nestedError = decodingError<ClientPlatform>(R"({"language":{"locale":1}})");
  EXPECT_STREQ(nestedError.what(), "language.locale: Expected String but found a number.");
  EXPECT_EQ(decodingError<CallSessionStatus>(R"("CALL_SESSION_STATUS_FORWARDING")").kind(), Kind::dataCorrupted);
}

TEST(JsonCoder, RecordsReadBackWhatTheyWrote) {
  const ProductCartStatus line{.sku = "\"A\\\n\x01\u2028</script>", .quantity = -3};
  EXPECT_EQ(decodeJson<ProductCartStatus>(encodeJson(line)), line);
  EXPECT_EQ(encodeJson(ClientPlatform{.locale = "de-CH"}), R"({"language":{"locale":"de-CH"}})");
  EXPECT_EQ(encodeJson(CallSessionStatus::forwarding), R"("CALL_SESSION_STATUS_FOWARDING")");
  EXPECT_EQ(decodeJson<ProductCartStatus>(R"({"other":[{}],"quantity":2.0,"sku":"a","sku":"b"})"),
            (ProductCartStatus{.sku = "b", .quantity = 2}));
}

TEST(JsonCoder, TextThatIsNotUtf8IsRefusedWithItsPath) {
  const AgentEvent event = AgentEvent::ProductUpdateInCart{{.sku = "\xff", .quantity = 1}};
  try {
    static_cast<void>(encodeJson(event));
    FAIL() << "accepted";
  } catch (const EncodingError& error) {
    EXPECT_EQ(toText(error.codingPath()), "productUpdateInCart.data.sku");
  }
}

TEST(CodingPath, IsWrittenAsPeopleWriteIt) {
  EXPECT_EQ(toText({std::string("product"), std::string("variations"), std::size_t{3}, std::string("price")}),
            "product.variations[3].price");
}

}  // namespace
}  // namespace corvane
