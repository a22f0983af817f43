#include "corvane/platform/gtk/gtk_web_engine.h"

#include <gtk/gtk.h>
#include <webkit/webkit.h>

#include <optional>
#include <utility>
#include <vector>

#include "corvane/platform/engine/responsiveness.h"
#include "corvane/platform/gtk/gtk_capture.h"
#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/gtk/gtk_evaluation.h"
#include "corvane/platform/gtk/gtk_page_loader.h"
#include "corvane/platform/gtk/gtk_page_settings.h"
#include "corvane/platform/gtk/gtk_page_windows.h"
#include "corvane/platform/gtk/gtk_surface_widget.h"
#include "corvane/platform/gtk/gtk_tools_window.h"

namespace corvane::gtk {

namespace {

using StyleSheetHandle = CHandle<WebKitUserStyleSheet, webkit_user_style_sheet_unref>;

/// Takes scrolling from the viewport only. What the root element says about overflow applies to it, and parts of the
/// page that scroll on their own have rules of their own.
StyleSheetHandle makeFixedPageStyle() {
  return StyleSheetHandle(webkit_user_style_sheet_new("html { overflow: hidden !important; }",
                                                      WEBKIT_USER_CONTENT_INJECT_TOP_FRAME,
                                                      WEBKIT_USER_STYLE_LEVEL_USER, nullptr, nullptr));
}

/// Any change that the eye does not see makes the page hand over a new picture.
constexpr const char* redrawScript =
    "(() => { const style = document.documentElement.style, before = style.opacity;"
    " if (before === '0.999') return; style.opacity = '0.999';"
    " requestAnimationFrame(() => requestAnimationFrame(() => { style.opacity = before; })); })();0";

/// A page's dialog stops its scripts, the host's among them, until somebody answers it. Nobody can in a view that
/// is hidden or takes no touches. So each is answered at once: questions with no, leaving the page with yes.
/// Otherwise a page could keep the host from loading another one.
gboolean answerDialog(WebKitWebView*, WebKitScriptDialog* dialog) {
  if (webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
    webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);
  }
  return TRUE;
}

/// A page's wish to print would bring a dialog over the app's window.
gboolean refusePrinting(WebKitWebView*, WebKitPrintOperation*) { return TRUE; }

GObjectHandle<WebKitWebView> makeWebView(const WKWebViewConfiguration& configuration, const EngineContext& context,
                                         WebKitUserContentManager* manager) {
  const auto settings = makeSettings(configuration, context.options);
  const BackendOptions& options = context.options;
  const auto policies = GObjectHandle<WebKitWebsitePolicies>::adopt(webkit_website_policies_new_with_policies(
      "autoplay", options.playsWithoutClick ? WEBKIT_AUTOPLAY_ALLOW : WEBKIT_AUTOPLAY_ALLOW_WITHOUT_SOUND, nullptr));
  auto webView = GObjectHandle<WebKitWebView>::sink(g_object_new(
      surfaceWebViewType(), "web-context", context.webContext.get(), "network-session", context.networkSession.get(),
      "user-content-manager", manager, "settings", settings.get(), "website-policies", policies.get(), nullptr));
  if (options.pageBackground) {
    const UIColor& color = *options.pageBackground;
    const GdkRGBA rgba{static_cast<float>(color.red), static_cast<float>(color.green), static_cast<float>(color.blue),
                       static_cast<float>(color.alpha)};
    webkit_web_view_set_background_color(webView.get(), &rgba);
  }
  return webView;
}

}  // namespace

struct GtkWebEngine::Parts {
  std::shared_ptr<EngineContext> context;
  std::shared_ptr<WKUserContentController> controller;
  GObjectHandle<WebKitUserContentManager> manager;
  GObjectHandle<WebKitWebView> webView;
  std::shared_ptr<Evaluations> evaluations;
  std::shared_ptr<PageLoader> loader;
  std::shared_ptr<engine::Responsiveness> responsiveness;
  std::vector<SignalConnection> connections;
  std::vector<SignalConnection> windows;
  StyleSheetHandle fixedPageStyle;
  /// Whether the widget has been taken apart since it last showed the page.
  bool isPictureLost = false;
};

GtkWebEngine::GtkWebEngine(const WKWebViewConfiguration& configuration, std::weak_ptr<WebEngineClient> client,
                           std::shared_ptr<EngineContext> context)
    : parts_(std::make_unique<Parts>()) {
  Parts& parts = *parts_;
  parts.context = std::move(context);
  parts.controller = configuration.userContentController;
  parts.manager = GObjectHandle<WebKitUserContentManager>::adopt(webkit_user_content_manager_new());
  parts.webView = makeWebView(configuration, *parts.context, parts.manager.get());
  parts.evaluations = std::make_shared<Evaluations>(parts.context);
  parts.loader = std::make_shared<PageLoader>(parts.webView.get(), parts.context, parts.evaluations, client);
  parts.loader->begin();
  parts.responsiveness = std::make_shared<engine::Responsiveness>(
      parts.context->runLoop,
      [webView = std::make_shared<GObjectWeakHandle<WebKitWebView>>(parts.webView.get()),
       evaluations = parts.evaluations](std::function<void()> answered) {
        if (const auto alive = webView->lock()) {
          evaluations->run(alive.get(), "0", [answered = std::move(answered)](const EvaluationResult&) { answered(); });
        }
      },
      client);
  parts.windows = installPageWindows(parts.webView.get(), parts.loader);
  parts.connections = installContents(parts.manager.get(), *parts.controller, client, parts.loader,
                                      parts.context->options.longestMessage);
  parts.connections.push_back(SignalConnection::make<gboolean(WebKitWebView*, WebKitPermissionRequest*)>(
      parts.webView.get(), "permission-request",
      [context = parts.context, client](WebKitWebView* webView, WebKitPermissionRequest* request) {
        return handlePermissionRequest(webView, request, context, client) ? TRUE : FALSE;
      }));
  parts.connections.push_back(SignalConnection::make<gboolean(WebKitWebView*, WebKitScriptDialog*)>(
      parts.webView.get(), "script-dialog", answerDialog));
  const auto notify = [&](const char* signal, const auto& tell) {
    parts.connections.push_back(SignalConnection::make<void(WebKitWebView*, GParamSpec*)>(
        parts.webView.get(), signal, [client, tell](WebKitWebView* webView, GParamSpec*) {
          if (const auto receiver = client.lock()) tell(*receiver, webView);
        }));
  };
  const auto tellOfCapture = [](WebEngineClient& receiver, WebKitWebView*) { receiver.engineDidChangeCapture(); };
  notify("notify::camera-capture-state", tellOfCapture);
  notify("notify::microphone-capture-state", tellOfCapture);
  parts.connections.push_back(SignalConnection::make<void(WebKitWebView*, WebKitLoadEvent)>(
      parts.webView.get(), "load-changed", [page = parts.responsiveness](WebKitWebView*, WebKitLoadEvent event) {
        if (event == WEBKIT_LOAD_COMMITTED) page->forget();
      }));
  // The engine looks only after the user's input.
  notify("notify::is-web-process-responsive", [page = parts.responsiveness](WebEngineClient&, WebKitWebView* webView) {
    page->setResponding(webkit_web_view_get_is_web_process_responsive(webView) != FALSE);
  });
  parts.connections.push_back(SignalConnection::make<gboolean(WebKitWebView*, WebKitPrintOperation*)>(
      parts.webView.get(), "print", refusePrinting));
  keepToolsApart(parts.webView.get());
  // Wherever in the app's widgets something is moved to another place, all that is inside is taken apart.
  parts.connections.push_back(SignalConnection::make<void(WebKitWebView*)>(
      parts.webView.get(), "unrealize", [isLost = &parts.isPictureLost](WebKitWebView*) { *isLost = true; }));
  parts.connections.push_back(SignalConnection::make<void(WebKitWebView*)>(
      parts.webView.get(), "map", [isLost = &parts.isPictureLost](WebKitWebView* webView) {
        if (!std::exchange(*isLost, false)) return;
        webkit_web_view_evaluate_javascript(webView, redrawScript, -1, nullptr, nullptr, nullptr, nullptr, nullptr);
      }));
  parts.connections.push_back(SignalConnection::make<void(WebKitWebView*, GParamSpec*)>(
      parts.webView.get(), "notify::title", [](WebKitWebView* webView, GParamSpec*) {
        const char* const title = webkit_web_view_get_title(webView);
        gtk_accessible_update_property(GTK_ACCESSIBLE(webView), GTK_ACCESSIBLE_PROPERTY_LABEL,
                                       title != nullptr ? title : "", -1);
      }));
  // The engine's widget for input methods is a stop of the Tab key that nobody sees, and that lets nobody go on.
  for (GtkWidget* child = gtk_widget_get_first_child(widget()); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    gtk_widget_set_can_focus(child, FALSE);
  }
}

GtkWebEngine::~GtkWebEngine() {
  Parts& parts = *parts_;
  parts.connections.clear();
  parts.windows.clear();
  parts.loader->end();
  removeContents(parts.manager.get(), *parts.controller);
  parts.evaluations->settleAll({WebError::Kind::processTerminated, "The web view has ended", {}});
  if (gtk_widget_get_parent(widget()) != nullptr) gtk_widget_unparent(widget());
  // Scripts that are still pending hold the view; the page, and its camera, must end now all the same.
  g_object_run_dispose(objectCast<GObject>(parts.webView.get()));
  // The view may be in the middle of telling us something, and does not hold itself for that.
  parts.context->runLoop->post([webView = std::move(parts.webView)] {});
}

void GtkWebEngine::load(const URLRequest& request) { parts_->loader->load(request); }

void GtkWebEngine::evaluate(std::string_view script, EvaluationCompletion completion) {
  parts_->evaluations->run(parts_->webView.get(), script, std::move(completion));
  parts_->responsiveness->expectAnswer();
}

void GtkWebEngine::setInteractionEnabled(bool isEnabled) {
  gtk_widget_set_can_target(widget(), isEnabled);
  gtk_widget_set_can_focus(widget(), isEnabled);
  // A widget that has the focus keeps it, and with it gets the keys, even where it could no longer take it.
  GtkRoot* root = gtk_widget_get_root(widget());
  if (!isEnabled && root != nullptr && gtk_root_get_focus(root) == widget()) gtk_root_set_focus(root, nullptr);
}

void GtkWebEngine::setScrollEnabled(bool isEnabled) {
  StyleSheetHandle& style = parts_->fixedPageStyle;
  if (isEnabled == (style == nullptr)) return;
  if (isEnabled) {
    webkit_user_content_manager_remove_style_sheet(parts_->manager.get(), style.get());
    style.reset();
  } else {
    style = makeFixedPageStyle();
    webkit_user_content_manager_add_style_sheet(parts_->manager.get(), style.get());
  }
}

CaptureState GtkWebEngine::captureState(AVMediaType mediaType) const {
  WebKitWebView* const webView = parts_->webView.get();
  switch (mediaType == AVMediaType::video ? webkit_web_view_get_camera_capture_state(webView)
                                          : webkit_web_view_get_microphone_capture_state(webView)) {
    case WEBKIT_MEDIA_CAPTURE_STATE_NONE:
      return CaptureState::none;
    case WEBKIT_MEDIA_CAPTURE_STATE_ACTIVE:
      return CaptureState::active;
    case WEBKIT_MEDIA_CAPTURE_STATE_MUTED:
      return CaptureState::muted;
  }
  return CaptureState::none;
}

void GtkWebEngine::setCaptureMuted(AVMediaType mediaType, bool isMuted) {
  // The engine takes the other states for a wish to begin or to end the capture.
  if (captureState(mediaType) == CaptureState::none) return;
  const auto set = mediaType == AVMediaType::video ? webkit_web_view_set_camera_capture_state
                                                   : webkit_web_view_set_microphone_capture_state;
  set(parts_->webView.get(), isMuted ? WEBKIT_MEDIA_CAPTURE_STATE_MUTED : WEBKIT_MEDIA_CAPTURE_STATE_ACTIVE);
}

GtkWidget* GtkWebEngine::widget() const { return objectCast<GtkWidget>(parts_->webView.get()); }

void GtkWebEngine::moveTo(GtkWidget* parent) const {
  GtkWidget* present = gtk_widget_get_parent(widget());
  if (present == parent) return;
  if (present != nullptr) gtk_widget_unparent(widget());
  gtk_widget_set_parent(widget(), parent);
}

void GtkWebEngine::somethingWasDropped() { parts_->loader->somethingWasDropped(); }

}  // namespace corvane::gtk
