#include <gtk/gtk.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/outcome.h"
#include "benchmarks/soak/parts.h"
#include "benchmarks/soak/random_source.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "demo/gtk/pointer_input.h"

namespace corvane::soak {

namespace {

using gtk::objectCast;
using namespace std::chrono_literals;

constexpr int allTroubles = 200;
constexpr GrowthBounds bounds{.heap = 1, .resident = 8};
/// Noticing that a page hangs takes some seconds, and the machine may be busy.
constexpr auto longestWayOut = 20s;
/// For so long the engine takes whatever a script navigates to for what was dropped.
constexpr auto afterDrop = 2'200ms;
constexpr double shelfHeight = 100;

enum class Trouble : std::uint8_t { hang, foreignPage, containerChange, drop, count };
constexpr std::array names{"hang", "foreign page", "change of the container", "drop"};

/// A place of the host app over the surface, from which a file or a link can be dragged.
class Shelf {
 public:
  explicit Shelf(gtk::Surface& surface) : surface_(surface) {
    auto* const source = gtk_drag_source_new();
    gtk_widget_add_controller(widget_, objectCast<GtkEventController>(source));
    source_ = source;
    gtk_widget_set_size_request(widget_, -1, static_cast<int>(shelfHeight));
    moveSurface(box_);
    gtk_box_prepend(objectCast<GtkBox>(box_), widget_);
  }
  Shelf(const Shelf&) = delete;
  Shelf& operator=(const Shelf&) = delete;
  ~Shelf() {
    g_object_ref(surface_.widget());
    gtk_box_remove(objectCast<GtkBox>(box_), surface_.widget());
    gtk_window_set_child(window_, surface_.widget());
    g_object_unref(surface_.widget());
  }

  void offer(const std::string& address) {
    const std::string list = address + "\r\n";
    GBytes* const bytes = g_bytes_new(list.data(), list.size());
    GdkContentProvider* const content = gdk_content_provider_new_for_bytes("text/uri-list", bytes);
    gtk_drag_source_set_content(source_, content);
    g_object_unref(content);
    g_bytes_unref(bytes);
  }
  /// What points of the pointer are measured in.
  [[nodiscard]] GtkWidget* area() const { return box_; }

 private:
  void moveSurface(GtkWidget* box) {
    g_object_ref(surface_.widget());
    gtk_window_set_child(window_, box);
    gtk_widget_set_vexpand(surface_.widget(), TRUE);
    gtk_box_append(objectCast<GtkBox>(box), surface_.widget());
    g_object_unref(surface_.widget());
  }

  gtk::Surface& surface_;
  GtkWindow* window_ = objectCast<GtkWindow>(gtk_widget_get_root(surface_.widget()));
  GtkWidget* box_ = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  GtkWidget* widget_ = gtk_box_new(GTK_ORIENTATION_VERTICAL, 0);
  GtkDragSource* source_ = nullptr;
};

/// One running call that has to outlive what its user, its page and its container do.
class TroubleSoak {
 public:
  TroubleSoak(SoakHost& host, const PartOptions& options, Checks& checks)
      : host_(host), checks_(checks), random_(options.seed), total_(allTroubles * options.percent / 100) {}

  void run();

 private:
  bool load();
  void hang();
  void goElsewhere();
  void changeContainer();
  void drop();
  void checkThatTheCallIsIntact();
  void check(bool holds, std::string_view what) { checks_.that(holds, trouble_ + ": " + std::string(what)); }
  void pause(std::chrono::nanoseconds time) const {
    bool isOver = false;
    RunLoop::main().schedule(time, [&] { isOver = true; });
    host_.runUntil([&] { return isOver; });
  }
  bool rest() const {
    return host_.runUntil([this] { return !host_.surface()->window()->isAnimating(); });
  }

  SoakHost& host_;
  Checks& checks_;
  RandomSource random_;
  int total_;
  Shelf shelf_{*host_.surface()};
  std::unique_ptr<demo::PointerInput> pointer_;
  std::shared_ptr<UIView> container_ = UIView::create({});
  std::shared_ptr<VelnorAgentView> view_ = host_.addView(host_.pages().agentTool());
  std::string trouble_;
  std::vector<std::string> links_;
  int errorEvents_ = 0;
};

bool TroubleSoak::load() {
  const bool isLoaded = host_.loadAndRun(*view_);
  check(isLoaded, "the booking shows");
  return isLoaded && host_.waitForPage(*view_, "(window.isThisCall = true)");
}

void TroubleSoak::checkThatTheCallIsIntact() {
  check(host_.waitForPage(*view_, "window.isThisCall === true"), "it is the same page");
  check(view_->callSessionStatus() == CallSessionStatus::running, "the call runs");
  check(errorEvents_ == 0 && !view_->error(), "no error is told");
  std::string outcome;
  view_->isProductInCart("S", [&](const AgentResult<bool>& answer) { outcome = outcomeOf(answer); });
  host_.runUntil([&] { return !outcome.empty(); });
  checks_.areEqual(outcome, "false", trouble_ + ": a request");
}

void TroubleSoak::hang() {
  SoakHost::run(*view_, "setTimeout(() => { while (true); }); 0");
  for (std::size_t turns = random_.below(200); turns > 0; --turns) g_main_context_iteration(nullptr, TRUE);
  const auto begin = std::chrono::steady_clock::now();
  if (!load()) return;
  check(std::chrono::steady_clock::now() - begin < longestWayOut, "the page is left in time");
  errorEvents_ = 0;
}

void TroubleSoak::goElsewhere() {
  const std::string address = random_.happensInPercent(50) ? host_.pages().lightPage() : "mailto:shop@shop.example";
  links_.clear();
  SoakHost::run(*view_, "location.href = '" + address + "'; 0");
  check(host_.runUntil([this] { return !links_.empty(); }), "the host is told of " + address);
  if (!links_.empty()) checks_.areEqual(links_.front(), address, trouble_);
}

void TroubleSoak::changeContainer() {
  SoakHost::run(*view_, postScript("{eventType:'SDK_MINIMIZE_AGENT_TOOL'}"));
  check(host_.runUntil([this] { return view_->isMinimized(); }) && rest(), "the view is minimized");
  for (int change = 0; change < 6; ++change) {
    const CGFloat width = 200 + static_cast<CGFloat>(random_.below(190));
    const CGFloat height = 320 + static_cast<CGFloat>(random_.below(400));
    container_->setFrame({{0, 0}, {width, height}});
    // Some come while the view is still on its way.
    if (random_.happensInPercent(40)) continue;
    check(rest(), "the view comes to rest");
    const CGRect frame = view_->frame();
    check(frame.minX() >= 0 && frame.minY() >= 0 && frame.maxX() <= width && frame.maxY() <= height,
          "the floating view is inside");
  }
  view_->maximizeView();
  check(host_.runUntil([this] { return !view_->isMinimized(); }) && rest(), "the view is back");
  check(view_->frame() == container_->bounds(), "the view fills the container");
  container_->setFrame(host_.surface()->window()->bounds());
}

void TroubleSoak::drop() {
  if (pointer_ == nullptr) return;
  shelf_.offer(random_.happensInPercent(50) ? host_.pages().lightPage() : "file:///etc/hostname");
  SoakHost::run(*view_, "window.drags = 0; addEventListener('dragover', () => ++drags, { once: true }); 0");
  const CGPoint from{40.0 + static_cast<double>(random_.below(300)), shelfHeight / 2};
  pointer_->move(from);
  pointer_->press();
  const CGFloat depth = 100 + static_cast<CGFloat>(random_.below(500));
  for (int step = 1; step <= 20; ++step) {
    pointer_->move({from.x, from.y + step * depth / 20});
    pause(20ms);
  }
  check(host_.waitForPage(*view_, "drags > 0"), "the drag reaches the page");
  pointer_->release();
  pause(afterDrop);
}

void TroubleSoak::run() {
  std::string reason;
  host_.surface()->window()->addSubview(container_);
  container_->addSubview(view_);
  view_->setMinimizedSuperview(container_);
  view_->setAllowedOrigins(std::vector<std::string>{});
  view_->setExternalLinkHandler([this](const ExternalLink& link) { links_.push_back(link.url); });
  view_->setEventHandler([this](const AgentEvent& event) {
    if (event.is<AgentEvent::Error>()) ++errorEvents_;
  });
  trouble_ = "the first page";
  if (!load()) return;
  container_->setFrame(host_.surface()->window()->bounds());
  view_->setFrame(container_->bounds());
  pointer_ = demo::PointerInput::open(shelf_.area(), reason);
  if (pointer_ == nullptr) std::printf("troubles: nothing is dropped. %s\n", reason.c_str());
  MemoryLog memory("troubles", total_, bounds);
  std::array<int, static_cast<std::size_t>(Trouble::count)> counts{};
  for (int number = 0; number < total_; ++number) {
    memory.progress(number);
    const auto trouble = static_cast<Trouble>(random_.below(counts.size()));
    trouble_ = "trouble " + std::to_string(number) + ", " + names.at(static_cast<std::size_t>(trouble));
    ++counts.at(static_cast<std::size_t>(trouble));
    switch (trouble) {
      case Trouble::hang:
        hang();
        break;
      case Trouble::foreignPage:
        goElsewhere();
        break;
      case Trouble::containerChange:
        changeContainer();
        break;
      case Trouble::drop:
      case Trouble::count:
        drop();
        break;
    }
    checkThatTheCallIsIntact();
  }
  memory.progress(total_);
  std::printf(
      "troubles: %d hung pages, %d foreign pages and links, %d floating calls in changing containers, %d drops\n",
      counts[0], counts[1], counts[2], counts[3]);
  container_->removeFromSuperview();
  view_->setMinimizedSuperview(nullptr);
  checks_.that(host_.end(view_), "nothing holds the view");
  memory.conclude(checks_);
}

}  // namespace

void soakTroubles(SoakHost& host, const PartOptions& options, Checks& checks) {
  TroubleSoak(host, options, checks).run();
}

}  // namespace corvane::soak
