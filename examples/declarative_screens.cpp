#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

using namespace corvane;

namespace {

class Shop : public ObservableObject {
 public:
  Published<bool> isCallOpen{*this, true};
};

struct CallScreen {
  static VelnorAgent body() {
    VelnorAgent agent(Region::eu(), "shop-42", "booking-7", /*enableSSO=*/false);
    agent.setTapToMaximize(true);
    return agent;
  }
};

struct HomeScreen {
  Shop* shop;

  auto body() const {
    const auto indicator = [] {
      return EmptyView{} |
             box({.frame = CGRect{{0, 0}, {390, 44}}, .backgroundColor = UIColor{.green = 1}, .onTap = [] {
                    VelnorAgentContext::shared().maximizeAgent();
                  }});
    };
    return when(VelnorAgentContext::shared().isMinimized(), indicator) | bringAgentToFront() |
           restoreAgentAction([shop = shop](const VelnorAgent&) { shop->isCallOpen.set(true); });
  }
};

struct AppScreen {
  Shop* shop;

  auto body() const {
    return when(
               shop->isCallOpen.value(), [] { return CallScreen{}; }, [&] { return HomeScreen{shop}; }) |
           onAgentEvent([](const AgentEvent& event) { std::puts(encodeJson(event).c_str()); });
  }
};

}  // namespace

int main() {
  const auto backend = headless::Backend::install().value();
  const auto window = UIWindow::create({{0, 0}, {390, 844}});
  Shop shop;
  const auto mount = ViewMount::create(*window);
  const auto page = simulation::SimulatedAgentTool::attachToNextView(*backend);
  mount->show(AppScreen{&shop});

  // What the user and the agent do.
  const auto view = VelnorAgentContext::shared().agentView();
  backend->runLoop().runUntilIdle();
  page->postMinimize();
  backend->runLoop().advance(std::chrono::seconds(1));
  shop.isCallOpen.set(false);
  backend->runLoop().runUntilIdle();
  const bool isFloating = view->isMinimized() && view->superview() == window;
  VelnorAgentContext::shared().maximizeAgent();
  backend->runLoop().advance(std::chrono::seconds(1));
  const bool isBack = shop.isCallOpen.value() && view->superview() == mount->view();
  return isFloating && isBack ? EXIT_SUCCESS : EXIT_FAILURE;
}
