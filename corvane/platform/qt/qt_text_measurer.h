/// Texts as the toolkit writes them.
#pragma once

#include <QFont>

#include "corvane/platform/views/text_measurer.h"

namespace corvane::qt {

/// How lines are broken, for measuring as for drawing.
inline constexpr int textFlags = Qt::TextWordWrap | Qt::AlignTop;

[[nodiscard]] QFont toQFont(const UIFont& font);

class QtTextMeasurer final : public TextMeasurer {
 public:
  [[nodiscard]] CGSize measure(std::string_view text, const UIFont& font, CGFloat width) const override;
};

}  // namespace corvane::qt
