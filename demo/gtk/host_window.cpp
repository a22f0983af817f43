#include "demo/gtk/host_window.h"

#include <optional>
#include <string_view>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "demo/gtk/host_tour.h"
#include "demo/gtk/picture.h"
#include "demo/gtk/products_screen.h"
#include "demo/shop/event_printer.h"
#include "demo/shop/floating_look.h"

namespace corvane::demo {

namespace {

constexpr const char* callScreen = "call";
constexpr const char* productsScreen = "products";

/// A part of the window for views to be in. Where it has none, what lies under it can be used.
class Area final : public UIView {
 public:
  using UIView::UIView;
  static std::shared_ptr<Area> create() { return std::make_shared<Area>(ConstructionKey{}); }
  [[nodiscard]] bool pointInside(CGPoint /*point*/) const override { return false; }
};

/// What is on the call's screen while the call floats.
GtkWidget* makeNotice() {
  GtkWidget* const notice = makeColumn(12, "notice");
  append(notice, makeLabel("The call floats", "title"));
  append(notice, makeLabel("It stays while you look around, and can be dragged.", "soft"));
  append(notice, makeButton("Bring it back", [] { MinimizedState::shared().maximize(); }));
  gtk_widget_set_visible(notice, FALSE);
  return notice;
}

}  // namespace

class HostWindow::Screens final : public HostTourStage, public std::enable_shared_from_this<Screens> {
 public:
  Screens(const DemoOptions& options, const std::string& pageAddress, GMainLoop* loop)
      : options_(options),
        loop_(loop),
        view_(VelnorAgentView::create(Region::custom(pageAddress + (options.isTour ? "#tour-with-host" : "")),
                                      "shop-42", /*enableSSO=*/true)) {}

  Screens(const Screens&) = delete;
  Screens& operator=(const Screens&) = delete;
  ~Screens() override {
    MinimizedState::shared().resetRestoreAction();
    // A call that floats would stay with the framework, and with the area that it floats in.
    MinimizedState::shared().remove();
    view_->setMinimizedSuperview(nullptr);
  }

  void build(const std::vector<Product>& products) {
    view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
    view_->setEventHandler(whileAlive(weak_from_this(), &Screens::receive));

    requests_ = std::make_shared<ShopRequests>(view_, whileAlive(weak_from_this(), &Screens::report));
    productsScreen_.emplace(products, requests_, view_);
    if (options_.isTour) {
      tour_ = std::make_shared<HostTour>(weak_from_this(), requests_, products,
                                         FloatingTourProps{.surface = surface_,
                                                           .view = view_,
                                                           .askButton = productsScreen_->askButton(),
                                                           .restoreButton = productsScreen_->restoreButton()});
    }
    buildWindow();
    placeCall();
  }

  void show() {
    gtk_window_present(as<GtkWindow>(window_));
    view_->loadBooking("booking-7");
    if (tour_) tour_->begin();
  }

  [[nodiscard]] bool isTourComplete() const { return tour_ && tour_->isComplete(); }

  void showAgentView() override { gtk_stack_set_visible_child_name(as<GtkStack>(stack_), callScreen); }
  void showProducts() override { gtk_stack_set_visible_child_name(as<GtkStack>(stack_), productsScreen); }

  void savePicture(const std::string& name) override { demo::savePicture(content_, options_.screenshotFolder, name); }

  void endTour() override { g_main_loop_quit(loop_); }

 private:
  void buildWindow() {
    GtkWidget* const call = makeColumn(0, "screen");
    append(call, notice_);
    gtk_stack_add_titled(as<GtkStack>(stack_), call, callScreen, "Call");
    gtk_stack_add_titled(as<GtkStack>(stack_), productsScreen_->widget(), productsScreen, "Products");
    gtk_widget_set_vexpand(stack_, TRUE);
    gtk_stack_switcher_set_stack(as<GtkStackSwitcher>(switcher_), as<GtkStack>(stack_));
    whenSwitched(stack_, whileAlive(weak_from_this(), &Screens::showCallOnItsScreenOnly));
    GtkWidget* const screens = makeColumn(0, "screens");
    append(screens, stack_);
    append(screens, switcher_);
    gtk_overlay_set_child(as<GtkOverlay>(content_), screens);
    // Over all of it: where it shows nothing, the screens beneath can be used.
    gtk_overlay_add_overlay(as<GtkOverlay>(content_), surface_->widget());

    installStyle();
    buildPhoneWindow(window_, content_, !options_.isTour, loop_);
  }

  void placeCall() {
    int switcherHeight = 0;
    gtk_widget_measure(switcher_, GTK_ORIENTATION_VERTICAL, phoneWidth, nullptr, &switcherHeight, nullptr, nullptr);
    // The areas follow the window from this size on, and leave the switcher free.
    surface_->window()->setFrame({{0, 0}, {phoneWidth, phoneHeight}});
    constexpr auto bothWays = UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight;
    for (const auto& area : {callArea_, floatingArea_}) {
      area->setFrame({{0, 0}, {phoneWidth, static_cast<CGFloat>(phoneHeight - switcherHeight)}});
      area->setAutoresizingMask(bothWays);
      surface_->window()->addSubview(area);
    }
    view_->setAutoresizingMask(bothWays);
    view_->setFrame(callArea_->bounds());
    callArea_->addSubview(view_);
    view_->setMinimizedSuperview(floatingArea_);
    MinimizedState::shared().registerRestoreAction(
        whileAlive(weak_from_this(), [](Screens& self, const std::shared_ptr<VelnorAgentView>& view) {
          self.showAgentView();
          gtk_widget_set_visible(self.notice_, FALSE);
          self.callArea_->addSubview(view);
          // The window may have another size by now.
          view->setFrame(self.callArea_->bounds());
        }));
  }

  void showCallOnItsScreenOnly() {
    const char* const shown = gtk_stack_get_visible_child_name(as<GtkStack>(stack_));
    callArea_->setHidden(shown == nullptr || std::string_view(shown) != callScreen);
  }

  void receive(const AgentEvent& event) {
    printEvent(event, *view_);
    followWithEdge(*view_, event);
    productsScreen_->follow(event);
    if (event.is<AgentEvent::WillMinimize>()) gtk_widget_set_visible(notice_, TRUE);
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
  GtkWidget* content_ = gtk_overlay_new();
  GtkWidget* notice_ = makeNotice();
  GtkWidget* stack_ = gtk_stack_new();
  GtkWidget* switcher_ = gtk_stack_switcher_new();
  /// Where the call is on its screen, and where it floats over every screen; both above the switcher.
  std::shared_ptr<Area> callArea_ = Area::create();
  std::shared_ptr<Area> floatingArea_ = Area::create();
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
