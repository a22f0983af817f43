#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <cstdio>
#include <optional>

using namespace corvane;

void askThePage(VelnorAgentView& view) {
  view.addProductToCart("SHIRT-M", [](std::optional<AgentError> error) {
    if (error) std::printf("The shirt is not in the cart: %s\n", error->what());
  });
  view.getCartStatus([](AgentResult<CartQuantities> cart) {
    if (!cart) {
      std::printf("The cart is not known: %s\n", cart.error().what());
    } else if (const auto quantities = valueOf(cart)) {
      for (const auto& [sku, quantity] : *quantities) std::printf("%s: %d\n", sku.c_str(), static_cast<int>(quantity));
    }
  });
}

int main() {
  const auto backend = headless::Backend::install().value();
  const auto view = VelnorAgentView::create(Region::eu(), "shop-42", /*enableSSO=*/false);
  const auto page = simulation::SimulatedAgentTool::attach(view);
  view->loadBooking("booking-7");
  backend->runLoop().runUntilIdle();

  askThePage(*view);  // no call is running: both are refused at once
  page->postCallStatus(CallSessionStatus::running);
  askThePage(*view);
  backend->runLoop().runUntilIdle();  // the page answers: SHIRT-M: 1
}
