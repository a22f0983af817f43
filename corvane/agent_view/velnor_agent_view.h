/// The view that shows a sales agent the agent tool.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "corvane/agent_view/agent_operations.h"
#include "corvane/agent_view/region.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/call_session_status.h"
#include "corvane/export.h"
#include "corvane/minimized/minimized_origin.h"
#include "corvane/platform/capture/capture_authorization.h"
#include "corvane/platform/capture/capture_state.h"
#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/web/web_error.h"
#include "corvane/platform/web/wk_navigation_delegate.h"
#include "corvane/platform/web/wk_script_message.h"
#include "corvane/platform/web/wk_ui_delegate.h"

namespace corvane {

class WKWebView;

/// Something that the page or its user wanted to open, and that does not belong into the view: a link of another scheme
/// such as `mailto:`, a page that it may not go to, a window of its own.
struct ExternalLink {
  std::string url;
  bool wantsNewWindow = false;
  /// Whether a click, a tap or a key brought it about, and not a script alone. Be careful with those that are not.
  bool isUserInitiated = false;
  bool operator==(const ExternalLink&) const = default;
};
using ExternalLinkHandler = std::function<void(const ExternalLink&)>;

/// What has happened to the process that runs the page, besides what the event `Error` tells.
enum class PageIncident : std::uint8_t {
  stoppedResponding,  ///< the page hangs; `loadBooking` leaves it
  respondsAgain,
  processEnded,  ///< nothing of the page is left; the event `Error` has come before
  reloaded,      ///< the booking is being loaded again, as the host app wished
};
using PageIncidentHandler = std::function<void(PageIncident)>;

/// Holds video-shopping calls inside the host app. Loads the agent tool page, tells the host app what happens in it,
/// and keeps the state of the call.
///
/// Ownership: made by `create` and shared by whoever holds it. The framework holds it while it is minimized, while
///            requests wait for their turn, and while a decrement waits for the page. Ending it ends the page.
/// Threads:   main thread only; handlers are called there, synchronously.
/// Failure:   a page that does not load, and a script that fails in it, is told by the event `Error` and by `error()`.
///            Messages of the page that make no sense are dropped. Nothing is thrown.
class CORVANE_EXPORT VelnorAgentView final : public UIView,
                                             public AgentOperations,
                                             public WKScriptMessageHandler,
                                             public WKNavigationDelegate,
                                             public WKUIDelegate {
 public:
  /// Makes a view for an organisation. A backend must have been installed. Nothing is loaded before `loadBooking`.
  /// A minimized agent view that the framework was holding is released.
  [[nodiscard]] static std::shared_ptr<VelnorAgentView> create(Region region, std::string organisationId,
                                                               bool enableSSO);
  VelnorAgentView(ConstructionKey key, Region region, std::string organisationId, bool enableSSO);
  ~VelnorAgentView() override;

  /// Loads the agent tool for a booking, in place of whatever the view shows. It may be called at any time and as
  /// often as wanted. Where no address can be made (a region whose base address is none or is beyond 64 KiB, an
  /// identifier that is not valid UTF-8) nothing is loaded and nothing raised; `connectId` changes all the same.
  void loadBooking(std::string connectId);

  [[nodiscard]] const Region& region() const CORVANE_LIFETIMEBOUND;
  [[nodiscard]] const std::string& organisationId() const CORVANE_LIFETIMEBOUND;
  [[nodiscard]] bool enableSSO() const;
  /// The booking of the last `loadBooking`.
  [[nodiscard]] const std::optional<std::string>& connectId() const CORVANE_LIFETIMEBOUND;
  /// Whether a page has ever finished loading in this view.
  [[nodiscard]] bool isLoaded() const;
  /// Why the last load failed, or the last action could not be posted; none once the next load begins.
  [[nodiscard]] const std::optional<WebError>& error() const CORVANE_LIFETIMEBOUND;

  /// `disconnected` until the page reports something else, and again whenever a load begins.
  [[nodiscard]] CallSessionStatus callSessionStatus() const;
  /// The customer's language and region, such as "de-CH", from the start of a call until it is disconnecting.
  [[nodiscard]] const std::optional<std::string>& clientLocale() const CORVANE_LIFETIMEBOUND;

  /// The host app's handler of events; empty when none is set.
  [[nodiscard]] AgentEventHandler eventHandler() const;
  /// Replaces the handler. The view's state already follows an event when its handler is called. The handler may be
  /// replaced, and the view dropped, from inside it.
  void setEventHandler(AgentEventHandler handler);

  /// The web servers that the page may go to by itself, besides its own, each as "https://host" or "https://host:port".
  /// None, which is the default, for all of them. A page that went elsewhere would get the agent's token, the camera
  /// and the microphone, so name those that your sign-in needs.
  void setAllowedOrigins(std::optional<std::vector<std::string>> origins);
  /// Called on the run loop's next turn for what the page may not open in the view. Without a handler nothing happens.
  void setExternalLinkHandler(ExternalLinkHandler handler);

  /// Whether the page is capturing now. An app that has to show it does so with this.
  [[nodiscard]] CaptureState captureState(AVMediaType mediaType) const;
  /// Called after each change of what the page captures.
  void setCaptureHandler(std::function<void()> handler);
  /// Mutes or unmutes what the page has open, without asking it; nothing where it has nothing open.
  void setCaptureMuted(AVMediaType mediaType, bool isMuted);

  void setPageIncidentHandler(PageIncidentHandler handler);
  /// Whether a booking whose page has lost its process is loaded again by itself, at most once a minute. Off at first.
  void setReloadsLostPage(bool reloads);

  /// Hands over the token that the event `RefreshSsoToken` asked for, with the identifier that came with it. Sent in
  /// every state of the call.
  void refreshSsoToken(std::string ssoToken, std::string responseId);
  /// Signs the agent out; only while a call is running, and nothing otherwise.
  void signOut();
  /// Grows a minimized view back to its full size, tells the page, and raises `DidMaximize` when the page knows. Does
  /// nothing for a view that is not minimized, nor from inside `WillMaximize`.
  void maximizeView();

  /// True while the view is shrunk to a floating window, which the page asks for. That is from the start of the
  /// shrinking to the start of the growing back. Frame and transform then keep their values, whatever is written to
  /// them. When its superview gets another size, the view comes to rest inside it again.
  [[nodiscard]] bool isMinimized() const;
  /// Where the view goes when it is minimized. This and the size are read after `WillMinimize` has been told.
  [[nodiscard]] MinimizedOrigin minimizedOrigin() const;
  void setMinimizedOrigin(MinimizedOrigin origin);
  /// How large it is then: at least 30 in each direction, the page's proportions notwithstanding. None for a third of
  /// the view's own size.
  [[nodiscard]] std::optional<CGSize> minimizedSize() const;
  void setMinimizedSize(std::optional<CGSize> size);
  /// The view in which it floats; null for its window, or its superview where it is in no window. Held strongly:
  /// a container that this view is in and the view keep each other alive, until the view leaves it or null is set. Set
  /// while the view is minimized, it counts for the drags from then on.
  [[nodiscard]] const std::shared_ptr<UIView>& minimizedSuperview() const CORVANE_LIFETIMEBOUND;
  void setMinimizedSuperview(std::shared_ptr<UIView> view);
  /// Whether a tap on the minimized view grows it back; the page then takes no touches. Read when the view has shrunk.
  [[nodiscard]] bool tapToMaximize() const;
  void setTapToMaximize(bool isOn);

  void setFrame(CGRect frame) override;
  void setTransform(const CGAffineTransform& transform) override;

  /// Dispatches a message of the page; called by the web view.
  void userContentControllerDidReceive(WKUserContentController& controller, const WKScriptMessage& message) override;
  /// The page has loaded; called by the web view.
  void webViewDidFinish(WKWebView& webView) override;
  /// The page has failed; called by the web view.
  void webViewDidFail(WKWebView& webView, const WebError& error) override;
  void webViewDidFailProvisionalNavigation(WKWebView& webView, const WebError& error) override;
  /// The page wants to capture; called by the web view. It is granted when this app may use both the camera and the
  /// microphone, whichever of them the page wants. Otherwise the engine asks the user.
  void webViewRequestMediaCapturePermission(WKWebView& webView, const WKMediaCaptureRequest& request,
                                            WKPermissionDecisionHandler decisionHandler) override;

 private:
  friend class AgentViewAccess;
  class Parts;

  [[nodiscard]] bool webViewMayNavigate(WKWebView& webView, const WKNavigationAction& action) override;
  void webViewDidChangeResponsiveness(WKWebView& webView, bool isResponding) override;
  void webViewDidChangeCapture(WKWebView& webView) override;
  [[nodiscard]] RequestChannel* requestChannel() const override;
  void superviewDidResize(CGSize from) override;
  void buildWebView();
  void tellPageOfMaximizing();

  std::unique_ptr<Parts> parts_;
};

}  // namespace corvane
