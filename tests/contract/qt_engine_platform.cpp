#include <qpa/qwindowsysteminterface.h>
#include <unistd.h>
#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QPointingDevice>
#include <QWidget>
#include <QWindow>
#include <QtWebEngineWidgets/QWebEngineView>
#include <algorithm>
#include <csignal>
#include <map>
#include <ranges>
#include <utility>

#include "corvane/platform/qt/qt_developer_tools.h"
#include "tests/contract/qt_engine_platform.h"

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

/// Events as the window system makes them, so that everything from there on is what users get.
class QtPointer final : public TestPointer {
 public:
  explicit QtPointer(std::function<QWindow*()> window) : window_(std::move(window)) {}
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
    if (phase != TouchPhase::ended) fingers_[finger] = nativeWindow()->mapToGlobal(QPointF(at.x, at.y));
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
        nativeWindow(), place_, nativeWindow()->mapToGlobal(place_), buttons_, button, type, Qt::NoModifier);
  }
  QWindow* nativeWindow() const { return window_(); }

  std::function<QWindow*()> window_;
  QPointF place_;
  Qt::MouseButtons buttons_;
  std::map<int, QPointF> fingers_;
};

}  // namespace

std::unique_ptr<qt::Backend> QtEnginePlatform::installBackend(std::string& reason) {
  makeApplication();
  auto backend = qt::Backend::install({.usesMockCaptureDevices = true,
                                       .isEphemeral = true,
                                       .userAgentSuffix = userAgentSuffix,
                                       .languages = {pageLanguage},
                                       .longestMessage = longestMessage});
  if (!backend) reason = backend.error();
  return backend ? *std::move(backend) : nullptr;
}

QtEnginePlatform::QtEnginePlatform(std::unique_ptr<qt::Backend> backend) : backend_(std::move(backend)) {
  backend_->setCapturePrompt(prompt());
}

std::unique_ptr<TestPointer> QtEnginePlatform::pointerOver(std::function<QWindow*()> window) {
  return std::make_unique<QtPointer>(std::move(window));
}

std::function<Colour(int, int)> QtEnginePlatform::coloursOf(const QImage& picture, double scale) {
  return [picture, scale](int x, int y) {
    const QColor colour = picture.pixelColor(static_cast<int>(x * scale), static_cast<int>(y * scale));
    return Colour{colour.red(), colour.green(), colour.blue()};
  };
}

bool QtEnginePlatform::iterate(bool mayBlock) {
  // On Wayland, Qt looks for events of the compositor where its own dispatcher is about to wait.
  return QAbstractEventDispatcher::instance()->processEvents(mayBlock ? QEventLoop::WaitForMoreEvents
                                                                      : QEventLoop::AllEvents);
}

void QtEnginePlatform::pageLosesItsProcess(const UIView&) {
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    const auto* const view = qobject_cast<QWebEngineView*>(widget);
    const auto process = view != nullptr ? static_cast<pid_t>(view->page()->renderProcessPid()) : 0;
    if (process > 0) kill(process, SIGKILL);
  }
}

bool QtEnginePlatform::showDeveloperTools(const UIView& view) { return qt::showDeveloperTools(view); }

int QtEnginePlatform::windowCount() {
  return static_cast<int>(std::ranges::count_if(QApplication::topLevelWidgets(), &QWidget::isVisible));
}

}  // namespace corvane::contract
