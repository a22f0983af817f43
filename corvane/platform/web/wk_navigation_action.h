/// Where a page wants to go.
#pragma once

#include <cstdint>
#include <string>

namespace corvane {

/// What would show the page that is wanted.
enum class WKNavigationTarget : std::uint8_t {
  mainFrame,  ///< in place of the page
  subframe,   ///< a frame inside the page
  newWindow,  ///< a window of its own
};

/// A wish of the page, or of its user, to go somewhere. What the host itself loads is none.
struct WKNavigationAction {
  std::string url;
  WKNavigationTarget target = WKNavigationTarget::mainFrame;
  /// Whether a click, a tap or a key brought it about, and not a script alone.
  bool isUserInitiated = false;
  bool operator==(const WKNavigationAction&) const = default;
};

}  // namespace corvane
