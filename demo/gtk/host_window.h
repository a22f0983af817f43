/// The host app of the demo: a phone-sized window with two screens, the agent view and the app's own products.
#pragma once

#include <gtk/gtk.h>

#include <memory>
#include <string>
#include <vector>

#include "corvane/product/product.h"
#include "demo/shop/demo_options.h"

namespace corvane::demo {

/// Prints the agent view's events and how requests ended. On a tour it makes some requests by itself, saves pictures,
/// and ends with the call.
///
/// Ownership: owned by main; closing the window ends the loop. Threads: main thread only.
class HostWindow {
 public:
  HostWindow(const DemoOptions& options, const std::string& pageAddress, const std::vector<Product>& products,
             GMainLoop* loop);
  HostWindow(const HostWindow&) = delete;
  HostWindow& operator=(const HostWindow&) = delete;
  ~HostWindow();

  void show();
  /// Whether the tour has come to its end as it is meant to.
  [[nodiscard]] bool isTourComplete() const;

 private:
  class Screens;
  std::shared_ptr<Screens> screens_;
};

}  // namespace corvane::demo
