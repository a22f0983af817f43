#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <cstdlib>

int main() {
  const auto backend = corvane::headless::Backend::install().value();
  const auto view = corvane::VelnorAgentView::create(corvane::Region::eu(), "shop-42", /*enableSSO=*/false);
  const auto page = corvane::simulation::SimulatedAgentTool::attach(view);

  int cartUpdates = 0;
  view->setEventHandler([&](const corvane::AgentEvent& event) {
    if (event.is<corvane::AgentEvent::ProductUpdateInCart>()) ++cartUpdates;
  });
  view->loadBooking("booking-7");
  backend->runLoop().runUntilIdle();
  page->postProductUpdateInCart("SHIRT-M", 2);

  return view->isLoaded() && cartUpdates == 1 ? EXIT_SUCCESS : EXIT_FAILURE;
}
