#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <chrono>
#include <cstdlib>
#include <memory>

using namespace corvane;
using namespace std::chrono_literals;

// The screen of the call. The call can leave it, and comes back to it.
void showCall(const std::shared_ptr<UIView>& screen, const std::shared_ptr<VelnorAgentView>& view) {
  view->setFrame(screen->bounds());
  view->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  view->setTapToMaximize(true);
  screen->addSubview(view);
  MinimizedState::shared().registerRestoreAction([screen](const std::shared_ptr<VelnorAgentView>& restored) {
    // Here your app brings the screen to the front, and then puts the view back into it.
    screen->addSubview(restored);
    restored->setFrame(screen->bounds());
  });
}

int main() {
  const auto backend = headless::Backend::install().value();
  const auto window = UIWindow::create({{0, 0}, {390, 844}});
  const auto screen = UIView::create(window->bounds());
  window->addSubview(screen);
  auto view = VelnorAgentView::create(Region::eu(), "shop-42", /*enableSSO=*/false);
  const auto page = simulation::SimulatedAgentTool::attach(view);
  showCall(screen, view);
  view->loadBooking("booking-7");
  backend->runLoop().runUntilIdle();

  page->postMinimize();
  backend->runLoop().advance(1s);
  view.reset();  // while it floats, others need not hold it
  const auto floating = MinimizedState::shared().agentView();
  const bool hasFloated = floating->isMinimized() && floating->superview() == window;

  const CGPoint finger = floating->center();
  for (const TouchPhase phase : {TouchPhase::began, TouchPhase::ended}) {
    window->sendTouch({.identifier = 1, .phase = phase, .location = finger});
  }
  backend->runLoop().advance(1s);
  const bool isBack = floating->superview() == screen && floating->frame() == screen->bounds();
  MinimizedState::shared().resetRestoreAction();
  return hasFloated && isBack ? EXIT_SUCCESS : EXIT_FAILURE;
}
