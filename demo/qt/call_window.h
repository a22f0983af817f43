/// A host app on Qt: the agent's call, and beside it the shop's own products.
#pragma once

#include <QWidget>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/qt/qt_surface.h"
#include "demo/shop/shop_cart.h"
#include "demo/shop/shop_requests.h"

class QLabel;
class QPushButton;
class QStackedWidget;

namespace corvane::demo {

/// The call floats over both screens, and over nothing of the bar below them.
///
/// Ownership: owned by its maker. Threads: main thread only. A backend must be installed.
class CallWindow final : public QWidget {
 public:
  /// `page` is the address of the agent tool.
  CallWindow(const std::string& page, const std::vector<Product>& products);
  ~CallWindow() override;

  [[nodiscard]] const std::shared_ptr<VelnorAgentView>& view() const { return view_; }
  [[nodiscard]] const std::shared_ptr<qt::Surface>& surface() const { return surface_; }
  [[nodiscard]] ShopRequests& requests() { return *requests_; }
  void showCall();
  void showProducts();
  void setEventHandler(std::function<void(const AgentEvent&)> handler) { handler_ = std::move(handler); }

 private:
  struct Row {
    std::string sku;
    QLabel* quantity;
  };

  [[nodiscard]] QWidget* makeProducts(const std::vector<Product>& products);
  [[nodiscard]] QWidget* makeBar();
  void placeCall();
  void receive(const AgentEvent& event);
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
  std::function<void(const AgentEvent&)> handler_;
};

}  // namespace corvane::demo
