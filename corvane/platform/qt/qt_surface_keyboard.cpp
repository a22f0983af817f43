#include "corvane/platform/qt/qt_surface_keyboard.h"

#include <QPen>
#include <array>
#include <optional>
#include <utility>

#include "corvane/platform/engine/key_gestures.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane::qt {

namespace {

Qt::FocusReason tabReason(bool isForward) { return isForward ? Qt::TabFocusReason : Qt::BacktabFocusReason; }

}  // namespace

SurfaceKeyboard::SurfaceKeyboard(std::shared_ptr<SurfaceHost> host, std::shared_ptr<UIWindow> window,
                                 std::shared_ptr<SurfaceInput> input)
    : host_(std::move(host)), window_(std::move(window)), input_(std::move(input)) {}

void SurfaceKeyboard::begin() {
  input_->setTabHandler(whileAlive(weak_from_this(), [](SurfaceKeyboard& self, bool isForward) {
    self.isForward_ = isForward;
    // The views may have changed since they were last drawn.
    self.placeFocus();
  }));
}

void SurfaceKeyboard::viewsDidChange() {
  if (std::exchange(isPlacing_, true) || !RunLoop::hasMain()) return;
  RunLoop::main().post(whileAlive(weak_from_this(), &SurfaceKeyboard::placeFocus));
}

/// A page that comes over what has the focus gets it. What the user is in and can see keeps it.
void SurfaceKeyboard::placeFocus() {
  isPlacing_ = false;
  if (!host_->isVisible()) return;
  const auto other = host_->otherFocus();
  const bool isFloating = engine::floatingView(*window_) != nullptr;
  if (host_->hasFocus()) {
    if (!input_->hasFocusedPage()) input_->focus(nullptr, Qt::OtherFocusReason);
    if (isFloating || input_->hasFocusedPage()) return;
  } else if (other && !covers(*other)) {
    return;
  }
  // A floating view leaves the rest of the window to the keys.
  if (const auto page = isFloating ? nullptr : pageInTheMiddle()) {
    input_->focus(page, Qt::OtherFocusReason);
  } else if ((other || host_->hasFocus()) && !moveOn(isForward_)) {
    host_->dropFocus();
  }
}

void SurfaceKeyboard::focusDidMove() {
  host_->queueFrame();
  const auto other = isLeaving_ ? std::nullopt : host_->otherFocus();
  if (other && covers(*other) && !moveOn(isForward_)) host_->dropFocus();
}

bool SurfaceKeyboard::moveOn(bool isForward) {
  const auto alive = shared_from_this();
  isLeaving_ = true;
  const bool hasMoved = host_->moveFocus(isForward, [this](const std::optional<QRectF>& box) {
    return box ? !covers(*box) : engine::floatingView(*window_) != nullptr || pageInTheMiddle() != nullptr;
  });
  isLeaving_ = false;
  return hasMoved;
}

void SurfaceKeyboard::leavePage(bool isForward) {
  if (moveOn(isForward)) return;
  // There is nothing else in the window: the page begins again.
  if (const auto page = pageInTheMiddle()) {
    input_->focus(nullptr, tabReason(isForward));
    input_->focus(page, tabReason(isForward));
  }
}

bool SurfaceKeyboard::handle(QEvent& event) {
  if (event.type() == QEvent::FocusIn) {
    handleFocusIn(static_cast<QFocusEvent&>(event));
    return false;
  }
  if (input_->handleFocused(event)) return true;
  return event.type() == QEvent::KeyPress && !input_->hasFocusedPage() &&
         handleKey(static_cast<QKeyEvent&>(event).key());
}

void SurfaceKeyboard::handleFocusIn(QFocusEvent& event) {
  const bool isFloating = engine::floatingView(*window_) != nullptr;
  const bool isByTab = event.reason() == Qt::TabFocusReason || event.reason() == Qt::BacktabFocusReason;
  if (isByTab || !input_->hasFocusedPage()) input_->setFocusedPage(isFloating ? nullptr : pageInTheMiddle());
  static_cast<void>(input_->handleFocused(event));
}

bool SurfaceKeyboard::handleKey(int key) {
  const auto view = engine::floatingView(*window_);
  if (view == nullptr) return false;
  switch (key) {
    case Qt::Key_Left:
      engine::dragByKey(*window_, *view, engine::KeySide::left);
      return true;
    case Qt::Key_Right:
      engine::dragByKey(*window_, *view, engine::KeySide::right);
      return true;
    case Qt::Key_Up:
      engine::dragByKey(*window_, *view, engine::KeySide::top);
      return true;
    case Qt::Key_Down:
      engine::dragByKey(*window_, *view, engine::KeySide::bottom);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Space: {
      const CGPoint middle = view->convertPoint({view->bounds().midX(), view->bounds().midY()}, nullptr);
      const auto page = input_->pageAt(middle);
      if (!engine::tapByKey(*window_, *view) && page != nullptr) input_->focus(page, Qt::OtherFocusReason);
      return true;
    }
    default:
      return false;
  }
}

void SurfaceKeyboard::drawFocus(QPainter& painter) const {
  if (!host_->hasFocus() || input_->hasFocusedPage()) return;
  const auto view = engine::floatingView(*window_);
  if (view == nullptr) return;
  constexpr qreal thickness = 3;
  constexpr QColor ring(28, 112, 217);
  const CGRect box = engine::shownBox(*view);
  const QRectF outline(box.minX(), box.minY(), box.size.width, box.size.height);
  constexpr qreal inset = thickness / 2;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(ring, thickness));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(outline.adjusted(inset, inset, -inset, -inset), thickness, thickness);
}

std::shared_ptr<WKWebView> SurfaceKeyboard::pageInTheMiddle() const {
  return input_->pageAt({window_->bounds().midX(), window_->bounds().midY()});
}

bool SurfaceKeyboard::covers(const QRectF& box) const {
  // Corners and middle: what shows some of itself can be used.
  for (const auto& [x, y] :
       std::to_array<std::pair<qreal, qreal>>({{0.5, 0.5}, {0.05, 0.05}, {0.95, 0.05}, {0.05, 0.95}, {0.95, 0.95}})) {
    if (!input_->takesInputAt(QPointF(box.x() + x * box.width(), box.y() + y * box.height()))) return false;
  }
  return true;
}

}  // namespace corvane::qt
