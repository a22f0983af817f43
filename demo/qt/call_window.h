/// A host app on Qt: the agent's call, and beside it the shop's own products.
#pragma once

#include <QWidget>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/qt/qt_surface.h"
#include "demo/qt/agent_app.h"
#include "demo/shop/shop_cart.h"
#include "demo/shop/shop_requests.h"

class QLabel;
class QPushButton;
class QStackedWidget;

namespace corvane::demo {

/// The call floats over both screens, and over nothing of the bar below them.
///
/// Ownership: owned by its maker. Threads: main thread only. A backend must be installed.
class CallWindow final : public QWidget, public AgentApp {
 public:
  /// `page` is the address of the agent tool.
  CallWindow(const std::string& page, std::string booking, const std::vector<Product>& products);
  ~CallWindow() override;

  void open() override;
  [[nodiscard]] std::shared_ptr<VelnorAgentView> agentView() const override { return view_; }
  [[nodiscard]] std::shared_ptr<UIWindow> views() const override { return surface_->window(); }
  [[nodiscard]] QWindow* nativeWindow() const override { return windowHandle(); }
  void addToCall(const Product& product) override { requests_->addToCall(product); }
  void showProducts() override;
  [[nodiscard]] std::unique_ptr<qt::FrameMeter> measure() override;
  [[nodiscard]] bool savePicture(const std::filesystem::path& file) override;

 private:
  struct Row {
    std::string sku;
    QLabel* quantity;
  };

  [[nodiscard]] QWidget* makeProducts(const std::vector<Product>& products);
  [[nodiscard]] QWidget* makeBar();
  void placeCall();
  void receive(const AgentEvent& event);
  void showCall();
  void showScreen(int index);

  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<qt::Surface> surface_ = qt::Surface::create();
  std::shared_ptr<ShopRequests> requests_;
  std::shared_ptr<UIView> callArea_;
  std::shared_ptr<UIView> floatingArea_;
  ShopCart cart_;
  std::vector<Row> rows_;
  QStackedWidget* screens_ = nullptr;
  QLabel* report_ = nullptr;
  std::vector<QPushButton*> tabs_;
  std::string booking_;
};

}  // namespace corvane::demo
