/// How large texts are, as the installed toolkit writes them.
#pragma once

#include <string_view>

#include "corvane/export.h"
#include "corvane/platform/geometry/geometry.h"

namespace corvane {

/// The toolkit's own typeface, in points.
struct UIFont {
  CGFloat size = 15;
  bool isBold = false;
  bool operator==(const UIFont&) const = default;
};

/// Where the lines of a text stand between the two sides of its box.
enum class TextAlignment { leading, center, trailing };

/// A part of the backend. Threads: main thread only. Failure: none; texts are UTF-8.
class CORVANE_EXPORT TextMeasurer {
 public:
  virtual ~TextMeasurer() = default;
  /// The size of the text with its lines broken at this width. A word that is wider stays whole.
  [[nodiscard]] virtual CGSize measure(std::string_view text, const UIFont& font, CGFloat width) const = 0;
};

/// The size by the installed platform's measurer. Without one it is estimated: as if all characters were half as wide
/// as the font is high.
[[nodiscard]] CORVANE_EXPORT CGSize measureText(std::string_view text, const UIFont& font, CGFloat width);

}  // namespace corvane
