#include "tests/contract/quick_platform.h"

#include <unistd.h>
#include <QImage>
#include <QKeyEvent>
#include <QPointer>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <filesystem>
#include <utility>

#include "corvane/platform/qt/qt_frame_meter.h"
#include "corvane/platform/qt/qt_screenshot.h"
#include "corvane/platform/qt/qt_views_over.h"
#include "tests/contract/qt_engine_platform.h"

namespace corvane::contract {

namespace {

std::unique_ptr<QQuickWindow> makeWindow() {
  auto window = std::make_unique<QQuickWindow>();
  window->setFlags(Qt::FramelessWindowHint);
  window->resize(390, 844);
  return window;
}

std::function<int()> frameCounter(QQuickWindow& window) {
  auto meter = std::make_shared<qt::FrameMeter>(window);
  return [meter] { return meter->result().frames; };
}

/// What apps of Qt Quick have for a button, at its smallest.
class HostButton final : public QQuickItem {
 public:
  HostButton(QQuickItem* parent, std::function<void()> clicked) : QQuickItem(parent), clicked_(std::move(clicked)) {
    setAcceptedMouseButtons(Qt::LeftButton);
    setActiveFocusOnTab(true);
  }

 protected:
  void mousePressEvent(QMouseEvent* event) override { event->accept(); }
  void mouseReleaseEvent(QMouseEvent*) override { clicked_(); }
  void keyPressEvent(QKeyEvent* event) override {
    event->setAccepted(event->key() == Qt::Key_Space);
    if (event->isAccepted()) clicked_();
  }

 private:
  std::function<void()> clicked_;
};

class QuickScreen final : public TestScreen {
 public:
  explicit QuickScreen(bool isShown) : views_(qt::viewsOver(*window_)) {
    if (isShown) window_->show();
  }

  std::shared_ptr<UIWindow> window() override { return views_; }
  void endSurface() override {
    views_.reset();
    const std::unique_ptr<QQuickItem> layer(window_->contentItem()->findChild<QQuickItem*>(QStringLiteral("Call")));
  }
  std::unique_ptr<TestPointer> openPointer(std::string&) override {
    return QtEnginePlatform::pointerOver([this] { return window_.get(); });
  }
  std::function<int()> countFrames() override { return frameCounter(*window_); }

 private:
  std::unique_ptr<QQuickWindow> window_ = makeWindow();
  std::shared_ptr<UIWindow> views_;
};

class QuickPlatform final : public QtEnginePlatform {
 public:
  explicit QuickPlatform(std::unique_ptr<qt::Backend> backend) : QtEnginePlatform(std::move(backend)) {
    windows_.first->show();
  }

  const std::shared_ptr<UIWindow>& window() override { return views_; }

  std::function<Colour(int, int)> takePicture() override {
    const auto file = std::filesystem::temp_directory_path() / ("corvane_quick_" + std::to_string(getpid()) + ".png");
    if (!qt::saveScreenshot(shown(), file)) return [](int, int) { return Colour{}; };
    const QImage picture(QString::fromStdString(file.string()));
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    return coloursOf(picture, shown().effectiveDevicePixelRatio());
  }

  std::function<int()> countFrames() override { return frameCounter(shown()); }
  void queueFrame() override { shown().update(); }
  std::unique_ptr<TestPointer> openPointer(std::string&) override {
    return pointerOver([this] { return &shown(); });
  }
  void setSurfaceVisible(bool isVisible) override { shown().setVisible(isVisible); }
  std::unique_ptr<TestScreen> makeScreen(bool isShown) override { return std::make_unique<QuickScreen>(isShown); }
  void moveSurface(bool isAlone) override {
    shown().hide();
    isAlone_ = isAlone;
    shown().show();
    // A window keeps its own surface, so the views move.
    const auto views = qt::viewsOver(shown());
    while (!views_->subviews().empty()) views->addSubview(std::shared_ptr(views_->subviews().front()));
    views_ = views;
  }

  void addHostButton(const CGRect& frame, std::function<void()> clicked) override {
    auto* const button = new HostButton(shown().contentItem(), std::move(clicked));
    button->setPosition({frame.minX(), frame.minY()});
    button->setSize({frame.size.width, frame.size.height});
  }

  Focus focus() override {
    QQuickItem* const focus = shown().activeFocusItem();
    if (focus == nullptr || focus == shown().contentItem()) return Focus::nothing;
    if (focus->objectName() != QStringLiteral("Call")) return Focus::host;
    // The surface answers for the page that has the focus.
    return focus->inputMethodQuery(Qt::ImSurroundingText).isValid() ? Focus::page : Focus::surface;
  }

  [[nodiscard]] QQuickWindow& shown() const { return isAlone_ ? *windows_.second : *windows_.first; }

 private:
  std::pair<std::unique_ptr<QQuickWindow>, std::unique_ptr<QQuickWindow>> windows_{makeWindow(), makeWindow()};
  bool isAlone_ = false;
  std::shared_ptr<UIWindow> views_ = qt::viewsOver(*windows_.first);
};

}  // namespace

QQuickWindow& quickWindow(RealEnginePlatform& platform) { return static_cast<QuickPlatform&>(platform).shown(); }

RealEngineMaker quickEngine() { return {"RealEngineQuick", QtEnginePlatform::make<QuickPlatform>}; }

}  // namespace corvane::contract
