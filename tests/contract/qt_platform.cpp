#include <qpa/qwindowsysteminterface.h>
#include <unistd.h>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QGridLayout>
#include <QImage>
#include <QPointingDevice>
#include <QPushButton>
#include <QWindow>
#include <QtWebEngineWidgets/QWebEngineView>
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <map>
#include <ranges>
#include <utility>

#include "corvane/platform/qt/qt_backend.h"
#include "corvane/platform/qt/qt_developer_tools.h"
#include "corvane/platform/qt/qt_frame_meter.h"
#include "corvane/platform/qt/qt_screenshot.h"
#include "corvane/platform/qt/qt_surface.h"
#include "tests/contract/real_engine_platform.h"

namespace corvane::contract {

namespace {

/// One for all tests of a program. No display server is needed.
void makeApplication() {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (getuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
  static int count = 1;
  static std::string name = "corvane-tests";
  static char* names[] = {name.data(), nullptr};
  static auto* const application = new QApplication(count, names);
  application->setQuitOnLastWindowClosed(false);
}

std::unique_ptr<QWidget> makeHostWindow() {
  auto window = std::make_unique<QWidget>(nullptr, Qt::FramelessWindowHint);
  window->resize(390, 844);
  auto* const layout = new QGridLayout(window.get());
  layout->setContentsMargins(0, 0, 0, 0);
  return window;
}

void showOver(QWidget& window, QWidget* surface) {
  static_cast<QGridLayout*>(window.layout())->addWidget(surface, 0, 0);
  surface->show();
  surface->raise();
  window.show();
}

/// Events as the window system makes them, so that everything from there on is what users get.
class QtPointer final : public TestPointer {
 public:
  explicit QtPointer(QWidget* widget) : widget_(widget) {}
  QtPointer(const QtPointer&) = delete;
  QtPointer& operator=(const QtPointer&) = delete;
  ~QtPointer() override {
    if (buttons_ != Qt::NoButton) {
      send(QEvent::MouseButtonRelease, buttons_.testFlag(Qt::LeftButton) ? Qt::LeftButton : Qt::MiddleButton);
    }
  }

  void press(int button) override {
    buttons_.setFlag(buttonOf(button), true);
    send(QEvent::MouseButtonPress, buttonOf(button));
  }
  void release(int button) override {
    buttons_.setFlag(buttonOf(button), false);
    send(QEvent::MouseButtonRelease, buttonOf(button));
  }

  bool hasFingers() const override { return true; }
  void touch(int finger, TouchPhase phase, CGPoint at) override {
    if (phase == TouchPhase::cancelled) {
      fingers_.clear();
      QWindowSystemInterface::handleTouchCancelEvent<QWindowSystemInterface::AsynchronousDelivery>(nativeWindow(),
                                                                                                   screen());
      return;
    }
    QEventPoint::State state = QEventPoint::Released;
    if (phase == TouchPhase::began) state = QEventPoint::Pressed;
    if (phase == TouchPhase::moved) state = QEventPoint::Updated;
    // A finger goes up where it was.
    if (phase != TouchPhase::ended) fingers_[finger] = nativeWindow()->mapToGlobal(onWindow({at.x, at.y}));
    QList<QWindowSystemInterface::TouchPoint> points;
    for (const auto& [identifier, place] : fingers_) {
      QWindowSystemInterface::TouchPoint point;
      point.id = identifier;
      point.area = QRectF(place, QSizeF(0, 0));
      point.state = identifier == finger ? state : QEventPoint::Stationary;
      points.append(point);
    }
    QWindowSystemInterface::handleTouchEvent<QWindowSystemInterface::AsynchronousDelivery>(nativeWindow(), screen(),
                                                                                           points);
    if (phase == TouchPhase::ended) fingers_.erase(finger);
  }

  void type(std::initializer_list<Key> chord) override {
    static constexpr Qt::Key values[] = {Qt::Key_Tab,   Qt::Key_Space, Qt::Key_Return, Qt::Key_Left,
                                         Qt::Key_Right, Qt::Key_Up,    Qt::Key_Down,   Qt::Key_A};
    const auto sendKey = [this](QEvent::Type kind, Key key) {
      const QString text = key == Key::a ? QStringLiteral("a") : key == Key::space ? QStringLiteral(" ") : QString();
      QWindowSystemInterface::handleKeyEvent<QWindowSystemInterface::AsynchronousDelivery>(
          nativeWindow(), kind, values[std::to_underlying(key)], Qt::NoModifier, text);
    };
    for (const Key key : chord) sendKey(QEvent::KeyPress, key);
    for (const Key key : std::views::reverse(chord)) sendKey(QEvent::KeyRelease, key);
  }

 private:
  static Qt::MouseButton buttonOf(int number) { return number == 1 ? Qt::LeftButton : Qt::MiddleButton; }
  static const QPointingDevice* screen() {
    static const QPointingDevice device("fingers", 1, QInputDevice::DeviceType::TouchScreen,
                                        QPointingDevice::PointerType::Finger, QInputDevice::Capability::Position, 2, 0);
    return &device;
  }

  void moveNow(CGPoint to) override {
    place_ = QPointF(to.x, to.y);
    send(QEvent::MouseMove, Qt::NoButton);
  }
  void send(QEvent::Type type, Qt::MouseButton button) {
    // Presses in quick succession would count as one double click.
    QWindowSystemInterface::handleMouseEvent<QWindowSystemInterface::AsynchronousDelivery>(
        nativeWindow(), onWindow(place_), nativeWindow()->mapToGlobal(onWindow(place_)), buttons_, button, type,
        Qt::NoModifier);
  }
  QWindow* nativeWindow() const { return widget_->window()->windowHandle(); }
  QPointF onWindow(QPointF onWidget) const { return widget_->mapTo(widget_->window(), onWidget); }

  QWidget* widget_;
  QPointF place_;
  Qt::MouseButtons buttons_;
  std::map<int, QPointF> fingers_;
};

std::function<int()> frameCounter(QWidget* widget) {
  auto meter = std::make_shared<qt::FrameMeter>(widget);
  return [meter] { return meter->result().frames; };
}

class QtScreen final : public TestScreen {
 public:
  explicit QtScreen(bool isShown) {
    if (isShown) showOver(*host_, surface_->widget());
  }

  std::shared_ptr<UIWindow> window() override { return surface_ != nullptr ? surface_->window() : nullptr; }
  void endSurface() override { surface_.reset(); }
  std::unique_ptr<TestPointer> openPointer(std::string&) override {
    return std::make_unique<QtPointer>(surface_->widget());
  }
  std::function<int()> countFrames() override { return frameCounter(surface_->widget()); }

 private:
  std::unique_ptr<QWidget> host_ = makeHostWindow();
  std::shared_ptr<qt::Surface> surface_ = qt::Surface::create();
};

class QtPlatform final : public RealEnginePlatform {
 public:
  static std::unique_ptr<RealEnginePlatform> make(std::string& reason) {
    makeApplication();
    auto backend = qt::Backend::install({.usesMockCaptureDevices = true,
                                         .isEphemeral = true,
                                         .userAgentSuffix = userAgentSuffix,
                                         .languages = {pageLanguage},
                                         .longestMessage = longestMessage});
    if (!backend) reason = backend.error();
    if (!backend) return nullptr;
    auto platform = std::make_unique<QtPlatform>(*std::move(backend));
    reason = platform->begin();
    if (!reason.empty()) return nullptr;
    return platform;
  }

  explicit QtPlatform(std::unique_ptr<qt::Backend> backend) : backend_(std::move(backend)) {
    backend_->setCapturePrompt(prompt());
    static_cast<QGridLayout*>(window_->layout())->addWidget(hostWidgets_, 0, 0);
    showOver(*window_, surface_->widget());
  }

  const std::shared_ptr<UIWindow>& window() override { return surface_->window(); }

  bool iterate(bool mayBlock) override {
    // On Wayland, Qt looks for events of the compositor where its own dispatcher is about to wait.
    return QAbstractEventDispatcher::instance()->processEvents(mayBlock ? QEventLoop::WaitForMoreEvents
                                                                        : QEventLoop::AllEvents);
  }

  void pageLosesItsProcess(const UIView&) override {
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
      const auto* const view = qobject_cast<QWebEngineView*>(widget);
      const auto process = view != nullptr ? static_cast<pid_t>(view->page()->renderProcessPid()) : 0;
      if (process > 0) kill(process, SIGKILL);
    }
  }

  std::function<Colour(int, int)> takePicture() override {
    const auto file = std::filesystem::temp_directory_path() / ("corvane_qt_" + std::to_string(getpid()) + ".png");
    if (!qt::saveScreenshot(surface_->widget(), file)) return [](int, int) { return Colour{}; };
    const QImage picture(QString::fromStdString(file.string()));
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    const double scale = surface_->widget()->devicePixelRatio();
    return [picture, scale](int x, int y) {
      const QColor colour = picture.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
      return Colour{colour.red(), colour.green(), colour.blue()};
    };
  }

  std::function<int()> countFrames() override { return frameCounter(surface_->widget()); }
  void queueFrame() override { surface_->widget()->update(); }
  std::unique_ptr<TestPointer> openPointer(std::string&) override {
    return std::make_unique<QtPointer>(surface_->widget());
  }
  bool showDeveloperTools(const UIView& view) override { return qt::showDeveloperTools(view); }
  int windowCount() override {
    return static_cast<int>(std::ranges::count_if(QApplication::topLevelWidgets(), &QWidget::isVisible));
  }
  void setSurfaceVisible(bool isVisible) override { surface_->widget()->setVisible(isVisible); }
  std::unique_ptr<TestScreen> makeScreen(bool isShown) override { return std::make_unique<QtScreen>(isShown); }
  void moveSurface(bool isAlone) override {
    otherWindow_->hide();
    showOver(isAlone ? *otherWindow_ : *window_, surface_->widget());
  }

  void addHostButton(const CGRect& frame, std::function<void()> clicked) override {
    auto* const button = new QPushButton(hostWidgets_);
    button->setGeometry(static_cast<int>(frame.minX()), static_cast<int>(frame.minY()),
                        static_cast<int>(frame.size.width), static_cast<int>(frame.size.height));
    QObject::connect(button, &QPushButton::clicked, button, std::move(clicked));
    button->show();
  }

  Focus focus() override {
    const QWidget* const focus = window_->focusWidget();
    if (focus == nullptr) return Focus::nothing;
    if (focus != surface_->widget()) return Focus::host;
    // The surface answers for the page that has the focus.
    return focus->inputMethodQuery(Qt::ImSurroundingText).isValid() ? Focus::page : Focus::surface;
  }

  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) override {
    backend_->setCaptureAuthorization(mediaType, status);
  }

 private:
  std::unique_ptr<qt::Backend> backend_;
  std::unique_ptr<QWidget> window_ = makeHostWindow();
  std::unique_ptr<QWidget> otherWindow_ = makeHostWindow();
  QWidget* hostWidgets_ = new QWidget(window_.get());
  std::shared_ptr<qt::Surface> surface_ = qt::Surface::create();
};

}  // namespace

RealEngineMaker qtEngine() { return {"RealEngineQt", QtPlatform::make}; }

}  // namespace corvane::contract
