#include "corvane/platform/views/text_measurer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

namespace {

constexpr CGFloat lineHeight = 1.25;

std::size_t lettersIn(std::string_view text) {
  constexpr unsigned char kindOfByte = 0xC0;
  constexpr unsigned char furtherByte = 0x80;
  return static_cast<std::size_t>(std::ranges::count_if(
      text, [](char byte) { return (static_cast<unsigned char>(byte) & kindOfByte) != furtherByte; }));
}

/// Breaks lines at spaces and counts letters.
CGSize estimate(std::string_view text, const UIFont& font, CGFloat width) {
  const CGFloat letter = font.size / 2;
  CGFloat widest = 0;
  CGFloat line = 0;
  int lines = 1;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(" \n");
    const CGFloat word = letter * static_cast<CGFloat>(lettersIn(text.substr(0, end)));
    if (line > 0 && line + letter + word > width) {
      ++lines;
      line = 0;
    }
    line += line > 0 ? letter + word : word;
    widest = std::max(widest, line);
    if (end == std::string_view::npos) break;
    if (text[end] == '\n') {
      ++lines;
      line = 0;
    }
    text.remove_prefix(end + 1);
  }
  return {widest, std::ceil(font.size * lineHeight) * lines};
}

}  // namespace

CGSize measureText(std::string_view text, const UIFont& font, CGFloat width) {
  const Platform* const platform = PlatformInstallation::findPlatform();
  if (platform == nullptr || platform->text == nullptr) return estimate(text, font, width);
  return platform->text->measure(text, font, width);
}

}  // namespace corvane
