#include <unistd.h>
#include <QApplication>
#include <QGridLayout>
#include <QImage>
#include <QPushButton>
#include <filesystem>
#include <utility>

#include "corvane/platform/qt/qt_frame_meter.h"
#include "corvane/platform/qt/qt_screenshot.h"
#include "corvane/platform/qt/qt_surface.h"
#include "tests/contract/qt_engine_platform.h"

namespace corvane::contract {

namespace {

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
    return QtEnginePlatform::pointerOver([this] { return surface_->widget()->window()->windowHandle(); });
  }
  std::function<int()> countFrames() override { return frameCounter(surface_->widget()); }

 private:
  std::unique_ptr<QWidget> host_ = makeHostWindow();
  std::shared_ptr<qt::Surface> surface_ = qt::Surface::create();
};

class QtPlatform final : public QtEnginePlatform {
 public:
  explicit QtPlatform(std::unique_ptr<qt::Backend> backend) : QtEnginePlatform(std::move(backend)) {
    static_cast<QGridLayout*>(window_->layout())->addWidget(hostWidgets_, 0, 0);
    showOver(*window_, surface_->widget());
  }

  const std::shared_ptr<UIWindow>& window() override { return surface_->window(); }

  std::function<Colour(int, int)> takePicture() override {
    const auto file = std::filesystem::temp_directory_path() / ("corvane_qt_" + std::to_string(getpid()) + ".png");
    if (!qt::saveScreenshot(surface_->widget(), file)) return [](int, int) { return Colour{}; };
    const QImage picture(QString::fromStdString(file.string()));
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    return coloursOf(picture, surface_->widget()->devicePixelRatio());
  }

  std::function<int()> countFrames() override { return frameCounter(surface_->widget()); }
  void queueFrame() override { surface_->widget()->update(); }
  std::unique_ptr<TestPointer> openPointer(std::string&) override {
    return QtEnginePlatform::pointerOver([this] { return surface_->widget()->window()->windowHandle(); });
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

 private:
  std::unique_ptr<QWidget> window_ = makeHostWindow();
  std::unique_ptr<QWidget> otherWindow_ = makeHostWindow();
  QWidget* hostWidgets_ = new QWidget(window_.get());
  std::shared_ptr<qt::Surface> surface_ = qt::Surface::create();
};

}  // namespace

RealEngineMaker qtEngine() { return {"RealEngineQt", QtEnginePlatform::make<QtPlatform>}; }

}  // namespace corvane::contract
