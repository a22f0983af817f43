// Any bytes as a catalogue file: what the reader hands out lies in the file where it says, in order, and it comes to
// the end. Without an error nothing is left out but the brackets, commas and white space between products.
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "fuzz/require.h"
#include "tools/product_reader.h"

namespace {

using corvane::tools::BrokenText;
using corvane::tools::InputWindow;
using corvane::tools::ProductReader;
using corvane::tools::ProductText;
using corvane::tools::TextPosition;

class Expectation {
 public:
  explicit Expectation(std::string_view file) : file_(file) {}

  void expect(const ProductText& product) {
    requirePosition(product.begin);
    const std::size_t begin = product.begin.byte - 1;
    require(file_.substr(begin, product.text.size()) == product.text);
    require(product.number == ++number_);
    leaveOut(begin);
    end_ = begin + product.text.size();
  }
  void expect(const BrokenText& broken) {
    requirePosition(broken.position);
    require(!broken.reason.empty() && broken.skippedBytes <= file_.size());
    if (broken.number > 0) require(broken.number == ++number_);
    isBroken_ = true;
  }
  void expectEnd() { leaveOut(file_.size()); }

 private:
  void leaveOut(std::size_t to) const {
    require(to >= end_);
    require(isBroken_ || file_.substr(end_, to - end_).find_first_not_of(" \t\r\n[],") == std::string_view::npos);
  }
  void requirePosition(const TextPosition& position) const {
    require(position.byte >= 1 && position.byte <= file_.size() + 1);
    const auto lines = std::ranges::count(file_.substr(0, position.byte - 1), '\n');
    require(position.line == static_cast<std::size_t>(lines) + 1 && position.column >= 1);
  }

  std::string_view file_;
  std::size_t end_ = 0;
  std::size_t number_ = 0;
  bool isBroken_ = false;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const int file = memfd_create("catalogue", MFD_CLOEXEC);
  require(file >= 0 && write(file, data, size) == static_cast<ssize_t>(size));
  Expectation expectation(text);
  {
    auto window = InputWindow::open("/proc/self/fd/" + std::to_string(file));
    require(window.has_value());
    ProductReader reader(*std::move(window));
    for (auto item = reader.next(); item && *item; item = reader.next()) {
      std::visit([&](const auto& found) { expectation.expect(found); }, **item);
    }
    require(reader.bytesRead() == size);
  }
  expectation.expectEnd();
  close(file);
  return 0;
}
