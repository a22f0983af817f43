// Any bytes as touches and as changes of the views under them: no recognizer may get stuck or leave its rules.
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "tests/support/touch_storm.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::size_t position = 0;
  corvane::TouchStorm storm([&] { return position < size ? data[position++] : std::uint8_t{0}; });
  while (position < size) storm.step();
  storm.finish();
  if (!storm.complaint().empty()) std::abort();
  return 0;
}
