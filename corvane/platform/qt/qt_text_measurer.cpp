#include "corvane/platform/qt/qt_text_measurer.h"

#include <QApplication>
#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

namespace {

constexpr CGFloat widest = 1 << 20;

}  // namespace

QFont toQFont(const UIFont& font) {
  QFont made = QApplication::font();
  made.setPixelSize(static_cast<int>(std::clamp(std::round(font.size), 1.0, widest)));
  made.setBold(font.isBold);
  return made;
}

CGSize QtTextMeasurer::measure(std::string_view text, const UIFont& font, CGFloat width) const {
  const QRectF room(0, 0, std::clamp(width, 1.0, widest), widest);
  const QRectF box = QFontMetricsF(toQFont(font)).boundingRect(room, textFlags, toQString(text));
  return {std::ceil(box.width()), std::ceil(box.height())};
}

}  // namespace corvane::qt
