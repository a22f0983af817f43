#include "tests/contract/gtk_platform.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_screenshot.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "demo/local_page_server.h"
#include "tests/contract/trouble_server.h"
#include "tests/support/main_context.h"

namespace corvane::contract {

namespace {

/// The words of the stand-in agent tool for a trouble.
std::string inWordsOfThePage(const simulation::PageTrouble::Value& trouble) {
  using Trouble = simulation::PageTrouble;
  constexpr std::array kindsInTheirOrder{
      "none",         "late",   "never",       "twice", "unknownIdentifier", "errorText", "wrongResultType",
      "reverseOrder", "throws", "noPostAction"};
  nlohmann::json words{{"kind", kindsInTheirOrder.at(trouble.index())}};
  if (const auto* late = std::get_if<Trouble::AnswersLate>(&trouble)) words["milliseconds"] = late->delay.count();
  if (const auto* error = std::get_if<Trouble::AnswersWithError>(&trouble)) words["text"] = error->text;
  return words.dump();
}

WebKitWebView* findPage(GtkWidget* widget) {
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (WEBKIT_IS_WEB_VIEW(child)) return reinterpret_cast<WebKitWebView*>(child);
  }
  return nullptr;
}

class GtkPlatform final : public RealEnginePlatform {
 public:
  GtkPlatform(std::unique_ptr<gtk::Backend> backend, std::unique_ptr<demo::LocalPageServer> server,
              std::unique_ptr<demo::LocalPageServer> agentTool)
      : backend_(std::move(backend)), server_(std::move(server)), agentTool_(std::move(agentTool)) {
    backend_->setCapturePrompt([this](const WKMediaCaptureRequest&, std::move_only_function<void(bool)> answer) {
      ++promptCount_;
      answer(promptAnswer_);
    });
    auto* const window = reinterpret_cast<GtkWindow*>(window_);
    gtk_window_set_default_size(window, 390, 844);
    gtk_window_set_decorated(window, FALSE);
    auto* const overlay = reinterpret_cast<GtkOverlay*>(gtk_overlay_new());
    gtk_overlay_set_child(overlay, hostWidgets_);
    gtk_overlay_add_overlay(overlay, surface_->widget());
    gtk_window_set_child(window, reinterpret_cast<GtkWidget*>(overlay));
    gtk_window_present(window);
  }

  ~GtkPlatform() override {
    gtk_window_destroy(reinterpret_cast<GtkWindow*>(window_));
    surface_.reset();
    while (g_main_context_iteration(nullptr, FALSE) != FALSE) {
    }
  }

  std::string address(PageKind kind) override {
    switch (kind) {
      case PageKind::agentTool:
        return agentTool_->address("index.html");
      case PageKind::plain:
        return page("plain.html");
      case PageKind::closedPort:
        return closedPortAddress();
      case PageKind::breaksOff:
        return trouble_.address("page");
      case PageKind::silent:
        return trouble_.address("silent");
    }
    std::unreachable();
  }

  std::string page(std::string_view file) override { return server_->address(file); }

  const std::shared_ptr<UIWindow>& window() override { return surface_->window(); }
  void providePages(const std::shared_ptr<UIView>& /*view*/) override {}

  bool runUntil(const std::function<bool()>& condition) override { return test::runMainContextUntil(condition); }

  EvaluationResult evaluate(const UIView& view, std::string_view script) override {
    std::optional<EvaluationResult> result;
    findWebView(view)->evaluateJavaScript(script, [&](EvaluationResult given) { result = std::move(given); });
    if (!runUntil([&] { return result.has_value(); })) return std::unexpected(WebError{.description = "no result"});
    return *std::move(result);
  }

  void pagePostsValue(const UIView& view, std::string_view data) override {
    run(view, "window.postMessage(" + std::string(data) + ", '*');0");
  }
  void pagePostsText(const UIView& view, std::string_view text) override {
    pagePostsValue(view, nlohmann::json(text).dump());
  }

  void pageGetsMessageFromAnotherOrigin(const UIView& view, std::string_view data) override {
    run(view, R"({
      window.foreignMessages = 0;
      addEventListener("message", (event) => { if (event.origin !== origin) ++window.foreignMessages; });
      const poster = new URL("foreign_poster.html", location.href);
      poster.hostname = "localhost";
      poster.hash = encodeURIComponent(JSON.stringify()" +
                  std::string(data) + R"());
      const frame = document.createElement("iframe");
      frame.src = poster;
      document.body.append(frame);
    } 0)");
    static_cast<void>(runUntil([&] {
      const auto count = evaluate(view, "window.foreignMessages");
      return count && count->integer().value_or(0) > 0;
    }));
  }

  void pageFloods(const UIView& view, std::string_view data) override {
    run(view,
        "setInterval(() => { for (let i = 0; i < 50; ++i) window.postMessage(" + std::string(data) + ", '*'); }, 0);0");
  }

  bool pageCaptures(const UIView& view) override {
    run(view, R"({
      window.captured = null;
      navigator.mediaDevices.getUserMedia({ video: true, audio: true })
          .then(() => { window.captured = true; }, () => { window.captured = false; });
    } 0)");
    std::optional<bool> captured;
    static_cast<void>(runUntil([&] {
      const auto value = evaluate(view, "window.captured");
      captured = value ? value->boolean() : std::nullopt;
      return captured.has_value();
    }));
    return captured.value_or(false);
  }

  void pageLosesItsProcess(const UIView&) override {
    webkit_web_view_terminate_web_process(findPage(surface_->widget()));
  }

  void pageHasTrouble(const UIView& view, const simulation::PageTrouble::Value& trouble) override {
    run(view, "agentTool.setTrouble(" + inWordsOfThePage(trouble) + ");0");
    if (!std::holds_alternative<simulation::PageTrouble::HasNoPostAction>(trouble)) return;
    // The page loads anew for it.
    static_cast<void>(runUntil([&] {
      const auto isGone = evaluate(view, "postAction === undefined && !!window.agentTool");
      return isGone && isGone->boolean().value_or(false);
    }));
  }

  std::function<Colour(int, int)> takePicture() override {
    const auto file = std::filesystem::temp_directory_path() / ("corvane_" + std::to_string(getpid()) + ".png");
    if (!gtk::saveScreenshot(surface_->widget(), file)) return [](int, int) { return Colour{}; };
    const std::shared_ptr<GdkPixbuf> picture(gdk_pixbuf_new_from_file(file.c_str(), nullptr), &g_object_unref);
    std::error_code ignored;
    std::filesystem::remove(file, ignored);
    const int scale = gtk_widget_get_scale_factor(surface_->widget());
    return [picture, scale](int x, int y) {
      const guchar* const pixel = gdk_pixbuf_read_pixels(picture.get()) +
                                  scale * y * gdk_pixbuf_get_rowstride(picture.get()) +
                                  scale * x * gdk_pixbuf_get_n_channels(picture.get());
      return Colour{pixel[0], pixel[1], pixel[2]};
    };
  }

  const std::shared_ptr<gtk::Surface>& surface() override { return surface_; }

  void useOwnCaptureDialog() override { backend_->setCapturePrompt({}); }

  GtkWidget* addHostButton(const CGRect& frame, std::function<void()> clicked) override {
    GtkWidget* const button = gtk_button_new();
    gtk_widget_set_size_request(button, static_cast<int>(frame.size.width), static_cast<int>(frame.size.height));
    gtk::connectForLife<void(GtkButton*)>(button, "clicked", [clicked = std::move(clicked)](GtkButton*) { clicked(); });
    gtk_fixed_put(reinterpret_cast<GtkFixed*>(hostWidgets_), button, frame.minX(), frame.minY());
    return button;
  }

  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) override {
    backend_->setCaptureAuthorization(mediaType, status);
  }
  void setPromptAnswer(bool isAllowed) override { promptAnswer_ = isAllowed; }
  int promptCount() const override { return promptCount_; }

 private:
  static void run(const UIView& view, const std::string& script) {
    findWebView(view)->evaluateJavaScript(script, [](const EvaluationResult&) {});
  }

  std::unique_ptr<gtk::Backend> backend_;
  std::unique_ptr<demo::LocalPageServer> server_;
  std::unique_ptr<demo::LocalPageServer> agentTool_;
  TroubleServer trouble_;
  std::shared_ptr<gtk::Surface> surface_ = gtk::Surface::create();
  GtkWidget* window_ = gtk_window_new();
  GtkWidget* hostWidgets_ = gtk_fixed_new();
  bool promptAnswer_ = false;
  int promptCount_ = 0;
};

}  // namespace

std::unique_ptr<RealEnginePlatform> RealEnginePlatform::make(std::string& reason) {
  auto backend = gtk::Backend::install({.usesMockCaptureDevices = true,
                                        .isEphemeral = true,
                                        .userAgentSuffix = "Shop/2.1",
                                        .languages = {"rm-CH"},
                                        .longestMessage = 4'000'000});
  if (!backend) {
    reason = backend.error();
    return nullptr;
  }
  auto server = demo::LocalPageServer::start(CORVANE_TEST_PAGES);
  auto agentTool = demo::LocalPageServer::start(CORVANE_AGENT_TOOL);
  if (!server || !agentTool) {
    reason = (server ? agentTool : server).error();
    return nullptr;
  }
  return std::make_unique<GtkPlatform>(*std::move(backend), *std::move(server), *std::move(agentTool));
}

PlatformMaker gtkPlatform() {
  return {"RealEngine", [](std::string& reason) { return RealEnginePlatform::make(reason); }};
}

}  // namespace corvane::contract
