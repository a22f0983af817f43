/// A host app whose screens are QML.
#pragma once

#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickWindow>
#include <expected>
#include <memory>
#include <string>
#include <vector>

#include "corvane/platform/declarative/notifier.h"
#include "demo/qt/agent_app.h"

namespace corvane::demo {

/// Shows `shop.qml`, which does all that the app does. A backend must be installed.
class QmlApp final : public AgentApp {
 public:
  /// `page` is the address of the agent tool. Fails with a text for developers where the QML cannot be loaded.
  [[nodiscard]] static std::expected<std::unique_ptr<QmlApp>, std::string> load(const std::string& page,
                                                                                const std::string& booking,
                                                                                const std::vector<Product>& products);
  ~QmlApp() override;
  QmlApp(const QmlApp&) = delete;
  QmlApp& operator=(const QmlApp&) = delete;

  void open() override;
  [[nodiscard]] std::shared_ptr<VelnorAgentView> agentView() const override;
  [[nodiscard]] std::shared_ptr<UIWindow> views() const override;
  [[nodiscard]] QWindow* nativeWindow() const override { return window_.get(); }
  void addToCall(const Product& product) override;
  void showProducts() override;
  [[nodiscard]] std::unique_ptr<qt::FrameMeter> measure() override;
  [[nodiscard]] bool savePicture(const std::filesystem::path& file) override;

 private:
  QmlApp() = default;

  QQmlEngine engine_;
  std::unique_ptr<QQuickWindow> window_;
  Subscription floating_;
};

}  // namespace corvane::demo
