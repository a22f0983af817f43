// Any bytes as the JSON of each public record, after a first byte that chooses the record. What is accepted must come
// out as JSON that means the same record again.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "corvane/bridge/agent_event.h"
#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/product/product.h"
#include "fuzz/require.h"

namespace {

using namespace corvane;

template <class Record>
void roundTrip(std::string_view text) {
  std::string first;
  try {
    first = encodeJson(decodeJson<Record>(text));
  } catch (const DecodingError&) {
    return;
  }
  if (first == "{}") return;  // a detail of an unknown kind, which cannot be read again
  const auto again = decodeJson<Record>(first);
  require(encodeJson(again) == first);
}

constexpr std::array roundTrips{
    &roundTrip<AgentEvent>,
    &roundTrip<CallSessionStatus>,
    &roundTrip<ProductCartStatus>,
    &roundTrip<Price>,
    &roundTrip<Rating>,
    &roundTrip<Detail>,
    &roundTrip<AttributeDefinition>,
    &roundTrip<AttributeDefinitionOption>,
    &roundTrip<VariationAttribute>,
    &roundTrip<ComparableVariationAttribute>,
    &roundTrip<Variation>,
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  roundTrips[data[0] % roundTrips.size()]({reinterpret_cast<const char*>(data + 1), size - 1});
  return 0;
}
