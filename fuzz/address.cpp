// A base address and two identifiers, divided by line ends, as the address of the page. It must be plain ASCII, keep
// what the host app wrote around the query, and read as an address again.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "corvane/agent_view/page_address.h"
#include "corvane/platform/foundation/url_components.h"
#include "fuzz/require.h"

namespace {

using namespace corvane;

/// Takes the text up to the next line end.
std::string takeLine(std::string_view& text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  std::string line(text.substr(0, end));
  text.remove_prefix(std::min(end + 1, text.size()));
  return line;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  const std::string base = takeLine(text);
  const std::string organisation = takeLine(text);
  const Region region = Region::custom(base);
  const auto address = makePageAddress({region, organisation, std::string(text), size % 2 == 0});
  if (!address) return 0;
  for (const char letter : *address) require(letter > ' ' && letter < '\x7F');
  require(address->starts_with(base.substr(0, base.find_first_of("?#"))));
  const std::size_t fragment = base.find('#');
  if (fragment != std::string::npos) require(address->ends_with(base.substr(fragment)));
  const auto parts = URLComponents::parse(*address);
  require(parts && parts->url() == *address);
  return 0;
}
