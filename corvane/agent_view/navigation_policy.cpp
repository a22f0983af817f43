#include "corvane/agent_view/navigation_policy.h"

#include <algorithm>
#include <array>

namespace corvane {

namespace {

std::string inSmallLetters(std::string_view text) {
  std::string small(text);
  for (char& letter : small) {
    if (letter >= 'A' && letter <= 'Z') letter = static_cast<char>(letter - 'A' + 'a');
  }
  return small;
}

std::string schemeOf(std::string_view url) {
  const std::size_t colon = url.find(':');
  return colon == std::string_view::npos ? std::string() : inSmallLetters(url.substr(0, colon));
}

/// What pages make themselves, without any server.
bool isMadeByThePage(std::string_view scheme) {
  constexpr std::array<std::string_view, 3> schemes{"about", "blob", "data"};
  return std::ranges::find(schemes, scheme) != schemes.end();
}

/// A page that comes with the app, from a file or by a scheme of its own, has no origin to compare.
bool isOfTheSameApp(std::string_view url, std::string_view pageUrl) {
  const std::string scheme = schemeOf(url);
  return !scheme.empty() && !webOrigin(pageUrl) && scheme == schemeOf(pageUrl);
}

}  // namespace

std::optional<std::string> webOrigin(std::string_view url) {
  const std::string scheme = schemeOf(url);
  if (scheme != "https" && scheme != "http") return std::nullopt;
  url.remove_prefix(scheme.size() + 1);
  if (!url.starts_with("//")) return std::nullopt;
  std::string_view authority = url.substr(2, url.find_first_of("/?#\\", 2) - 2);
  const std::size_t at = authority.rfind('@');
  if (at != std::string_view::npos) authority.remove_prefix(at + 1);
  const std::string_view usualPort = scheme == "https" ? ":443" : ":80";
  if (authority.ends_with(usualPort)) authority.remove_suffix(usualPort.size());
  if (authority.ends_with(':')) authority.remove_suffix(1);
  if (authority.empty()) return std::nullopt;
  return scheme + "://" + inSmallLetters(authority);
}

void NavigationPolicy::setAllowedOrigins(std::optional<std::vector<std::string>> origins) {
  allowedOrigins_ = std::move(origins);
  if (!allowedOrigins_) return;
  // What is no origin allows nothing.
  for (std::string& origin : *allowedOrigins_) origin = webOrigin(origin).value_or(std::string());
}

bool NavigationPolicy::allows(const WKNavigationAction& action, std::string_view pageUrl) const {
  if (action.target != WKNavigationTarget::newWindow && isOfTheSameApp(action.url, pageUrl)) return true;
  const auto origin = webOrigin(action.url);
  if (action.target == WKNavigationTarget::subframe) return origin.has_value() || isMadeByThePage(schemeOf(action.url));
  if (action.target == WKNavigationTarget::newWindow || !origin) return false;
  return !allowedOrigins_ || origin == webOrigin(pageUrl) ||
         std::ranges::find(*allowedOrigins_, *origin) != allowedOrigins_->end();
}

}  // namespace corvane
