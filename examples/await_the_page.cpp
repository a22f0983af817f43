#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <cstdio>
#include <memory>
#include <optional>

using namespace corvane;

DetachedTask buyTheShirt(std::shared_ptr<VelnorAgentView> view) {
  if (const std::optional<AgentError> error = co_await awaiting(*view).addProductToCart("SHIRT-M")) {
    std::printf("The shirt is not in the cart: %s\n", error->what());
    co_return;
  }
  const std::optional<CartQuantities> cart = valueOf(co_await awaiting(*view).getCartStatus());
  if (cart) std::printf("%zu article in the cart\n", cart->size());
}

int main() {
  const auto backend = headless::Backend::install().value();
  const auto view = VelnorAgentView::create(Region::eu(), "shop-42", /*enableSSO=*/false);
  const auto page = simulation::SimulatedAgentTool::attach(view);
  view->loadBooking("booking-7");
  backend->runLoop().runUntilIdle();

  buyTheShirt(view);  // no call is running: refused at once
  page->postCallStatus(CallSessionStatus::running);
  buyTheShirt(view);
  backend->runLoop().runUntilIdle();
}
