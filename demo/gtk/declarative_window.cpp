#include "demo/gtk/declarative_window.h"

#include <cstdio>

#include "corvane/corvane.h"
#include "demo/gtk/widgets.h"
#include "demo/shop/event_printer.h"
#include "demo/shop/outcome_text.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

constexpr UIColor paper{.red = 0.96, .green = 0.95, .blue = 0.93};
constexpr UIColor cardColors[] = {{.red = 0.29, .green = 0.47, .blue = 0.72},
                                  {.red = 0.25, .green = 0.27, .blue = 0.55},
                                  {.red = 0.55, .green = 0.58, .blue = 0.6},
                                  {.red = 0.87, .green = 0.68, .blue = 0.25}};
constexpr UIColor dark{.red = 0.1, .green = 0.15, .blue = 0.19};
constexpr UIColor green{.red = 0.1, .green = 0.7, .blue = 0.35};
constexpr UIColor mint{.red = 0.7, .green = 0.9, .blue = 0.85};

using Resizing = UIViewAutoresizing;

VelnorAgentContext& context() { return VelnorAgentContext::shared(); }

struct Shop : ObservableObject {
  Published<bool> isCallOpen{*this, true};
  Published<std::string> lastAdded{*this};
  std::string pageAddress;
  std::vector<std::string> skus;
  std::shared_ptr<DeclarativeTour> tour;

  void follow(const AgentEvent& event) {
    if (const auto view = context().agentView()) printEvent(event, *view);
    // The view moves to the window by itself, so the shop may take the place of its screen.
    if (event.is<AgentEvent::WillMinimize>()) isCallOpen.set(false);
    if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>()) lastAdded.set(update->data.sku);
    if (tour) tour->follow(event);
  }
};

struct CallScreen {
  std::shared_ptr<Shop> shop;
  [[nodiscard]] VelnorAgent body() const {
    VelnorAgent agent(Region::custom(shop->pageAddress), "shop-42", "booking-7", /*enableSSO=*/false);
    agent.setMinimizedOrigin(MinimizedOrigin::topRight());
    agent.setTapToMaximize(true);
    return agent;
  }
};

struct Card {
  std::shared_ptr<Shop> shop;
  std::size_t place;
  [[nodiscard]] auto body() const {
    const CGFloat top = 15 + 175 * static_cast<CGFloat>(place);
    const std::string& sku = shop->skus.at(place);
    return EmptyView{} | box({.frame = CGRect{{15, top}, {230, 160}},
                              .backgroundColor = shop->lastAdded.value() == sku ? mint : cardColors[place],
                              .onTap = [sku] {
                                context().addProductToCart(sku, [](const auto& error) {
                                  std::printf("addProductToCart: %s\n", outcomeText(error).c_str());
                                });
                              }});
  }
};

struct HomeScreen {
  std::shared_ptr<Shop> shop;
  [[nodiscard]] auto body() const {
    return ZStack{Card{shop, 0}, Card{shop, 1}, Card{shop, 2}, Card{shop, 3}} | box({.backgroundColor = paper}) |
           bringAgentToFront() | restoreAgentAction([shop = shop](const auto&) { shop->isCallOpen.set(true); });
  }
};

struct Bar {
  std::shared_ptr<Shop> shop;
  [[nodiscard]] auto body() const {
    const auto tap = [shop = shop] {
      if (context().isMinimized()) return context().maximizeAgent();
      shop->isCallOpen.set(!shop->isCallOpen.value());
    };
    return EmptyView{} | box({.frame = CGRect{{0, 780}, {390, 64}},
                              .autoresizingMask = Resizing::flexibleWidth | Resizing::flexibleTopMargin,
                              .backgroundColor = context().isMinimized() ? green : dark,
                              .onTap = tap});
  }
};

struct AppScreen {
  std::shared_ptr<Shop> shop;
  [[nodiscard]] auto body() const {
    const auto screen =
        when(shop->isCallOpen.value(), [this] { return CallScreen{shop}; }, [this] { return HomeScreen{shop}; });
    return ZStack{screen | box({.frame = CGRect{{0, 0}, {390, 780}},
                                .autoresizingMask = Resizing::flexibleWidth | Resizing::flexibleHeight}),
                  Bar{shop}} |
           onAgentEvent([shop = shop](const AgentEvent& event) { shop->follow(event); }) | resetAgentRestoreAction();
  }
};

}  // namespace

DeclarativeWindow::DeclarativeWindow(const DemoOptions& options, const std::string& pageAddress,
                                     const std::vector<Product>& products, GMainLoop* loop) {
  surface_->window()->setFrame({{0, 0}, {phoneWidth, phoneHeight}});
  if (options.isTour) tour_ = std::make_shared<DeclarativeTour>(surface_, options.screenshotFolder, loop);
  const auto shop = std::make_shared<Shop>();
  shop->pageAddress = pageAddress + (options.isTour ? "#tour" : "");
  for (const Product& product : products) shop->skus.push_back(firstShown(product).sku());
  shop->tour = tour_;
  mount_ = ViewMount::create(*surface_->window());
  mount_->show(AppScreen{shop});
  buildPhoneWindow(window_, surface_->widget(), !options.isTour, loop);
}

DeclarativeWindow::~DeclarativeWindow() {
  // A call that floats would stay with the framework.
  MinimizedState::shared().remove();
}

void DeclarativeWindow::show() {
  gtk_window_present(as<GtkWindow>(window_));
  if (tour_) tour_->begin();
}

}  // namespace corvane::demo
