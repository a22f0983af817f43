#include "corvane/platform/qt/qt_surface_core.h"

#include <QPainter>
#include <QWindow>
#include <chrono>
#include <utility>

#include "corvane/platform/engine/surface_scene.h"
#include "corvane/platform/engine/window_drawing.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_surface_drawing.h"
#include "corvane/platform/qt/qt_surface_input.h"
#include "corvane/platform/qt/qt_surface_keyboard.h"
#include "corvane/platform/qt/qt_web_engine.h"

namespace corvane::qt {

namespace {

/// As often as screens show a frame.
constexpr std::chrono::milliseconds frameLength{16};

/// All parts of a frame are of the same moment.
RunLoop::Time frameTime() { return RunLoop::hasMain() ? RunLoop::main().now() : RunLoop::Time::max(); }

}  // namespace

std::shared_ptr<SurfaceCore> SurfaceCore::create(std::shared_ptr<SurfaceHost> host) {
  auto core = std::make_shared<SurfaceCore>(ConstructionKey{}, std::move(host));
  core->begin();
  return core;
}

SurfaceCore::SurfaceCore(ConstructionKey, std::shared_ptr<SurfaceHost> host)
    : window_(UIWindow::create()), host_(std::move(host)) {}

void SurfaceCore::begin() {
  input_ = SurfaceInput::create(host_, window_);
  keyboard_ = std::make_shared<SurfaceKeyboard>(host_, window_, input_);
  keyboard_->begin();
  frames_.setTimerType(Qt::PreciseTimer);
  frames_.setInterval(frameLength);
  frames_.callOnTimeout(&frames_, [show = whileAlive(weak_from_this(), &SurfaceCore::showFrame)]() mutable { show(); });
  engine::joinScene(*window_);
}

void SurfaceCore::end() {
  frames_.stop();
  engine::leaveScene(*window_);
  keyboard_.reset();
  input_.reset();
}

void SurfaceCore::viewTreeDidChange() {
  if (!std::exchange(isPlacing_, true) && RunLoop::hasMain()) {
    // The tree changes inside addSubview and its like, and during layout.
    RunLoop::main().post(whileAlive(weak_from_this(), &SurfaceCore::placePages));
  }
  followAnimations();
  if (!isDrawing_) host_->queueFrame();
}

void SurfaceCore::surfaceResized(CGSize size) {
  const auto alive = shared_from_this();
  if (window_->frame() != CGRect{{}, size}) window_->setFrame({{}, size});
  window_->layoutIfNeeded();
}

void SurfaceCore::surfaceShown() {
  const auto alive = shared_from_this();
  if (input_) input_->watchWindow();
  const QWindow* const native = host_->nativeWindow();
  if (native != nullptr && native->isActive()) engine::windowActivated(*window_);
}

void SurfaceCore::surfaceHidden() {
  const auto alive = shared_from_this();
  if (const auto input = input_) input->cancelAll();
}

void SurfaceCore::surfaceActivated() {
  const auto alive = shared_from_this();
  engine::windowActivated(*window_);
}

void SurfaceCore::focusMoved() {
  const auto alive = shared_from_this();
  if (const auto keyboard = keyboard_) keyboard->focusDidMove();
}

void SurfaceCore::drawSurface(QPainter& painter, qreal devicePixelRatio) {
  const auto alive = shared_from_this();
  isDrawing_ = true;
  window_->layoutIfNeeded();
  {
    PainterCanvas canvas(painter, host_->size(), devicePixelRatio);
    engine::drawWindow(canvas, *window_, frameTime());
    if (keyboard_ != nullptr) keyboard_->drawFocus(painter);
  }
  isDrawing_ = false;
  followAnimations();
}

bool SurfaceCore::handleInput(QEvent& event) {
  const auto alive = shared_from_this();
  const auto keyboard = keyboard_;
  return keyboard && keyboard->handle(event);
}

QVariant SurfaceCore::answerInputMethod(Qt::InputMethodQuery query) {
  return input_ ? input_->answerInputMethod(query) : QVariant();
}

bool SurfaceCore::isAnimating() const { return RunLoop::hasMain() && window_->isAnimating(); }

void SurfaceCore::followAnimations() {
  if (!frames_.isActive() && input_ != nullptr && isAnimating()) frames_.start();
}

void SurfaceCore::showFrame() {
  host_->queueFrame();
  if (!isAnimating()) frames_.stop();
}

/// Pages draw more often than frames are shown. While something moves, the frames' own time counts.
void SurfaceCore::pageChanged() {
  if (!frames_.isActive()) host_->queueFrame();
}

void SurfaceCore::placePages() {
  isPlacing_ = false;
  if (keyboard_ == nullptr) return;
  window_->layoutIfNeeded();
  for (const engine::Placement& placement : engine::placementsIn(*window_, frameTime())) {
    auto* const engine = dynamic_cast<QtWebEngine*>(placement.engine);
    if (engine == nullptr) continue;
    if (engine->surface() != host_) {
      engine->setSurface(host_, whileAlive(weak_from_this(), &SurfaceCore::pageChanged));
      engine->view().setEndOfTabs(whileAlive(keyboard_->weak_from_this(), &SurfaceKeyboard::leavePage));
    }
    const QSize present = engine->view().size();
    engine->view().setPageSize({engine::pageLength(placement.size.width, present.width()),
                                engine::pageLength(placement.size.height, present.height())});
  }
  keyboard_->viewsDidChange();
  host_->queueFrame();
}

}  // namespace corvane::qt
