/// The seam between web views and the web engine that a backend brings.
#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "corvane/export.h"
#include "corvane/platform/capture/capture_authorization.h"
#include "corvane/platform/capture/capture_state.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/web/engine_capabilities.h"
#include "corvane/platform/web/url_request.h"
#include "corvane/platform/web/web_error.h"
#include "corvane/platform/web/wk_navigation_action.h"
#include "corvane/platform/web/wk_ui_delegate.h"
#include "corvane/platform/web/wk_web_view_configuration.h"

namespace corvane {

/// The value of a script, null where it has none, or why the script failed.
using EvaluationResult = std::expected<JsonValue, WebError>;
using EvaluationCompletion = std::move_only_function<void(EvaluationResult)>;

/// How far a load had come when it failed.
enum class LoadPhase {
  provisional,  ///< nothing of the page had arrived
  committed,    ///< the page had begun to arrive, or was there
};

/// What an engine tells the web view that owns it, on the main thread.
///
/// Any of these calls may end the web view and with it the engine. An engine keeps its client alive for the length of
/// the call and touches nothing of its own afterwards.
class CORVANE_EXPORT WebEngineClient {
 public:
  virtual ~WebEngineClient();
  /// Asked before the page goes anywhere by itself, redirections and new windows included. What is refused leaves no
  /// trace: neither the page nor its history changes, and no load is reported.
  [[nodiscard]] virtual bool engineMayNavigate(const WKNavigationAction& action) = 0;
  virtual void engineDidFinishLoad() = 0;
  virtual void engineDidFailLoad(LoadPhase phase, const WebError& error) = 0;
  virtual void engineDidReceiveMessage(std::string_view channel, JsonValue body) = 0;
  virtual void engineRequestsCapture(const WKMediaCaptureRequest& request,
                                     WKPermissionDecisionHandler decisionHandler) = 0;
  /// The page has opened, closed, muted or unmuted the camera or the microphone.
  virtual void engineDidChangeCapture() = 0;
  /// The page's process has stopped answering, or answers again.
  virtual void engineDidChangeResponsiveness(bool isResponding) = 0;
};

/// One page at a time, with the scripts and channels that it was made with.
///
/// Ownership: owned by its web view; it knows its client weakly.
/// Threads:   main thread only.
/// Failure:   loads and scripts fail through the client and the completion; nothing is thrown. Every completion is
///            called exactly once, later, also when the engine ends first.
class CORVANE_EXPORT WebEngine {
 public:
  virtual ~WebEngine();
  /// Replaces the page. A load that is still under way ends without a word.
  virtual void load(const URLRequest& request) = 0;
  /// Runs a script in the main frame. The completion is never empty.
  virtual void evaluate(std::string_view script, EvaluationCompletion completion) = 0;
  /// Whether the page takes touches, clicks and keys.
  virtual void setInteractionEnabled(bool isEnabled) = 0;
  /// Whether the user can scroll the page itself; parts of the page that scroll on their own are not meant.
  virtual void setScrollEnabled(bool isEnabled) = 0;
  [[nodiscard]] virtual CaptureState captureState(AVMediaType mediaType) const = 0;
  /// Mutes what the page has open; without effect where it has nothing open.
  virtual void setCaptureMuted(AVMediaType mediaType, bool isMuted) = 0;
};

/// Makes the engines of a backend.
class CORVANE_EXPORT WebEngineFactory {
 public:
  virtual ~WebEngineFactory();
  /// The configuration's scripts and channels are installed in their order before the first load.
  [[nodiscard]] virtual std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                                              std::weak_ptr<WebEngineClient> client) = 0;

  /// Finds out what the engine can do here, and calls the completion later, once.
  virtual void queryCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion) = 0;

  /// The factory of the installed backend. Without one, the program ends with a sentence that says so.
  static WebEngineFactory& current();
};

}  // namespace corvane
