#include "corvane/platform/qt/qt_surface.h"

#include <QPainter>
#include <QPointer>
#include <QTimer>
#include <QVariant>
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
#include "corvane/platform/qt/qt_surface_widget.h"
#include "corvane/platform/qt/qt_web_engine.h"

namespace corvane::qt {

namespace {

/// As often as screens show a frame.
constexpr std::chrono::milliseconds frameLength{16};

}  // namespace

/// What the toolkit sees of a surface; it is kept alive for the length of every call that it gets.
class Surface::Parts final : public SurfaceWidgetClient, public std::enable_shared_from_this<Parts> {
 public:
  Parts() : window_(UIWindow::create()), widget_(std::make_unique<SurfaceWidget>(*this).release()) {}

  void begin() {
    input_ = SurfaceInput::create(*widget_, window_);
    keyboard_ = std::make_shared<SurfaceKeyboard>(*widget_, window_, input_);
    keyboard_->begin();
    frames_.setTimerType(Qt::PreciseTimer);
    frames_.setInterval(frameLength);
    frames_.callOnTimeout(&frames_, [show = whileAlive(weak_from_this(), &Parts::showFrame)]() mutable { show(); });
    engine::joinScene(*window_);
  }

  void end() {
    frames_.stop();
    engine::leaveScene(*window_);
    keyboard_.reset();
    input_.reset();
    if (widget_ == nullptr) return;
    widget_->leaveClient();
    widget_->hide();
    widget_->setParent(nullptr);
    // The widget may be in the middle of telling us something.
    std::unique_ptr<SurfaceWidget> widget(widget_.data());
    if (RunLoop::hasMain()) RunLoop::main().post([widget = std::move(widget)] {});
  }

  [[nodiscard]] QWidget* widget() const { return widget_; }
  [[nodiscard]] const std::shared_ptr<UIWindow>& window() const { return window_; }

  void viewTreeDidChange() {
    if (!std::exchange(isPlacing_, true) && RunLoop::hasMain()) {
      // The tree changes inside addSubview and its like, and during layout.
      RunLoop::main().post(whileAlive(weak_from_this(), &Parts::placePages));
    }
    followAnimations();
    if (!isDrawing_) queueFrame();
  }

  void surfaceResized(CGSize size) override {
    const auto alive = shared_from_this();
    if (window_->frame() != CGRect{{}, size}) window_->setFrame({{}, size});
    window_->layoutIfNeeded();
  }
  void surfaceShown() override {
    const auto alive = shared_from_this();
    if (input_) input_->watchWindow();
    if (widget_->isActiveWindow()) engine::windowActivated(*window_);
  }
  void surfaceHidden() override {
    const auto alive = shared_from_this();
    if (const auto input = input_) input->cancelAll();
  }
  void surfaceActivated() override {
    const auto alive = shared_from_this();
    engine::windowActivated(*window_);
  }

  void drawSurface() override {
    const auto alive = shared_from_this();
    isDrawing_ = true;
    window_->layoutIfNeeded();
    if (widget_ != nullptr) {
      QPainter painter(widget_);
      PainterCanvas canvas(painter, widget_->size(), widget_->devicePixelRatioF());
      engine::drawWindow(canvas, *window_, frameTime());
      if (keyboard_ != nullptr) keyboard_->drawFocus(painter);
    }
    isDrawing_ = false;
    followAnimations();
  }

  bool handleInput(QEvent& event) override {
    const auto keyboard = keyboard_;
    return keyboard && keyboard->handle(event);
  }
  QVariant answerInputMethod(Qt::InputMethodQuery query) override {
    return input_ ? input_->answerInputMethod(query) : QVariant();
  }

 private:
  void queueFrame() const {
    if (widget_ != nullptr) widget_->update();
  }

  [[nodiscard]] bool isAnimating() const { return RunLoop::hasMain() && window_->isAnimating(); }

  /// All parts of a frame are of the same moment.
  [[nodiscard]] static RunLoop::Time frameTime() {
    return RunLoop::hasMain() ? RunLoop::main().now() : RunLoop::Time::max();
  }

  void followAnimations() {
    if (!frames_.isActive() && input_ != nullptr && isAnimating()) frames_.start();
  }

  void showFrame() {
    queueFrame();
    if (!isAnimating()) frames_.stop();
  }

  /// Pages draw more often than frames are shown. While something moves, the frames' own time counts.
  void pageChanged() {
    if (!frames_.isActive()) queueFrame();
  }

  void placePages() {
    isPlacing_ = false;
    window_->layoutIfNeeded();
    for (const engine::Placement& placement : engine::placementsIn(*window_, frameTime())) {
      auto* const engine = dynamic_cast<QtWebEngine*>(placement.engine);
      if (engine == nullptr) continue;
      if (engine->surface() != widget_) {
        engine->setSurface(widget_, whileAlive(weak_from_this(), &Parts::pageChanged));
        engine->view().setEndOfTabs(whileAlive(keyboard_->weak_from_this(), &SurfaceKeyboard::leavePage));
      }
      const QSize present = engine->view().size();
      engine->view().setPageSize({engine::pageLength(placement.size.width, present.width()),
                                  engine::pageLength(placement.size.height, present.height())});
    }
    if (keyboard_ != nullptr) keyboard_->viewsDidChange();
    queueFrame();
  }

  std::shared_ptr<UIWindow> window_;
  QPointer<SurfaceWidget> widget_;
  std::shared_ptr<SurfaceInput> input_;
  std::shared_ptr<SurfaceKeyboard> keyboard_;
  QTimer frames_;
  bool isDrawing_ = false;
  bool isPlacing_ = false;
};

std::shared_ptr<Surface> Surface::create() {
  auto surface = std::make_shared<Surface>(ConstructionKey{});
  surface->window()->setDelegate(surface);
  return surface;
}

Surface::Surface(ConstructionKey) : parts_(std::make_shared<Parts>()) { parts_->begin(); }

Surface::~Surface() { parts_->end(); }

QWidget* Surface::widget() const { return parts_->widget(); }
const std::shared_ptr<UIWindow>& Surface::window() const { return parts_->window(); }
void Surface::viewTreeDidChange() { parts_->viewTreeDidChange(); }

}  // namespace corvane::qt
