#include "demo/host_window.h"

#include <cstdio>
#include <optional>
#include <system_error>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_screenshot.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "demo/event_printer.h"
#include "demo/host_tour.h"
#include "demo/products_screen.h"

namespace corvane::demo {

namespace {

constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;
constexpr const char* agentViewPage = "agent view";
constexpr const char* productsPage = "products";

}  // namespace

class HostWindow::Screens final : public HostTourStage, public std::enable_shared_from_this<Screens> {
 public:
  Screens(const DemoOptions& options, const std::string& pageAddress, GMainLoop* loop)
      : options_(options),
        loop_(loop),
        view_(VelnorAgentView::create(Region::custom(pageAddress + (options.isTour ? "#tour-with-host" : "")),
                                      "shop-42", /*enableSSO=*/true)) {}

  void build(const std::vector<Product>& products) {
    view_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    view_->setFrame(surface_->window()->bounds());
    surface_->window()->addSubview(view_);
    view_->setEventHandler(whileAlive(weak_from_this(), &Screens::receive));

    requests_ = std::make_shared<ShopRequests>(view_, whileAlive(weak_from_this(), &Screens::report));
    productsScreen_.emplace(products, requests_);
    if (options_.isTour) tour_ = std::make_shared<HostTour>(weak_from_this(), requests_, products);
    buildWindow();
  }

  void show() {
    gtk_window_present(as<GtkWindow>(window_));
    view_->loadBooking("booking-7");
    if (tour_) tour_->begin();
  }

  [[nodiscard]] bool isTourComplete() const { return tour_ && tour_->isComplete(); }

  void showAgentView() override { gtk_stack_set_visible_child_name(as<GtkStack>(stack_), agentViewPage); }
  void showProducts() override { gtk_stack_set_visible_child_name(as<GtkStack>(stack_), productsPage); }

  void savePicture(const std::string& name) override {
    std::error_code ignored;  // saving then fails and says so
    std::filesystem::create_directories(options_.screenshotFolder, ignored);
    const auto file = options_.screenshotFolder / (name + ".png");
    const bool isSaved = gtk::saveScreenshot(content_, file);
    std::printf("%s %s\n", isSaved ? "picture:" : "no picture could be saved as", file.c_str());
  }

  void endTour() override { g_main_loop_quit(loop_); }

 private:
  void buildWindow() {
    // The surface takes all input where it is, so it has a page of its own.
    gtk_stack_add_titled(as<GtkStack>(stack_), surface_->widget(), agentViewPage, "Call");
    gtk_stack_add_titled(as<GtkStack>(stack_), productsScreen_->widget(), productsPage, "Products");
    GtkWidget* const switcher = gtk_stack_switcher_new();
    gtk_stack_switcher_set_stack(as<GtkStackSwitcher>(switcher), as<GtkStack>(stack_));
    append(content_, stack_);
    append(content_, switcher);

    installStyle();
    auto* const window = as<GtkWindow>(window_);
    gtk_window_set_title(window, "Corvane demo");
    gtk_window_set_default_size(window, phoneWidth, phoneHeight);
    gtk_window_set_decorated(window, !options_.isTour);
    gtk_window_set_child(window, content_);
    // The handler belongs to the window; the loop outlives both.
    g_signal_connect_swapped(window_, "destroy", reinterpret_cast<GCallback>(&g_main_loop_quit), loop_);
  }

  void receive(const AgentEvent& event) {
    printEvent(event, *view_);
    productsScreen_->follow(event);
    if (const auto* ask = event.getIf<AgentEvent::RefreshSsoToken>()) requests_->refreshToken(ask->responseId);
    if (tour_) tour_->follow(event);
  }

  void report(const std::string& line) {
    productsScreen_->report(line);
    if (tour_) tour_->didReport();
  }

  DemoOptions options_;
  GMainLoop* loop_;
  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  std::shared_ptr<ShopRequests> requests_;
  std::optional<ProductsScreen> productsScreen_;
  std::shared_ptr<HostTour> tour_;
  GtkWidget* window_ = gtk_window_new();
  GtkWidget* content_ = makeColumn(0, "content");
  GtkWidget* stack_ = gtk_stack_new();
};

HostWindow::HostWindow(const DemoOptions& options, const std::string& pageAddress, const std::vector<Product>& products,
                       GMainLoop* loop)
    : screens_(std::make_shared<Screens>(options, pageAddress, loop)) {
  screens_->build(products);
}

HostWindow::~HostWindow() = default;

void HostWindow::show() { screens_->show(); }

bool HostWindow::isTourComplete() const { return screens_->isTourComplete(); }

}  // namespace corvane::demo
