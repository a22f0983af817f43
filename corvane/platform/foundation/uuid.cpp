#include "corvane/platform/foundation/uuid.h"

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <new>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

using Bytes = std::array<std::uint8_t, 16>;

/// Random bytes of one thread, fetched some identifiers ahead: asking the kernel costs more than all the rest of a
/// request. They lie in memory that a forked process finds zeroed, so that it starts with none.
class RandomBytes {
 public:
  RandomBytes() = default;
  RandomBytes(const RandomBytes&) = delete;
  RandomBytes& operator=(const RandomBytes&) = delete;
  ~RandomBytes() {
    if (stock_ != nullptr) munmap(stock_, sizeof(Stock));
  }

  Bytes take() {
    Bytes bytes{};
    if (stock_ == nullptr) {
      arc4random_buf(bytes.data(), bytes.size());
      return bytes;
    }
    if (stock_->count == 0) {
      arc4random_buf(stock_->bytes.data(), sizeof stock_->bytes);
      stock_->count = stock_->bytes.size();
    }
    // What has been given out is not kept.
    std::swap(bytes, stock_->bytes[--stock_->count]);
    return bytes;
  }

 private:
  struct Stock {
    std::size_t count;
    std::array<Bytes, 16> bytes;
  };

  /// Null where memory cannot be had that a fork empties; every identifier is then fetched on its own.
  static Stock* makeStock() {
#ifdef MADV_WIPEONFORK
    void* const memory = mmap(nullptr, sizeof(Stock), PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (memory == MAP_FAILED) return nullptr;
    if (madvise(memory, sizeof(Stock), MADV_WIPEONFORK) == 0) return new (memory) Stock{};
    munmap(memory, sizeof(Stock));
#endif
    return nullptr;
  }

  Stock* stock_ = makeStock();
};

}  // namespace

std::string makeUuid() {
  thread_local RandomBytes randomBytes;
  Bytes bytes = randomBytes.take();
  // The version (random) and the variant have their fixed places.
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0FU) | 0x40U);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3FU) | 0x80U);
  constexpr std::string_view hex = "0123456789ABCDEF";
  std::string text(36, '-');
  std::size_t position = 0;
  for (std::size_t index = 0; index < bytes.size(); ++index) {
    if (index == 4 || index == 6 || index == 8 || index == 10) ++position;
    text[position++] = hex[bytes[index] >> 4U];
    text[position++] = hex[bytes[index] & 0x0FU];
  }
  return text;
}

}  // namespace corvane
