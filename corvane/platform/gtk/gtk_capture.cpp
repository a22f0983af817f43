#include "corvane/platform/gtk/gtk_capture.h"

#include <optional>
#include <string>
#include <utility>

#include "corvane/platform/engine/capture_question.h"
#include "corvane/platform/gtk/gtk_capture_dialog.h"

namespace corvane::gtk {

namespace {

std::optional<WKMediaCaptureType> captureType(WebKitUserMediaPermissionRequest* request) {
  if (webkit_user_media_permission_is_for_display_device(request) != FALSE) return std::nullopt;
  const bool isForCamera = webkit_user_media_permission_is_for_video_device(request) != FALSE;
  const bool isForMicrophone = webkit_user_media_permission_is_for_audio_device(request) != FALSE;
  if (isForCamera && isForMicrophone) return WKMediaCaptureType::cameraAndMicrophone;
  if (isForCamera) return WKMediaCaptureType::camera;
  if (isForMicrophone) return WKMediaCaptureType::microphone;
  return std::nullopt;
}

/// Asks the host's own way, or in a dialog over the page as long as that is there.
engine::CaptureAsking makeAsking(WebKitWebView* webView, const std::shared_ptr<EngineContext>& context) {
  auto view = std::make_unique<GObjectWeakHandle<WebKitWebView>>(webView);
  return [view = std::move(view), context](const WKMediaCaptureRequest& request,
                                           std::move_only_function<void(bool)> answer) {
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
  engine::CaptureAnswer answer([asked = GObjectHandle<WebKitPermissionRequest>::retain(permission)](bool isAllowed) {
    (isAllowed ? webkit_permission_request_allow : webkit_permission_request_deny)(asked.get());
  });
  if (const auto receiver = client.lock()) {
    receiver->engineRequestsCapture(
        request, engine::makeDecisionHandler(request, std::move(answer), makeAsking(webView, context)));
  }
  return true;
}

}  // namespace corvane::gtk
