// A request's whole way over WebKitGTK and back, beside loops that do less on the same page with the same injected
// scripts, in one page process.
#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <array>
#include <cstdio>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "benchmarks/round_trip/comparison.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "demo/server/local_page_server.h"

namespace corvane::benchmarks {
namespace {

using gtk::GObjectHandle;
using gtk::objectCast;

class BareGtkAsker final : public BareAsker {
 public:
  BareGtkAsker(const WKWebView& model, const std::string& address, Effort effort) : BareAsker(effort) {
    const auto manager = GObjectHandle<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
    for (const auto& content : model.configuration().userContentController->contents()) install(content, manager.get());
    auto* const modelView = objectCast<WebKitWebView>(dynamic_cast<gtk::GtkWebEngine&>(model.engine()).widget());
    webView_ = GObjectHandle<WebKitWebView>::sink(g_object_new(WEBKIT_TYPE_WEB_VIEW, "related-view", modelView,
                                                               "user-content-manager", manager.get(), "settings",
                                                               webkit_web_view_get_settings(modelView), nullptr));
    webkit_web_view_load_uri(webView_.get(), address.c_str());
  }

  [[nodiscard]] GtkWidget* widget() const { return objectCast<GtkWidget>(webView_.get()); }

 private:
  void evaluate(const std::string& script) override {
    webkit_web_view_evaluate_javascript(webView_.get(), script.data(), static_cast<gssize>(script.size()), nullptr,
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
        manager, ("script-message-received::" + name).c_str(), [this](WebKitUserContentManager*, JSCValue* value) {
          if (reads()) {
            const std::unique_ptr<char, decltype(&g_free)> text(jsc_value_to_json(value, 0), &g_free);
            readCount_ += JsonValue::parse(text.get()).has_value() ? 1 : 0;
          }
          messageCame();
        });
    webkit_user_content_manager_register_script_message_handler(manager, name.c_str(), nullptr);
  }

  GObjectHandle<WebKitWebView> webView_;
  std::optional<gtk::SignalConnection> connection_;
  int readCount_ = 0;
};

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
  const Iterate iterate = [] { g_main_context_iteration(nullptr, TRUE); };
  auto* const window = objectCast<GtkWindow>(gtk_window_new());
  auto* const box = objectCast<GtkBox>(gtk_box_new(GTK_ORIENTATION_VERTICAL, 0));
  gtk_box_set_homogeneous(box, TRUE);
  gtk_window_set_default_size(window, 390, 844);
  gtk_window_set_child(window, objectCast<GtkWidget>(box));
  {
    const auto surface = gtk::Surface::create();
    gtk_box_append(box, surface->widget());
    ViewAsker ours(*surface->window(), address);
    std::array bare{BareGtkAsker(ours.webView(), address, Effort::nextTurn),
                    BareGtkAsker(ours.webView(), address, Effort::newTextReads),
                    BareGtkAsker(ours.webView(), address, Effort::newText),
                    BareGtkAsker(ours.webView(), address, Effort::least)};
    for (const BareGtkAsker& asker : bare) gtk_box_append(box, asker.widget());
    gtk_window_present(window);
    const std::vector<Contestant> contestants = contestantsOf(ours, bare);
    runUntil(iterate, [&] { return areReady(contestants); });
    compareAll(contestants, iterate);
    gtk_window_destroy(window);
  }
  while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
  }
  return 0;
}

}  // namespace
}  // namespace corvane::benchmarks

int main() { return corvane::benchmarks::run(); }
