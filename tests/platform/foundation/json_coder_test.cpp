#include "corvane/platform/foundation/json_coder.h"

#include <string>

#include "corvane/bridge/agent_event_coding.h"
#include "corvane/bridge/page_event_records.h"
#include "corvane/platform/foundation/json_text.h"
#include "tests/support/decoding_error.h"

namespace corvane {
namespace {

TEST(JsonCoder, ErrorsSayWhatWasExpectedWhere) {
  const auto error = decodingError<ClientPlatform>(R"({"language":{"locale":1}})");
  EXPECT_STREQ(error.what(), "language.locale: Expected String but found a number.");
  EXPECT_EQ(decodingError<ClientPlatform>("{").kind(), DecodingError::Kind::dataCorrupted);
  EXPECT_EQ(decodingError<CallSessionStatus>(R"("CALL_SESSION_STATUS_FORWARDING")").kind(),
            DecodingError::Kind::dataCorrupted);
}

TEST(JsonCoder, RecordsReadBackWhatTheyWrote) {
  const ProductCartStatus line{.sku = "\"A\\\n\x01\u2028</script>", .quantity = -3};
  EXPECT_EQ(decodeJson<ProductCartStatus>(encodeJson(line)), line);
  EXPECT_EQ(encodeJson(ClientPlatform{.locale = "de-CH"}), R"({"language":{"locale":"de-CH"}})");
  EXPECT_EQ(encodeJson(CallSessionStatus::forwarding), R"("CALL_SESSION_STATUS_FOWARDING")");
  EXPECT_EQ(decodeJson<ProductCartStatus>(R"({"other":[{}],"quantity":2.0,"sku":"a","sku":"b"})"),
            (ProductCartStatus{.sku = "b", .quantity = 2}));
}

}  // namespace
}  // namespace corvane
