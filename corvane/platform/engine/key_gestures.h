/// What keys do to a floating view: all that a finger could.
#pragma once

#include <cstdint>
#include <memory>

#include "corvane/platform/views/ui_window.h"

namespace corvane::engine {

/// The front-most view that a finger could drag, and that leaves some of the window free; null for none.
[[nodiscard]] std::shared_ptr<UIView> floatingView(UIWindow& window);

/// Where a view is shown in its window.
[[nodiscard]] CGRect shownBox(const UIView& view);

enum class KeySide : std::uint8_t { left, right, top, bottom };

/// Drags the view past the middle of its superview, from where it goes to that side by itself.
void dragByKey(UIWindow& window, UIView& view, KeySide side);

/// Taps the middle of the view. True where a recognizer has taken the tap; otherwise a page there may have the focus.
[[nodiscard]] bool tapByKey(UIWindow& window, const UIView& view);

}  // namespace corvane::engine
