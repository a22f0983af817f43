/// The host app's own screen: its products, what can be asked about the call, and what became of it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "demo/gtk/floating_settings.h"
#include "demo/gtk/product_card.h"
#include "demo/gtk/request_log.h"
#include "demo/gtk/widgets.h"

namespace corvane::demo {

/// Ownership: owned by the window that shows its widget. Threads: main thread only.
class ProductsScreen {
 public:
  ProductsScreen(const std::vector<Product>& products, const std::shared_ptr<ShopRequests>& requests,
                 const std::shared_ptr<VelnorAgentView>& view);

  [[nodiscard]] GtkWidget* widget() const { return screen_.get(); }
  /// A button that asks the page for the products in the call.
  [[nodiscard]] GtkWidget* askButton() const { return gtk_widget_get_first_child(tools_.get()); }
  /// What brings a call back that floats.
  [[nodiscard]] GtkWidget* restoreButton() const { return floating_.restoreButton(); }
  /// Shows what an event changes.
  void follow(const AgentEvent& event);
  /// Logs how a request ended.
  void report(const std::string& line) { log_.add(line); }
  [[nodiscard]] const ShopCart& cart() const { return *cart_; }

 private:
  [[nodiscard]] GtkWidget* makeList(const std::vector<Product>& products,
                                    const std::shared_ptr<ShopRequests>& requests);

  WidgetHandle screen_;
  WidgetHandle callState_;
  WidgetHandle tools_;
  FloatingSettings floating_;
  std::shared_ptr<ShopCart> cart_ = std::make_shared<ShopCart>();
  std::vector<ProductCard> cards_;
  RequestLog log_;
};

}  // namespace corvane::demo
