/// The host app's part in a tour: it asks the page a few things by itself and saves pictures.
#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "corvane/bridge/agent_event.h"
#include "corvane/product/product.h"
#include "demo/gtk/floating_tour.h"
#include "demo/shop/shop_requests.h"

namespace corvane::demo {

/// What a tour does with the host app's window.
class HostTourStage {
 public:
  virtual ~HostTourStage() = default;
  virtual void showAgentView() = 0;
  virtual void showProducts() = 0;
  virtual void savePicture(const std::string& name) = 0;
  virtual void endTour() = 0;
};

/// Follows the page's own tour. Where that waits for the host app, it does what a user would do with the buttons.
///
/// Ownership: owned by its stage. Threads: main thread only.
/// Failure:   a tour that hangs is ended after a minute and is then not complete.
class HostTour : public std::enable_shared_from_this<HostTour> {
 public:
  HostTour(std::weak_ptr<HostTourStage> stage, std::shared_ptr<ShopRequests> requests, std::vector<Product> products,
           FloatingTourProps floatingProps);

  void begin();
  void follow(const AgentEvent& event);
  /// A request has ended, or was sent without an end to wait for.
  void didReport() { ++reports_; }
  /// Whether the call has ended as the page's tour ends it, every request before that, and the call has floated.
  [[nodiscard]] bool isComplete() const;

 private:
  struct Step;

  [[nodiscard]] static const std::vector<Step>& steps();
  void runFrom(std::size_t index);
  void takePictureSoon(const std::string& name);
  [[nodiscard]] const std::string& sku(std::size_t product) const;

  std::weak_ptr<HostTourStage> stage_;
  std::shared_ptr<ShopRequests> requests_;
  std::vector<Product> products_;
  std::shared_ptr<FloatingTour> floating_;
  std::size_t reports_ = 0;
  bool hasCallEnded_ = false;
};

}  // namespace corvane::demo
