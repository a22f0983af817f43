#include "demo/host_window.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <system_error>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_screenshot.h"
#include "demo/event_printer.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;

constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;
// The picture is taken a little after its event: by then the page has drawn what the event tells.
constexpr auto pictureDelay = 250ms;
// A tour that hangs must not hang the terminal.
constexpr auto longestTour = 60s;

/// The picture that a tour takes at an event; none for most of them.
std::optional<std::string> pictureName(const AgentEvent& event) {
  if (event.is<AgentEvent::DidLoad>()) return "1_loaded";
  if (event.is<AgentEvent::PreviewStarted>()) return "2_preview";
  if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>(); update && update->data.quantity == 2) {
    return "3_cart";
  }
  if (const auto* update = event.getIf<AgentEvent::CallStatusUpdate>();
      update && update->status == CallSessionStatus::disconnected) {
    return "4_ended";
  }
  return std::nullopt;
}

}  // namespace

class HostWindow::Screen : public std::enable_shared_from_this<Screen> {
 public:
  Screen(const DemoOptions& options, const std::string& pageAddress, GMainLoop* loop)
      : options_(options),
        loop_(loop),
        view_(VelnorAgentView::create(Region::custom(pageAddress + (options.isTour ? "#tour" : "")), "shop-42", true)),
        window_(gtk_window_new()) {}

  void build() {
    auto* const window = reinterpret_cast<GtkWindow*>(window_);
    gtk_window_set_title(window, "Corvane demo");
    gtk_window_set_default_size(window, phoneWidth, phoneHeight);
    gtk_window_set_decorated(window, !options_.isTour);
    gtk_window_set_child(window, surface_->widget());
    view_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    view_->setFrame(surface_->window()->bounds());
    surface_->window()->addSubview(view_);
    view_->setEventHandler(whileAlive(weak_from_this(), &Screen::receive));
    // The handler belongs to the window; the loop outlives both.
    g_signal_connect_swapped(window_, "destroy", reinterpret_cast<GCallback>(&g_main_loop_quit), loop_);
    if (options_.isTour) RunLoop::main().schedule(longestTour, whileAlive(weak_from_this(), &Screen::quit));
  }

  void show() {
    gtk_window_present(reinterpret_cast<GtkWindow*>(window_));
    view_->loadBooking("booking-7");
  }

  [[nodiscard]] bool hasCallEnded() const { return hasCallEnded_; }

 private:
  void receive(const AgentEvent& event) {
    printEvent(event, *view_);
    const auto picture = pictureName(event);
    if (!options_.isTour || !picture) return;
    const bool isLast = *picture == "4_ended";
    hasCallEnded_ = hasCallEnded_ || isLast;
    RunLoop::main().schedule(pictureDelay, whileAlive(weak_from_this(), [name = *picture, isLast](Screen& self) {
                               self.takePicture(name);
                               if (isLast) self.quit();
                             }));
  }

  void takePicture(const std::string& name) {
    std::error_code ignored;  // saving then fails and says so
    std::filesystem::create_directories(options_.screenshotFolder, ignored);
    const auto file = options_.screenshotFolder / (name + ".png");
    const bool isSaved = gtk::saveScreenshot(surface_->widget(), file);
    std::printf("%s %s\n", isSaved ? "picture:" : "no picture could be saved as", file.c_str());
  }

  void quit() { g_main_loop_quit(loop_); }

  DemoOptions options_;
  GMainLoop* loop_;
  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  GtkWidget* window_;
  bool hasCallEnded_ = false;
};

HostWindow::HostWindow(const DemoOptions& options, const std::string& pageAddress, GMainLoop* loop)
    : screen_(std::make_shared<Screen>(options, pageAddress, loop)) {
  screen_->build();
}

HostWindow::~HostWindow() = default;

void HostWindow::show() { screen_->show(); }

bool HostWindow::hasCallEnded() const { return screen_->hasCallEnded(); }

}  // namespace corvane::demo
