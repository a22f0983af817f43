#include "corvane/platform/gtk/gtk_capture.h"

#include <optional>
#include <string>
#include <utility>

#include "corvane/platform/gtk/gtk_capture_dialog.h"

namespace corvane::gtk {

namespace {

/// A request of the engine that is answered once, with a refusal at the latest when this goes.
class PendingPermission {
 public:
  explicit PendingPermission(WebKitPermissionRequest* request)
      : request_(GObjectHandle<WebKitPermissionRequest>::retain(request)) {}
  PendingPermission(PendingPermission&&) = default;
  PendingPermission& operator=(PendingPermission&&) = delete;
  ~PendingPermission() { answer(false); }

  [[nodiscard]] bool isAnswered() const { return !request_; }
  void answer(bool isAllowed) {
    const auto request = std::exchange(request_, {});
    if (!request) return;
    (isAllowed ? webkit_permission_request_allow : webkit_permission_request_deny)(request.get());
  }

 private:
  GObjectHandle<WebKitPermissionRequest> request_;
};

std::optional<WKMediaCaptureType> captureType(WebKitUserMediaPermissionRequest* request) {
  if (webkit_user_media_permission_is_for_display_device(request) != FALSE) return std::nullopt;
  const bool isForCamera = webkit_user_media_permission_is_for_video_device(request) != FALSE;
  const bool isForMicrophone = webkit_user_media_permission_is_for_audio_device(request) != FALSE;
  if (isForCamera && isForMicrophone) return WKMediaCaptureType::cameraAndMicrophone;
  if (isForCamera) return WKMediaCaptureType::camera;
  if (isForMicrophone) return WKMediaCaptureType::microphone;
  return std::nullopt;
}

WKPermissionDecisionHandler makeDecisionHandler(WebKitWebView* webView, WebKitPermissionRequest* permission,
                                                const WKMediaCaptureRequest& request,
                                                const std::shared_ptr<EngineContext>& context) {
  auto view = std::make_unique<GObjectWeakHandle<WebKitWebView>>(webView);
  return [view = std::move(view), pending = PendingPermission(permission), request,
          context](WKPermissionDecision decision) mutable {
    if (pending.isAnswered()) return;
    if (decision != WKPermissionDecision::prompt) return pending.answer(decision == WKPermissionDecision::grant);
    auto answer = [pending = std::move(pending)](bool isAllowed) mutable { pending.answer(isAllowed); };
    if (const CapturePrompt prompt = context->capturePrompt) return prompt(request, std::move(answer));
    if (const auto shown = view->lock())
      showCaptureDialog(shown.get(), context->captureDialogTexts, request, std::move(answer));
  };
}

}  // namespace

bool handlePermissionRequest(WebKitWebView* webView, WebKitPermissionRequest* permission,
                             const std::shared_ptr<EngineContext>& context,
                             const std::weak_ptr<WebEngineClient>& client) {
  if (!WEBKIT_IS_USER_MEDIA_PERMISSION_REQUEST(permission)) return false;
  const auto type = captureType(objectCast<WebKitUserMediaPermissionRequest>(permission));
  if (!type) return false;
  const char* url = webkit_web_view_get_uri(webView);
  const WKMediaCaptureRequest request{*type, url != nullptr ? url : ""};
  auto decisionHandler = makeDecisionHandler(webView, permission, request, context);
  if (const auto receiver = client.lock()) receiver->engineRequestsCapture(request, std::move(decisionHandler));
  return true;
}

}  // namespace corvane::gtk
