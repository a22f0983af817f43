#include "corvane/platform/foundation/uuid.h"

#include <unistd.h>

#include <array>
#include <cstdint>
#include <string_view>
#include <system_error>

namespace corvane {

std::string makeUuid() {
  std::array<std::uint8_t, 16> bytes{};
  if (getentropy(bytes.data(), bytes.size()) != 0)
    throw std::system_error(errno, std::generic_category(), "getentropy");
  // The version (random) and the variant have their fixed places.
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
  constexpr std::string_view hex = "0123456789ABCDEF";
  std::string text;
  text.reserve(36);
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    if (index == 4 || index == 6 || index == 8 || index == 10) text += '-';
    text += hex[bytes[index] >> 4U];
    text += hex[bytes[index] & 0x0FU];
  }
  return text;
}

}  // namespace corvane
