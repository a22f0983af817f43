#include <corvane/corvane.h>
#include <corvane/platform/headless/headless_backend.h>
#include <corvane/simulation/simulated_agent_tool.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>

using namespace corvane;

namespace {

/// Two screens in a window: one with the call, and one without.
class App {
 public:
  App() {
    MinimizedState::shared().registerRestoreAction([this](const auto& view) {
      open(callScreen_);
      fill(*callScreen_, view);
    });
  }
  ~App() {
    MinimizedState::shared().resetRestoreAction();
    MinimizedState::shared().remove();
  }

  std::shared_ptr<VelnorAgentView> openCall() {
    const auto view = VelnorAgentView::create(Region::eu(), "shop-42", /*enableSSO=*/false);
    view->setTapToMaximize(true);
    view->setEventHandler([](const AgentEvent& event) { std::puts(encodeJson(event).c_str()); });
    fill(*callScreen_, view);
    open(callScreen_);
    view->loadBooking("booking-7");
    return view;
  }

  void openHome() {
    open(homeScreen_);
    MinimizedState::shared().bringToFront();
  }

  [[nodiscard]] const UIWindow& window() const { return *window_; }
  [[nodiscard]] const UIView& callScreen() const { return *callScreen_; }

 private:
  void open(const std::shared_ptr<UIView>& screen) {
    if (screen_ != nullptr) screen_->removeFromSuperview();
    screen_ = screen;
    window_->addSubview(screen);
  }
  static void fill(UIView& screen, const std::shared_ptr<UIView>& view) {
    view->setFrame(screen.bounds());
    view->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    screen.addSubview(view);
  }

  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {390, 844}});
  std::shared_ptr<UIView> callScreen_ = UIView::create({{0, 0}, {390, 844}});
  std::shared_ptr<UIView> homeScreen_ = UIView::create({{0, 0}, {390, 844}});
  std::shared_ptr<UIView> screen_;
};

}  // namespace

int main() {
  const auto backend = headless::Backend::install().value();
  App app;
  const std::weak_ptr<VelnorAgentView> view = app.openCall();

  // What the user and the agent do.
  const auto page = simulation::SimulatedAgentTool::attach(view.lock());
  backend->runLoop().runUntilIdle();
  page->postMinimize();
  backend->runLoop().advance(std::chrono::seconds(1));
  app.openHome();
  const bool isFloating = MinimizedState::shared().isMinimized() && view.lock()->superview().get() == &app.window();
  MinimizedState::shared().maximize();
  backend->runLoop().advance(std::chrono::seconds(1));
  const bool isBack = view.lock()->superview().get() == &app.callScreen();
  return isFloating && isBack ? EXIT_SUCCESS : EXIT_FAILURE;
}
