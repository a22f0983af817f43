// A request's whole way over the real engine and back, beside a loop that does the least which the engine allows. That
// loop evaluates a script and waits for the page's messages, without reading them.
//
// The library admits a request in a turn of the main loop after that of the call. What the engine still does after
// it has delivered a message comes in between. A bare loop that asks in the next turn, too, shows how much that takes.
//
// All ask the same page with the same injected scripts, in one page process, in turns of a few requests. What the
// processor does when it is idle changes the figures more than anything of ours.
#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "corvane/corvane.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/web/wk_web_view.h"
#include "demo/server/local_page_server.h"

namespace corvane::benchmarks {
namespace {

using Clock = std::chrono::steady_clock;
using gtk::GObjectHandle;
using gtk::objectCast;

constexpr int requestsInTurn = 50;
constexpr auto givingUpAfter = std::chrono::seconds(60);

/// One of the two ways to ask the page.
class Asker {
 public:
  virtual ~Asker() = default;
  [[nodiscard]] virtual bool isReady() const = 0;
  virtual void setPayload(const std::string& sku) = 0;
  /// Asks once and calls `done` when the answer is there.
  virtual void ask(std::function<void()> done) = 0;
};

/// A public call of the library.
class ViewAsker final : public Asker {
 public:
  explicit ViewAsker(const std::string& address)
      : view_(VelnorAgentView::create(Region::custom(address), "shop", false)) {
    view_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    surface_->window()->addSubview(view_);
    view_->loadBooking("b1");
  }

  bool isReady() const override { return view_->callSessionStatus() == CallSessionStatus::running; }
  void setPayload(const std::string& sku) override { sku_ = sku; }
  void ask(std::function<void()> done) override {
    view_->updateProductInCart(sku_, 2, [done = std::move(done)](const std::optional<AgentError>& error) {
      if (error) {
        std::printf("a request failed: %s\n", error->what());
        std::exit(1);
      }
      done();
    });
  }

  [[nodiscard]] GtkWidget* surfaceWidget() const { return surface_->widget(); }
  [[nodiscard]] const WKWebView& webView() const { return dynamic_cast<const WKWebView&>(*view_->subviews().front()); }

 private:
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  std::shared_ptr<VelnorAgentView> view_;
  std::string sku_;
};

enum class Turn { same, next };

/// The engine alone.
class BareAsker final : public Asker {
 public:
  BareAsker(const WKWebView& model, const std::string& address, Turn turn) : turn_(turn) {
    const auto manager = GObjectHandle<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
    for (const auto& content : model.configuration().userContentController->contents()) install(content, manager.get());
    auto* const modelView = objectCast<WebKitWebView>(dynamic_cast<gtk::GtkWebEngine&>(model.engine()).widget());
    webView_ = GObjectHandle<WebKitWebView>::sink(g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", modelView,
                                                               "user-content-manager", manager.get(), "settings",
                                                               webkit_web_view_get_settings(modelView), nullptr));
    webkit_web_view_load_uri(webView_.get(), address.c_str());
  }

  bool isReady() const override { return isReady_; }
  void setPayload(const std::string& sku) override {
    script_ = R"(postAction({"eventType":"SDK_INTERNAL_UPDATE_PRODUCT_IN_CART","data":{"_id":)"
              R"("9D2F8C4E-1B7A-4C56-8D1E-2F3A4B5C6D7E","sku":")" +
              sku + R"(","quantity":2}});)";
  }
  void ask(std::function<void()> done) override {
    done_ = std::move(done);
    // The page forwards the action, too, since it is a message of its own window.
    missing_ = 2;
    if (turn_ == Turn::same) return evaluate();
    RunLoop::main().post([this] { evaluate(); });
  }

  [[nodiscard]] GtkWidget* widget() const { return objectCast<GtkWidget>(webView_.get()); }

 private:
  void evaluate() {
    webkit_web_view_evaluate_javascript(webView_.get(), script_.data(), static_cast<gssize>(script_.size()), nullptr,
                                        nullptr, nullptr, nullptr, nullptr);
  }

  void install(const WKUserContentController::Content& content, WebKitUserContentManager* manager) {
    if (const auto* script = std::get_if<WKUserScript>(&content)) {
      WebKitUserScript* const made =
          webkit_user_script_new(script->source.c_str(), WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
                                 WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END, nullptr, nullptr);
      webkit_user_content_manager_add_script(manager, made);
      return webkit_user_script_unref(made);
    }
    const std::string& name = std::get<WKUserContentController::MessageChannel>(content).name;
    connection_ = gtk::SignalConnection::make<void(WebKitUserContentManager*, JSCValue*)>(
        manager, ("script-message-received::" + name).c_str(), [this](WebKitUserContentManager*, JSCValue*) {
          isReady_ = true;
          if (missing_ == 0) return;
          --missing_;
          if (missing_ == 0) std::exchange(done_, nullptr)();
        });
    webkit_user_content_manager_register_script_message_handler(manager, name.c_str(), nullptr);
  }

  Turn turn_;
  GObjectHandle<WebKitWebView> webView_;
  std::optional<gtk::SignalConnection> connection_;
  std::string script_;
  std::function<void()> done_;
  int missing_ = 0;
  bool isReady_ = false;
};

void runUntil(const std::function<bool()>& condition) {
  const auto end = Clock::now() + givingUpAfter;
  while (!condition()) {
    if (Clock::now() > end) {
      std::puts("the page does not answer");
      std::exit(1);
    }
    g_main_context_iteration(nullptr, TRUE);
  }
}

/// How long each request took, and all of them.
class Figures {
 public:
  /// Asks a few times in a row.
  void takeTurn(Asker& asker) {
    const auto begin = Clock::now();
    int left = requestsInTurn;
    ask(asker, left);
    runUntil([&] { return left == 0; });
    total_ += Clock::now() - begin;
  }

  [[nodiscard]] std::size_t count() const { return times_.size(); }
  [[nodiscard]] double perSecond() const { return static_cast<double>(times_.size()) / total_.count(); }
  /// In microseconds.
  [[nodiscard]] double percentile(double share) {
    std::ranges::sort(times_);
    const auto last = static_cast<double>(times_.size() - 1);
    return times_[static_cast<std::size_t>(share * last)].count() * 1e6;
  }

 private:
  using Seconds = std::chrono::duration<double>;

  void ask(Asker& asker, int& left) {
    asker.ask([this, &asker, &left, begin = Clock::now()] {
      times_.emplace_back(Clock::now() - begin);
      if (--left > 0) ask(asker, left);
    });
  }

  std::vector<Seconds> times_;
  Seconds total_{};
};

struct Contestant {
  const char* name;
  Asker& asker;
  Figures figures{};
};

void print(Contestant& contestant, Figures& least) {
  Figures& figures = contestant.figures;
  std::printf("  %-16s p50 %7.1f us   p99 %7.1f us   %6.0f requests/s   ratio %.3f\n", contestant.name,
              figures.percentile(0.5), figures.percentile(0.99), figures.perSecond(),
              figures.percentile(0.5) / least.percentile(0.5));
}

/// The ratio is that of the medians, to the last contestant.
void compare(std::array<Contestant, 3> contestants, std::size_t payloadSize, int turns) {
  for (Contestant& contestant : contestants) {
    contestant.asker.setPayload(std::string(payloadSize, 'S'));
    // The page's scripts are compiled in the meantime.
    for (Figures warmUp; warmUp.count() < 4UZ * requestsInTurn;) warmUp.takeTurn(contestant.asker);
  }
  for (int turn = 0; turn < turns; ++turn) {
    // Who comes first changes, so that nobody gains from what another one leaves behind.
    for (std::size_t place = 0; place < contestants.size(); ++place) {
      Contestant& next = contestants[(place + static_cast<std::size_t>(turn)) % contestants.size()];
      next.figures.takeTurn(next.asker);
    }
  }
  std::printf("round trip with %zu bytes, %d requests each\n", payloadSize, turns * requestsInTurn);
  for (Contestant& contestant : contestants) print(contestant, contestants.back().figures);
}

int run() {
  const auto backend = gtk::Backend::install({.isEphemeral = true});
  if (!backend) {
    std::printf("round trip: skipped. %s\n", backend.error().c_str());
    return 0;
  }
  const auto server = demo::LocalPageServer::start(CORVANE_BENCHMARK_PAGES);
  if (!server) {
    std::printf("round trip: skipped. %s\n", server.error().c_str());
    return 0;
  }
  const std::string address = (*server)->address("answers_at_once.html");
  auto* const window = objectCast<GtkWindow>(gtk_window_new());
  auto* const box = objectCast<GtkBox>(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0));
  gtk_box_set_homogeneous(box, TRUE);
  gtk_window_set_default_size(window, 390, 844);
  gtk_window_set_child(window, objectCast<GtkWidget>(box));
  {
    ViewAsker ours(address);
    BareAsker bareInNextTurn(ours.webView(), address, Turn::next);
    BareAsker bare(ours.webView(), address, Turn::same);
    for (GtkWidget* widget : {ours.surfaceWidget(), bareInNextTurn.widget(), bare.widget()})
      gtk_box_append(box, widget);
    gtk_window_present(window);
    runUntil([&] { return ours.isReady() && bareInNextTurn.isReady() && bare.isReady(); });
    const std::array contestants{Contestant{"corvane", ours}, Contestant{"bare, next turn", bareInNextTurn},
                                 Contestant{"bare", bare}};
    compare(contestants, 100, 100);
    compare(contestants, 64UZ * 1024, 40);
    gtk_window_destroy(window);
  }
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
  return 0;
}

}  // namespace
}  // namespace corvane::benchmarks

int main() { return corvane::benchmarks::run(); }
