#include "demo/gtk/host_tour.h"

#include <chrono>
#include <optional>
#include <utility>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;

// The picture is taken a little after its event: by then the page has drawn what the event tells.
constexpr auto pictureDelay = 250ms;
constexpr auto pauseBetweenSteps = 300ms;
// A tour that hangs must not hang the terminal.
constexpr auto longestTour = 60s;

bool hasStatus(const AgentEvent& event, CallSessionStatus status) {
  const auto* update = event.getIf<AgentEvent::CallStatusUpdate>();
  return update != nullptr && update->status == status;
}

/// The picture that the tour takes at an event; none for most of them.
std::optional<std::string> pictureName(const AgentEvent& event) {
  if (hasStatus(event, CallSessionStatus::starting)) return "01_starting";
  if (event.is<AgentEvent::PreviewStarted>()) return "02_preview";
  if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>(); update && update->data.quantity == 2) {
    return "03_cart";
  }
  return std::nullopt;
}

enum class Kind {
  request,
  display,
  /// Goes on by itself, when it is over.
  floating,
};

}  // namespace

struct HostTour::Step {
  Kind kind = Kind::request;
  void (*run)(HostTour&, HostTourStage&) = nullptr;
};

const std::vector<HostTour::Step>& HostTour::steps() {
  static const std::vector<Step> steps{
      {Kind::display, [](HostTour&, HostTourStage& stage) { stage.showProducts(); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->addToCall(tour.products_.at(2)); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->addToCart(tour.sku(2)); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->setQuantity(tour.sku(0), 5); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->decrement(tour.sku(0)); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->askIfInCart(tour.sku(2)); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->removeFromCart(tour.sku(1)); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->listProductsInCart(); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->listCartStatus(); }},
      {Kind::display, [](HostTour&, HostTourStage& stage) { stage.savePicture("04_products"); }},
      {Kind::display, [](HostTour&, HostTourStage& stage) { stage.showAgentView(); }},
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->listProductsInCall(); }},
      {Kind::display, [](HostTour&, HostTourStage& stage) { stage.savePicture("05_asked"); }},
      {Kind::floating, nullptr},
      // The page's tour waits for this.
      {Kind::request, [](HostTour& tour, HostTourStage&) { tour.requests_->signOut(); }},
  };
  return steps;
}

HostTour::HostTour(std::weak_ptr<HostTourStage> stage, std::shared_ptr<ShopRequests> requests,
                   std::vector<Product> products, FloatingTourProps floatingProps)
    : stage_(std::move(stage)),
      requests_(std::move(requests)),
      products_(std::move(products)),
      floating_(std::make_shared<FloatingTour>(stage_, std::move(floatingProps))) {}

void HostTour::begin() { RunLoop::main().schedule(longestTour, whileAlive(stage_, &HostTourStage::endTour)); }

void HostTour::follow(const AgentEvent& event) {
  if (const auto picture = pictureName(event)) takePictureSoon(*picture);
  // The last thing that the page does before it waits.
  if (event.is<AgentEvent::ProductRemovedFromCall>()) runFrom(0);
  if (hasStatus(event, CallSessionStatus::disconnected)) {
    hasCallEnded_ = true;
    takePictureSoon("11_ended");
    RunLoop::main().schedule(2 * pictureDelay, whileAlive(stage_, &HostTourStage::endTour));
  }
}

bool HostTour::isComplete() const {
  std::size_t requests = floating_->requests();
  for (const Step& step : steps()) requests += step.kind == Kind::request ? 1 : 0;
  return hasCallEnded_ && floating_->isComplete() && reports_ >= requests;
}

void HostTour::runFrom(std::size_t index) {
  if (index == steps().size()) return;
  RunLoop::main().schedule(pauseBetweenSteps, whileAlive(weak_from_this(), [index](HostTour& self) {
                             const Step& step = steps().at(index);
                             if (step.kind == Kind::floating) {
                               return self.floating_->run(whileAlive(
                                   self.weak_from_this(), [index](HostTour& tour) { tour.runFrom(index + 1); }));
                             }
                             if (const auto stage = self.stage_.lock()) step.run(self, *stage);
                             self.runFrom(index + 1);
                           }));
}

void HostTour::takePictureSoon(const std::string& name) {
  RunLoop::main().schedule(pictureDelay, whileAlive(stage_, [name](HostTourStage& stage) { stage.savePicture(name); }));
}

const std::string& HostTour::sku(std::size_t product) const { return firstShown(products_.at(product)).sku(); }

}  // namespace corvane::demo
