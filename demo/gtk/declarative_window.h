/// The host app of the demo once more, with its screens described as values.
#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

#include "corvane/platform/declarative/view_mount.h"
#include "corvane/product/product.h"
#include "demo/gtk/declarative_tour.h"
#include "demo/shop/demo_options.h"

namespace corvane::demo {

/// Two screens, the call and the shop, and beneath both a bar that leads from one to the other and, while the call
/// floats, back to it.
///
/// Ownership: owned by main; closing the window ends the loop. Threads: main thread only.
class DeclarativeWindow {
 public:
  DeclarativeWindow(const DemoOptions& options, const std::string& pageAddress, const std::vector<Product>& products,
                    GMainLoop* loop);
  DeclarativeWindow(const DeclarativeWindow&) = delete;
  DeclarativeWindow& operator=(const DeclarativeWindow&) = delete;
  ~DeclarativeWindow();

  void show();
  /// Whether the tour has come to its end as it is meant to.
  [[nodiscard]] bool isTourComplete() const { return tour_ && tour_->isComplete(); }

 private:
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  std::shared_ptr<DeclarativeTour> tour_;
  std::shared_ptr<ViewMount> mount_;
  GtkWidget* window_ = gtk_window_new();
};

}  // namespace corvane::demo
