#include "corvane/platform/qt/qt_surface_input.h"

#include <QApplication>
#include <QDropEvent>
#include <QMouseEvent>
#include <QTouchEvent>
#include <QVariant>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <set>
#include <utility>
#include <vector>

#include "corvane/platform/engine/window_drawing.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_web_engine.h"

namespace corvane::qt {

using engine::HeldTouches;
using Verdict = HeldTouches::Verdict;

namespace {

std::uint64_t touchOf(int finger) { return engine::mouseTouch + 1 + static_cast<std::uint64_t>(finger); }

QtWebEngine* engineOf(const WKWebView& page) { return dynamic_cast<QtWebEngine*>(&page.engine()); }

QWidget* inputOf(const WKWebView& page) {
  const QtWebEngine* engine = engineOf(page);
  return engine != nullptr && engine->isInteractive() ? engine->view().inputTarget() : nullptr;
}

std::optional<engine::Placement> placementOf(const WKWebView& page, const UIWindow& window) {
  if (!RunLoop::hasMain()) return std::nullopt;
  for (const engine::Placement& placement : engine::placementsIn(window, RunLoop::main().now())) {
    if (placement.engine == &page.engine()) return placement;
  }
  return std::nullopt;
}

}  // namespace

std::shared_ptr<SurfaceInput> SurfaceInput::create(std::shared_ptr<SurfaceHost> host,
                                                   std::shared_ptr<UIWindow> window) {
  return std::make_shared<SurfaceInput>(ConstructionKey{}, std::move(host), std::move(window));
}

SurfaceInput::SurfaceInput(ConstructionKey, std::shared_ptr<SurfaceHost> host, std::shared_ptr<UIWindow> window)
    : host_(std::move(host)), window_(std::move(window)), held_(std::make_shared<HeldTouches>(window_)) {}

void SurfaceInput::watchWindow() {
  QWindow* const native = host_->nativeWindow();
  if (native == native_) return;
  if (native_ != nullptr) native_->removeEventFilter(this);
  native_ = native;
  if (native_ != nullptr) native_->installEventFilter(this);
}

void SurfaceInput::cancelAll() {
  const auto held = held_;
  beginning_.reset();
  held->cancelAll();
}

bool SurfaceInput::eventFilter(QObject*, QEvent* event) {
  const auto alive = shared_from_this();
  if (isReplaying_ || !host_->isVisible()) return false;
  // A menu that is open takes all that happens outside of it, and closes.
  if (QApplication::activePopupWidget() != nullptr) return false;
  return filter(event);
}

bool SurfaceInput::filter(QEvent* event) {
  switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
      return handleMouse(*static_cast<QMouseEvent*>(event));
    case QEvent::Leave:
      leavePage();
      return false;
    case QEvent::Wheel:
      return handleWheel(*static_cast<QWheelEvent*>(event));
    case QEvent::TouchBegin:
    case QEvent::TouchUpdate:
    case QEvent::TouchEnd:
    case QEvent::TouchCancel: {
      const bool isOurs = handleTouch(*static_cast<QTouchEvent*>(event));
      // The toolkit makes clicks of those that nobody accepts.
      if (isOurs) event->accept();
      return isOurs;
    }
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return handleDrag(*static_cast<QDropEvent*>(event));
    case QEvent::DragLeave: {
      const bool isOurs = !dragged_.expired();
      leaveDrag();
      return isOurs;
    }
    case QEvent::KeyPress: {
      const int key = static_cast<QKeyEvent*>(event)->key();
      if (tabHandler_ && (key == Qt::Key_Tab || key == Qt::Key_Backtab)) tabHandler_(key == Qt::Key_Tab);
      return false;
    }
    case QEvent::NativeGesture: {
      const CGPoint point = onSurface(static_cast<QNativeGestureEvent*>(event)->position());
      return held_->isBusy() || targetAt(point).kind != Target::Kind::host;
    }
    default:
      return false;
  }
}

bool SurfaceInput::handleMouse(const QMouseEvent& event) {
  // A second press comes as a double click in its place.
  const QEvent::Type type = event.type() == QEvent::MouseButtonDblClick ? QEvent::MouseButtonPress : event.type();
  const Click click{type,
                    event.position(),
                    event.globalPosition(),
                    event.button(),
                    event.buttons(),
                    event.modifiers(),
                    static_cast<ulong>(event.timestamp()),
                    event.pointingDevice()};
  const auto held = held_;
  const bool isPress = type == QEvent::MouseButtonPress;
  Verdict verdict = Verdict::passes;
  if (type != QEvent::MouseMove && click.button != Qt::LeftButton) {
    verdict = held->handleOtherButton(click.button, isPress);
  } else {
    UITouchEvent touch{
        .identifier = engine::mouseTouch, .phase = TouchPhase::moved, .location = onSurface(click.onWindow)};
    const CGPoint origin = window_->bounds().origin;
    touch.location = {touch.location.x + origin.x, touch.location.y + origin.y};
    if (isPress) touch.phase = TouchPhase::began;
    if (type == QEvent::MouseButtonRelease) touch.phase = TouchPhase::ended;
    // Without the button it is a mouse whose release has gone elsewhere.
    if (type == QEvent::MouseMove && !click.buttons.testFlag(Qt::LeftButton)) touch.phase = TouchPhase::cancelled;
    if (isPress) beginning_ = click;
    verdict = held->handle(touch);
  }
  if (verdict == Verdict::ends) return true;
  if (verdict == Verdict::playedFromStart && beginning_) {
    const Click beginning = *std::exchange(beginning_, std::nullopt);
    static_cast<void>(deliver(beginning, true));
  }
  return deliver(click, false);
}

bool SurfaceInput::deliver(const Click& click, bool isReplay) {
  const Target target = pressed_ ? *pressed_ : targetAt(onSurface(click.onWindow));
  if (click.type == QEvent::MouseButtonPress && !pressed_) pressed_ = target;
  if (click.type == QEvent::MouseButtonRelease && click.buttons == Qt::NoButton) pressed_.reset();
  const auto page = target.page.lock();
  if (page != hovered_.lock()) leavePage();
  if (target.kind == Target::Kind::host) {
    if (isReplay) sendToHost(click);
    return isReplay;
  }
  if (page != nullptr) sendToPage(*page, click);
  return true;
}

void SurfaceInput::sendToPage(WKWebView& page, const Click& click) {
  QtWebEngine* const engine = engineOf(page);
  QWidget* const input = inputOf(page);
  const auto point = onPage(page, onSurface(click.onWindow));
  if (input == nullptr || !point) return;
  const auto alive = std::static_pointer_cast<WKWebView>(page.shared_from_this());
  hovered_ = alive;
  if (click.type == QEvent::MouseButtonPress) focus(alive, Qt::MouseFocusReason);
  if (click.type != QEvent::MouseMove) engine->noteUserAction();
  QMouseEvent event(click.type, *point, *point, click.onScreen, click.button, click.buttons, click.modifiers,
                    click.device);
  event.setTimestamp(click.timestamp);
  QCoreApplication::sendEvent(input, &event);
  if (click.type == QEvent::MouseMove) showCursorOf(engine);
}

void SurfaceInput::sendToHost(const Click& click) {
  if (native_ == nullptr) return;
  isReplaying_ = true;
  QMouseEvent event(click.type, click.onWindow, click.onWindow, click.onScreen, click.button, click.buttons,
                    click.modifiers, click.device);
  event.setTimestamp(click.timestamp);
  QCoreApplication::sendEvent(native_, &event);
  isReplaying_ = false;
}

void SurfaceInput::leavePage() {
  const auto page = hovered_.lock();
  hovered_.reset();
  if (page == nullptr) return;
  showCursorOf(nullptr);
  if (QWidget* const input = inputOf(*page)) {
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(input, &leave);
  }
}

void SurfaceInput::showCursorOf(const QtWebEngine* engine) {
  if (native_ == nullptr) return;
  const QWindow* const page = engine != nullptr ? engine->view().windowHandle() : nullptr;
  if (page != nullptr) {
    native_->setCursor(page->cursor());
  } else {
    native_->unsetCursor();
  }
}

bool SurfaceInput::handleWheel(const QWheelEvent& event) {
  if (held_->isBusy()) return true;
  const CGPoint point = onSurface(event.position());
  const Target target = targetAt(point);
  if (target.kind == Target::Kind::host) return false;
  const auto page = target.page.lock();
  QWidget* const input = page != nullptr ? inputOf(*page) : nullptr;
  const auto place = page != nullptr ? onPage(*page, point) : std::nullopt;
  if (input == nullptr || !place) return true;
  QWheelEvent copy(*place, event.globalPosition(), event.pixelDelta(), event.angleDelta(), event.buttons(),
                   event.modifiers(), event.phase(), event.inverted(), event.source(), event.pointingDevice());
  copy.setTimestamp(event.timestamp());
  QCoreApplication::sendEvent(input, &copy);
  return true;
}

bool SurfaceInput::handleDrag(QDropEvent& event) {
  const CGPoint point = onSurface(event.position());
  const Target target = targetAt(point);
  const auto page = target.page.lock();
  const auto place = page != nullptr && inputOf(*page) != nullptr ? onPage(*page, point) : std::nullopt;
  if (page != dragged_.lock()) leaveDrag();
  if (!place) {
    // What none of our views is a page for, the views still cover.
    event.setAccepted(false);
    return target.kind != Target::Kind::host;
  }
  PageView& view = engineOf(*page)->view();
  const auto pass = [&](QDropEvent&& copy) {
    copy.setDropAction(event.dropAction());
    QCoreApplication::sendEvent(&view, &copy);
    event.setDropAction(copy.dropAction());
    event.setAccepted(copy.isAccepted());
  };
  const bool isNew = dragged_.expired();
  dragged_ = page;
  if (isNew) {
    pass(QDragEnterEvent(place->toPoint(), event.possibleActions(), event.mimeData(), event.buttons(),
                         event.modifiers()));
  }
  if (event.type() == QEvent::Drop) {
    pass(QDropEvent(*place, event.possibleActions(), event.mimeData(), event.buttons(), event.modifiers()));
    dragged_.reset();
  } else if (!isNew) {
    pass(QDragMoveEvent(place->toPoint(), event.possibleActions(), event.mimeData(), event.buttons(),
                        event.modifiers()));
  }
  return true;
}

void SurfaceInput::leaveDrag() {
  const auto page = std::exchange(dragged_, {}).lock();
  if (page == nullptr) return;
  QDragLeaveEvent leave;
  QCoreApplication::sendEvent(&engineOf(*page)->view(), &leave);
}

bool SurfaceInput::cancelTouches(const QTouchEvent& event) {
  const auto held = held_;
  const auto cancelled = std::exchange(fingers_, {});
  std::set<QWidget*> inputs;
  for (const auto& [identifier, finger] : cancelled) {
    const auto verdict = held->handle({touchOf(identifier), TouchPhase::cancelled, {}});
    const auto page = finger.target.page.lock();
    if (verdict == Verdict::passes && page != nullptr) inputs.insert(inputOf(*page));
  }
  inputs.erase(nullptr);
  for (QWidget* const input : inputs) cancelTouchesOf(*input, event);
  const auto isOurs = [](const auto& finger) { return finger.second.target.kind != Target::Kind::host; };
  return std::ranges::any_of(cancelled, isOurs);
}

bool SurfaceInput::handleTouch(QTouchEvent& event) {
  if (event.type() == QEvent::TouchCancel) return cancelTouches(event);
  bool isOurs = false;
  std::shared_ptr<WKWebView> page;
  std::vector<PageFinger> beginnings;
  std::vector<PageFinger> fingers;
  const auto held = held_;
  for (const QEventPoint& point : event.points()) {
    const CGPoint place = onSurface(point.position());
    const bool isReleased = point.state() == QEventPoint::Released;
    const Verdict verdict = verdictOn(*held, point);
    const auto found = fingers_.find(point.id());
    if (found == fingers_.end()) continue;
    const Finger finger = found->second;
    if (finger.target.kind != Target::Kind::host || verdict == Verdict::ends) isOurs = true;
    if (isReleased) fingers_.erase(found);
    const auto touched = finger.target.page.lock();
    if (verdict == Verdict::ends || touched == nullptr) continue;
    page = touched;
    QWidget* const input = inputOf(*touched);
    // The page sees the finger leave, but makes no click of it.
    if (verdict == Verdict::leaves && input != nullptr) cancelTouchesOf(*input, event);
    const auto onIt = verdict == Verdict::leaves ? std::nullopt : onPage(*touched, place);
    if (!onIt) continue;
    if (verdict == Verdict::playedFromStart) {
      const auto began = onPage(*touched, onSurface(finger.beginning));
      beginnings.push_back({point.id(), QEventPoint::Pressed, began.value_or(*onIt)});
    }
    fingers.push_back({point.id(), point.state(), *onIt});
  }
  QWidget* const input = page != nullptr ? inputOf(*page) : nullptr;
  if (input == nullptr) return isOurs;
  if (event.type() == QEvent::TouchBegin || !beginnings.empty()) focus(page, Qt::MouseFocusReason);
  engineOf(*page)->noteUserAction();
  sendTouches(*input, beginnings, event);
  sendTouches(*input, fingers, event);
  return true;
}

Verdict SurfaceInput::verdictOn(engine::HeldTouches& held, const QEventPoint& point) {
  if (point.state() == QEventPoint::Stationary) return Verdict::passes;
  const CGPoint place = onSurface(point.position());
  TouchPhase phase = TouchPhase::moved;
  if (point.state() == QEventPoint::Pressed) {
    phase = TouchPhase::began;
    fingers_[point.id()] = {targetAt(place), point.position()};
  }
  if (point.state() == QEventPoint::Released) phase = TouchPhase::ended;
  const CGPoint origin = window_->bounds().origin;
  return held.handle({touchOf(point.id()), phase, {place.x + origin.x, place.y + origin.y}});
}

void SurfaceInput::focus(const std::shared_ptr<WKWebView>& page, Qt::FocusReason reason) {
  const auto before = focused_.lock();
  if (before != page && before != nullptr) {
    QFocusEvent out(QEvent::FocusOut, reason);
    static_cast<void>(handleFocused(out));
  }
  focused_ = page;
  if (!host_->hasFocus()) return host_->takeFocus(reason);
  if (before == page) return;
  QFocusEvent in(QEvent::FocusIn, reason);
  static_cast<void>(handleFocused(in));
}

bool SurfaceInput::hasFocusedPage() const {
  const auto page = focused_.lock();
  return page != nullptr && inputOf(*page) != nullptr && placementOf(*page, *window_).has_value();
}

std::shared_ptr<WKWebView> SurfaceInput::pageAt(CGPoint point) const {
  const auto page = std::dynamic_pointer_cast<WKWebView>(window_->hitTest(point));
  return page != nullptr && inputOf(*page) != nullptr ? page : nullptr;
}

bool SurfaceInput::takesInputAt(QPointF onSurface) const {
  return targetAt({onSurface.x(), onSurface.y()}).kind != Target::Kind::host;
}

bool SurfaceInput::handleFocused(QEvent& event) {
  const auto page = focused_.lock();
  QWidget* const input = page != nullptr ? inputOf(*page) : nullptr;
  if (input == nullptr) return false;
  const bool isFocus = event.type() == QEvent::FocusIn || event.type() == QEvent::FocusOut;
  if (event.type() == QEvent::KeyPress) engineOf(*page)->noteUserAction();
  const bool isTaken = QCoreApplication::sendEvent(input, &event);
  // The widget's own focus is the toolkit's business, too.
  return isTaken && !isFocus;
}

QVariant SurfaceInput::answerInputMethod(Qt::InputMethodQuery query) const {
  const auto page = focused_.lock();
  const QWidget* const input = page != nullptr ? inputOf(*page) : nullptr;
  if (input == nullptr) return {};
  QVariant answer = input->inputMethodQuery(query);
  const bool isPlace = answer.typeId() == QMetaType::QRect || answer.typeId() == QMetaType::QRectF;
  const auto placement = isPlace ? placementOf(*page, *window_) : std::nullopt;
  if (!placement) return answer;
  const CGAffineTransform& shown = placement->transform;
  return QTransform(shown.a, shown.b, shown.c, shown.d, shown.tx, shown.ty).mapRect(answer.toRectF()).toRect();
}

CGPoint SurfaceInput::onSurface(QPointF onWindow) const {
  const QPointF point = host_->fromWindow(onWindow);
  return {point.x(), point.y()};
}

SurfaceInput::Target SurfaceInput::targetAt(CGPoint onSurface) const {
  const QSize size = host_->size();
  const CGRect area{{}, {static_cast<CGFloat>(size.width()), static_cast<CGFloat>(size.height())}};
  if (!area.contains(onSurface)) return {};
  const CGPoint origin = window_->bounds().origin;
  const auto view = window_->hitTest({onSurface.x + origin.x, onSurface.y + origin.y});
  if (view == nullptr) return {};
  const auto page = std::dynamic_pointer_cast<WKWebView>(view);
  return page != nullptr ? Target{Target::Kind::page, page} : Target{Target::Kind::views};
}

std::optional<QPointF> SurfaceInput::onPage(const WKWebView& page, CGPoint onSurface) const {
  const auto placement = placementOf(page, *window_);
  const auto back = placement ? placement->transform.inverted() : std::nullopt;
  if (!back) return std::nullopt;
  const CGPoint point = back->apply(onSurface);
  return QPointF(point.x, point.y);
}

}  // namespace corvane::qt
