#include "demo/gtk/declarative_window.h"

#include <cstdio>
#include <utility>

#include "corvane/corvane.h"
#include "demo/gtk/widgets.h"
#include "demo/shop/event_printer.h"
#include "demo/shop/floating_look.h"
#include "demo/shop/outcome_text.h"
#include "demo/shop/product_pictures.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

constexpr UIColor paper{.red = 0.96, .green = 0.95, .blue = 0.93};
constexpr UIColor white{.red = 1, .green = 1, .blue = 1};
constexpr UIColor ink{.red = 0.11, .green = 0.15, .blue = 0.19};
constexpr UIColor softInk{.red = 0.35, .green = 0.4, .blue = 0.45};
constexpr UIColor green{.red = 0.06, .green = 0.42, .blue = 0.38};
constexpr UIViewDecoration edge{.borderWidth = 1, .borderColor = {.red = 0.89, .green = 0.87, .blue = 0.84}};

using Resizing = UIViewAutoresizing;

VelnorAgentContext& context() { return VelnorAgentContext::shared(); }

struct Shop : ObservableObject {
  Published<bool> isCallOpen{*this, true};
  Published<std::string> report{*this, "Add a product, and the customer sees it."};
  Published<CartQuantities> cart{*this};
  std::string pageAddress;
  std::vector<Product> products;
  std::shared_ptr<DeclarativeTour> tour;

  void follow(const AgentEvent& event) {
    if (const auto view = context().agentView()) {
      printEvent(event, *view);
      followWithEdge(*view, event);
    }
    // The view moves to the window by itself, so the shop may take the place of its screen.
    if (event.is<AgentEvent::WillMinimize>()) isCallOpen.set(false);
    if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>()) {
      setQuantity(update->data.sku, update->data.quantity);
    }
    if (const auto* removal = event.getIf<AgentEvent::ProductRemovedFromCart>()) setQuantity(removal->sku, 0);
    if (tour) tour->follow(event);
  }
  void setQuantity(const std::string& sku, std::int64_t quantity) {
    auto quantities = cart.value();
    quantities[sku] = quantity;
    cart.set(std::move(quantities));
  }
  /// Tells how a request ended.
  auto reportAs(const char* request) {
    return [this, request](const auto& error) { report.set(request + (": " + outcomeText(error))); };
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
  std::size_t index;

  [[nodiscard]] std::string priceLine() const {
    const Variation& variation = firstShown(shop->products.at(index));
    const auto inCart = shop->cart.value().find(variation.sku());
    char price[64];
    std::snprintf(price, sizeof price, "%s %.2f", variation.price().currency().c_str(),
                  static_cast<double>(variation.price().current()));
    if (inCart == shop->cart.value().end() || inCart->second < 1) return price;
    return std::string(price) + ", " + std::to_string(inCart->second) + " in cart";
  }
  [[nodiscard]] auto body() const {
    const Product& product = shop->products.at(index);
    const std::string sku = firstShown(product).sku();
    const auto toCall = [shop = shop, product] { context().addProductToCall(product, shop->reportAs("Add to call")); };
    const auto toCart = [shop = shop, sku] { context().addProductToCart(sku, shop->reportAs("Add to cart")); };
    return HStack({.spacing = 12, .margin = 10}, Image(pictureFile(index), {88, 88}),
                  VStack({.spacing = 4}, Text(product.name().value_or(sku)).font({.isBold = true}).color(ink),
                         Text(priceLine()).font({.size = 14}).color(softInk),
                         HStack({}, Button("To call", toCall), Button("To cart", toCart)))) |
           box({.backgroundColor = white, .cornerRadius = 12, .decoration = edge});
  }
};

struct HomeScreen {
  std::shared_ptr<Shop> shop;
  [[nodiscard]] auto body() const {
    return VStack({.spacing = 10, .margin = 12, .alignment = StackAlignment::fill},
                  Text("Products").font({.size = 22, .isBold = true}).color(ink),
                  Text(shop->report.value()).font({.size = 14}).color(softInk), Card{shop, 0}, Card{shop, 1},
                  Card{shop, 2}, Card{shop, 3}, Spacer{}) |
           box({.backgroundColor = paper}) | bringAgentToFront() |
           restoreAgentAction([shop = shop](const auto&) { shop->isCallOpen.set(true); });
  }
};

struct Bar {
  std::shared_ptr<Shop> shop;
  [[nodiscard]] auto body() const {
    const auto showCall = [shop = shop] {
      if (context().isMinimized()) return context().maximizeAgent();
      shop->isCallOpen.set(true);
    };
    const bool isOpen = shop->isCallOpen.value();
    const auto tab = [](std::string title, bool isChosen, ViewAction action) {
      return Button(std::move(title), std::move(action)).colors(isChosen ? green : white, isChosen ? white : ink);
    };
    return HStack({.spacing = 12, .margin = 12, .alignment = StackAlignment::center},
                  tab(context().isMinimized() ? "Back to the call" : "Call", isOpen, showCall),
                  tab("Products", !isOpen, [shop = shop] { shop->isCallOpen.set(false); })) |
           box({.frame = CGRect{{0, 780}, {390, 64}},
                .autoresizingMask = Resizing::flexibleWidth | Resizing::flexibleTopMargin,
                .backgroundColor = paper});
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
  shop->products = products;
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
