// Any bytes as a catalogue file: the reader must hand out all of it, in order, but for white space between products.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/require.h"
#include "tools/product_reader.h"

namespace {

constexpr std::string_view whiteSpace = " \t\r\n";

void skip(std::string_view& text, std::string_view read) {
  text.remove_prefix(std::min(text.find_first_not_of(whiteSpace), text.size()));
  require(text.starts_with(read));
  text.remove_prefix(read.size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view text(reinterpret_cast<const char*>(data), size);
  const int file = memfd_create("catalogue", MFD_CLOEXEC);
  require(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size));
  {
    auto reader = corvane::tools::ProductReader::open("/proc/self/fd/" + std::to_string(file));
    require(reader.has_value());
    for (auto product = reader->next(); product.has_value() && product->has_value(); product = reader->next()) {
      skip(text, **product);
    }
  }
  require(text.find_first_not_of(whiteSpace) == std::string_view::npos);
  close(file);
  return 0;
}
