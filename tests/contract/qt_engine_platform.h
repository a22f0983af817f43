/// What tests of Qt's engine need, whether an app is made of widgets or of Qt Quick.
#pragma once

#include <QImage>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "corvane/platform/qt/qt_backend.h"
#include "tests/contract/real_engine_platform.h"

class QWindow;

namespace corvane::contract {

class QtEnginePlatform : public RealEnginePlatform {
 public:
  template <class Platform>
  static std::unique_ptr<RealEnginePlatform> make(std::string& reason) {
    auto backend = installBackend(reason);
    if (backend == nullptr) return nullptr;
    auto platform = std::make_unique<Platform>(std::move(backend));
    reason = platform->begin();
    if (!reason.empty()) return nullptr;
    return platform;
  }

  void pageLosesItsProcess(const UIView& view) override;
  bool showDeveloperTools(const UIView& view) override;
  int windowCount() override;
  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) override {
    backend_->setCaptureAuthorization(mediaType, status);
  }

  /// Events as the window system makes them, so that everything from there on is what users get.
  [[nodiscard]] static std::unique_ptr<TestPointer> pointerOver(std::function<QWindow*()> window);
  /// Of a picture with more pixels than points.
  [[nodiscard]] static std::function<Colour(int x, int y)> coloursOf(const QImage& picture, double scale);

 protected:
  explicit QtEnginePlatform(std::unique_ptr<qt::Backend> backend);
  bool iterate(bool mayBlock) override;

 private:
  [[nodiscard]] static std::unique_ptr<qt::Backend> installBackend(std::string& reason);

  std::unique_ptr<qt::Backend> backend_;
};

}  // namespace corvane::contract
