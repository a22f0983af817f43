// A host app that uses something out of each part of the library.
#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <cstdlib>
#include <memory>
#include <string>

using namespace corvane;

static_assert(CORVANE_VERSION >= CORVANE_VERSION_NUMBER(0, 1, 0));

DetachedTask fillCart(std::shared_ptr<VelnorAgentView> view, bool& isFilled) {
  const bool isAdded = !co_await awaiting(*view).addProductToCart("SHIRT-M");
  const auto cart = co_await awaiting(*view).getCartStatus();
  isFilled = isAdded && cart && *cart == CartQuantities{{"SHIRT-M", 1}};
}

int main() {
  const auto backend = headless::Backend::install().value();
  const auto view = VelnorAgentView::create(Region::global(), "shop", /*enableSSO=*/true);
  const auto page = simulation::SimulatedAgentTool::attach(view);
  view->loadBooking("booking");
  backend->runLoop().runUntilIdle();
  page->postCallStatus(CallSessionStatus::running);
  bool isFilled = false;
  fillCart(view, isFilled);
  backend->runLoop().runUntilIdle();

  const auto screen = UIView::create({{0, 0}, {390, 844}});
  const auto mount = ViewMount::create(*screen);
  mount->show(VelnorAgent(Region::eu(), "shop", "booking", false) | bringAgentToFront());
  bool isRefused = false;
  try {
    (void)decodeJson<Product>("{}");
  } catch (const DecodingError&) {  // crosses the border of the shared library
    isRefused = true;
  }
  return isFilled && isRefused && !screen->subviews().empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}
