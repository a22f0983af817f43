#include "corvane/platform/gtk/gtk_capabilities.h"

#include <string_view>
#include <utility>

#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_evaluation.h"
#include "corvane/platform/gtk/gtk_page_settings.h"
#include "corvane/platform/gtk/signal_connection.h"
#include "corvane/platform/web/wk_web_view_configuration.h"

namespace corvane::gtk {

namespace {

// Only a page that counts as secure may look for devices.
constexpr const char* page = "<!doctype html><title>capabilities</title>";
constexpr const char* pageUrl = "https://capabilities.invalid/";
constexpr std::string_view question = R"(
  const devices = navigator.mediaDevices ? await navigator.mediaDevices.enumerateDevices() : [];
  const has = (kind) => devices.some((device) => device.kind === kind);
  return { peers: typeof RTCPeerConnection === "function", camera: has("videoinput"), microphone: has("audioinput") };)";

/// One question, which keeps itself until it is answered.
class CapabilityQuery : public std::enable_shared_from_this<CapabilityQuery> {
 public:
  CapabilityQuery(std::shared_ptr<EngineContext> context, bool hasHardwareDrawing,
                  std::move_only_function<void(const EngineCapabilities&)> completion)
      : context_(std::move(context)), completion_(std::move(completion)) {
    found_.hasHardwareDrawing = hasHardwareDrawing;
  }

  void begin() {
    const auto settings = makeSettings({}, context_->options);
    webView_ = GObjectHandle<WebKitWebView>::sink(
        g_object_new(WEBKIT_TYPE_WEB_VIEW, "web-context", context_->webContext.get(), "network-session",
                     context_->networkSession.get(), "settings", settings.get(), nullptr));
    connectForLife<void(WebKitWebView*, WebKitLoadEvent)>(
        webView_.get(), "load-changed", [self = shared_from_this()](WebKitWebView*, WebKitLoadEvent event) mutable {
          if (event == WEBKIT_LOAD_FINISHED && self != nullptr) std::exchange(self, nullptr)->ask();
        });
    connectForLife<void(WebKitWebView*, WebKitWebProcessTerminationReason)>(
        webView_.get(), "web-process-terminated",
        whileAlive(weak_from_this(), [](CapabilityQuery& self, WebKitWebView*, WebKitWebProcessTerminationReason) {
          self.finish(JsonValue());
        }));
    webkit_web_view_load_html(webView_.get(), page, pageUrl);
  }

 private:
  void ask() {
    webkit_web_view_call_async_javascript_function(
        webView_.get(), question.data(), static_cast<gssize>(question.size()), nullptr, nullptr, nullptr, nullptr,
        [](GObject* webView, GAsyncResult* result, gpointer data) noexcept {
          const std::unique_ptr<std::shared_ptr<CapabilityQuery>> query(
              static_cast<std::shared_ptr<CapabilityQuery>*>(data));
          const auto value = GObjectHandle<JSCValue>::adopt(webkit_web_view_call_async_javascript_function_finish(
              objectCast<WebKitWebView>(webView), result, nullptr));
          (*query)->finish(value ? jsonOf(value.get()).value_or(JsonValue()) : JsonValue());
        },
        std::make_unique<std::shared_ptr<CapabilityQuery>>(shared_from_this()).release());
  }

  void finish(const JsonValue& answer) {
    auto completion = std::exchange(completion_, nullptr);
    // The backend may have ended meanwhile.
    if (!completion || PlatformInstallation::findPlatform() == nullptr) return;
    const auto has = [&](const char* name) {
      const auto member = answer.find(name);
      return member && member->boolean().value_or(false);
    };
    found_.hasPeerConnections = has("peers");
    found_.hasCamera = has("camera");
    found_.hasMicrophone = has("microphone");
    completion(found_);
  }

  std::shared_ptr<EngineContext> context_;
  std::move_only_function<void(const EngineCapabilities&)> completion_;
  EngineCapabilities found_;
  GObjectHandle<WebKitWebView> webView_;
};

}  // namespace

void findCapabilities(const std::shared_ptr<EngineContext>& context, bool hasHardwareDrawing,
                      std::move_only_function<void(const EngineCapabilities&)> completion) {
  std::make_shared<CapabilityQuery>(context, hasHardwareDrawing, std::move(completion))->begin();
}

}  // namespace corvane::gtk
