/// Where the page of a call may go.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/platform/web/wk_navigation_action.h"

namespace corvane {

/// The scheme, host and port of a web address, such as "https://shop.example:8443". The scheme and the host are in
/// small letters, and a port that goes without saying is left out. None for what is no address of a web server.
[[nodiscard]] std::optional<std::string> webOrigin(std::string_view url);

/// Decides what a page may load by itself.
class NavigationPolicy {
 public:
  /// None for every web server.
  void setAllowedOrigins(std::optional<std::vector<std::string>> origins);
  /// Whether the view may go there; what it may not is for the host. `pageUrl` is the address that the host loaded.
  [[nodiscard]] bool allows(const WKNavigationAction& action, std::string_view pageUrl) const;

 private:
  std::optional<std::vector<std::string>> allowedOrigins_;
};

}  // namespace corvane
