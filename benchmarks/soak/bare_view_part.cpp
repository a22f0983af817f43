#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <cstdio>
#include <string>

#include "benchmarks/soak/engine_objects.h"
#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/parts.h"
#include "benchmarks/soak/random_source.h"
#include "corvane/platform/gtk/gobject_handle.h"

namespace corvane::soak {

namespace {

using gtk::GObjectHandle;
using gtk::objectCast;

constexpr int allViews = 500;
// Nobody is judged here.
constexpr GrowthBounds bounds{.heap = 1'000, .resident = 1'000, .openFiles = 1'000};

}  // namespace

void soakBareViews(SoakHost& host, const PartOptions& options, Checks& checks) {
  const int total = allViews * options.percent / 100;
  RandomSource random(options.seed);
  const auto context = GObjectHandle<WebKitWebContext>::adopt(webkit_web_context_new());
  const auto session = GObjectHandle<WebKitNetworkSession>::adopt(webkit_network_session_new_ephemeral());
  auto* const window = objectCast<GtkWindow>(gtk_window_new());
  gtk_window_set_default_size(window, 390, 844);
  gtk_window_present(window);
  MemoryLog memory("bare-views", total, bounds);
  for (int number = 0; number < total; ++number) {
    memory.progress(number);
    EngineObjects objects;
    auto view = GObjectHandle<WebKitWebView>::sink(
        g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context.get(), "network-session", session.get(), nullptr));
    objects.watch(view.get());
    gtk_window_set_child(window, objectCast<GtkWidget>(view.get()));
    webkit_web_view_load_uri(
        view.get(), (random.happensInPercent(50) ? host.pages().agentTool() : host.pages().lightPage()).c_str());
    host.runUntil([&] { return webkit_web_view_get_estimated_load_progress(view.get()) >= 1; });
    gtk_window_set_child(window, nullptr);
    g_object_run_dispose(objectCast<GObject>(view.get()));
    view = {};
    checks.that(host.runUntil([&] { return objects.aliveCount() == 0; }), "a view of the engine is gone");
  }
  memory.progress(total);
  gtk_window_destroy(window);
  memory.conclude(checks);
}

}  // namespace corvane::soak
