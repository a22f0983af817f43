#include "corvane/platform/gtk/gtk_navigation.h"

#include <string_view>

#include "corvane/platform/gtk/glib_source.h"

namespace corvane::gtk {

namespace {

std::string urlOf(WebKitNavigationAction* action) {
  const char* url = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
  return url != nullptr ? url : "";
}

bool isUserGesture(WebKitNavigationAction* action) { return webkit_navigation_action_is_user_gesture(action) != FALSE; }

bool hasUrl(WebKitBackForwardListItem* item, std::string_view url) {
  const char* own = webkit_back_forward_list_item_get_uri(item);
  return own != nullptr && url == own;
}

}  // namespace

bool PageNavigation::mayBegin(WebKitNavigationAction* action) {
  const std::string url = urlOf(action);
  if (leadsToFormerPage(action, url) || comesOfDropping(action)) return false;
  isUserInitiated_ = isUserGesture(action);
  return isAllowed({url, WKNavigationTarget::subframe, isUserInitiated_});
}

bool PageNavigation::mayOpenWindow(WebKitNavigationAction* action) const {
  const std::string url = urlOf(action);
  const bool isUsable =
      url.empty() || url == "about:blank" || url.starts_with("http://") || url.starts_with("https://");
  if (context_->options.opensPopups && isUsable) return true;
  static_cast<void>(isAllowed({url, WKNavigationTarget::newWindow, isUserGesture(action)}));
  return false;
}

bool PageNavigation::mayShow(WebKitResponsePolicyDecision* answer, const std::string& hostUrl) const {
  if (webkit_response_policy_decision_is_main_frame_main_resource(answer) == FALSE) return true;
  const char* url = webkit_uri_request_get_uri(webkit_response_policy_decision_get_request(answer));
  if (url == nullptr || hostUrl == url) return true;
  return isAllowed({url, WKNavigationTarget::mainFrame, isUserInitiated_});
}

void PageNavigation::somethingWasDropped() { droppedAt_ = monotonicTime(); }

bool PageNavigation::comesOfDropping(WebKitNavigationAction* action) const {
  // The engine says of neither these nor of a script's that they are anything in particular.
  constexpr std::chrono::seconds longest{2};
  const bool isRecent = droppedAt_ != std::chrono::nanoseconds::min() && monotonicTime() - droppedAt_ < longest;
  return isRecent && webkit_navigation_action_get_navigation_type(action) == WEBKIT_NAVIGATION_TYPE_OTHER;
}

void PageNavigation::hostPageCommitted() {
  // The history may not have it yet, so the address must do.
  const char* url = webkit_web_view_get_uri(webView_);
  hostPage_ = url != nullptr ? url : "";
}

bool PageNavigation::leadsToFormerPage(WebKitNavigationAction* action, const std::string& url) const {
  if (webkit_navigation_action_get_navigation_type(action) != WEBKIT_NAVIGATION_TYPE_BACK_FORWARD) return false;
  WebKitBackForwardList* const history = webkit_web_view_get_back_forward_list(webView_);
  // The engine moves on to the entry before it asks, or after: entries count from the newest, not from the current one.
  int place = 0;
  while (webkit_back_forward_list_get_nth_item(history, place + 1) != nullptr) ++place;
  for (; auto* const item = webkit_back_forward_list_get_nth_item(history, place); --place) {
    if (hasUrl(item, url)) return false;
    if (hasUrl(item, hostPage_)) return true;
  }
  return true;
}

bool PageNavigation::isAllowed(const WKNavigationAction& action) const {
  const auto client = client_.lock();
  return client == nullptr || client->engineMayNavigate(action);
}

}  // namespace corvane::gtk
