#include "benchmarks/soak/soak_host.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <optional>
#include <utility>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::soak {

namespace {

using gtk::objectCast;
using namespace std::chrono_literals;

constexpr auto givingUpAfter = 60s;
constexpr guint tickMilliseconds = 4;

WKWebView& webViewOf(const UIView& view) { return dynamic_cast<WKWebView&>(*view.subviews().front()); }

}  // namespace

GapMeter::GapMeter()
    : timer_(g_timeout_add(
          tickMilliseconds,
          [](gpointer self) -> gboolean {
            static_cast<GapMeter*>(self)->tick();
            return G_SOURCE_CONTINUE;
          },
          this)) {}

GapMeter::~GapMeter() { g_source_remove(timer_); }

void GapMeter::tick() {
  const auto now = Clock::now();
  longest_ = std::max(longest_, now - last_);
  last_ = now;
}

void GapMeter::restart() {
  longest_ = {};
  skip();
}

std::chrono::milliseconds GapMeter::longest() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(longest_);
}

std::expected<std::unique_ptr<SoakHost>, std::string> SoakHost::make() {
  auto pages = PageServerProcess::start();
  if (!pages) return std::unexpected(pages.error());
  auto backend = gtk::Backend::install({.isEphemeral = true});
  if (!backend) return std::unexpected(backend.error());
  std::unique_ptr<SoakHost> host(new SoakHost);
  host->pages_ = *std::move(pages);
  host->backend_ = *std::move(backend);
  host->surface_ = gtk::Surface::create();
  host->window_ = gtk_window_new();
  auto* const window = objectCast<GtkWindow>(host->window_);
  gtk_window_set_default_size(window, 390, 844);
  gtk_window_set_decorated(window, FALSE);
  gtk_window_set_child(window, host->surface_->widget());
  gtk_window_present(window);
  return host;
}

SoakHost::~SoakHost() {
  if (window_ != nullptr) gtk_window_destroy(objectCast<GtkWindow>(window_));
  surface_.reset();
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
}

std::shared_ptr<VelnorAgentView> SoakHost::addView(const std::string& address) const {
  auto view = VelnorAgentView::create(Region::custom(address), "shop", false);
  view->setFrame(surface_->window()->bounds());
  view->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  surface_->window()->addSubview(view);
  return view;
}

WebKitWebView* SoakHost::engineOf(const UIView& view) {
  return objectCast<WebKitWebView>(dynamic_cast<gtk::GtkWebEngine&>(webViewOf(view).engine()).widget());
}

bool SoakHost::runUntil(const std::function<bool()>& condition) const {
  const auto end = std::chrono::steady_clock::now() + givingUpAfter;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > end) return false;
    g_main_context_iteration(nullptr, TRUE);
  }
  return true;
}

bool SoakHost::loadAndRun(VelnorAgentView& view) {
  // A name of its own tells the page from the one before it.
  const std::string booking = "booking-" + std::to_string(++bookingCount_) + "-";
  view.loadBooking(booking);
  const std::string isThere = "location.search.includes('" + booking +
                              "') && document.readyState === 'complete' && typeof postAction === 'function'";
  if (!waitForPage(view, isThere)) return false;
  run(view, postScript(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})"));
  return runUntil([&] { return view.callSessionStatus() == CallSessionStatus::running; });
}

bool SoakHost::end(std::shared_ptr<VelnorAgentView>& view) const {
  const std::weak_ptr<VelnorAgentView> left = view;
  view->removeFromSuperview();
  view.reset();
  return runUntil([&] { return left.expired(); });
}

bool SoakHost::waitForPage(const UIView& view, std::string_view condition) const {
  const auto end = std::chrono::steady_clock::now() + givingUpAfter;
  while (std::chrono::steady_clock::now() < end) {
    if (evaluate(view, condition).boolean().value_or(false)) return true;
    // A page that is not there yet may refuse at once; the rest of the loop wants its turns.
    g_main_context_iteration(nullptr, TRUE);
  }
  return false;
}

void SoakHost::run(const UIView& view, std::string_view script) {
  webViewOf(view).evaluateJavaScript(script, [](const EvaluationResult&) {});
}

JsonValue SoakHost::evaluate(const UIView& view, std::string_view script) const {
  // The result may come when nobody waits for it any more.
  const auto place = std::make_shared<std::optional<EvaluationResult>>();
  webViewOf(view).evaluateJavaScript(script, [place](EvaluationResult given) { *place = std::move(given); });
  if (!runUntil([&] { return place->has_value(); }) || !**place) return {};
  return ***place;
}

std::string postScript(std::string_view json) { return "window.postMessage(" + std::string(json) + ", '*');0"; }

}  // namespace corvane::soak
