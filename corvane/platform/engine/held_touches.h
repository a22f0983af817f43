/// Who gets a touch: our views, or the page or widget under them.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <vector>

#include "corvane/platform/views/touch_anchor.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::engine {

/// The mouse's first button among the touches; fingers have other numbers.
inline constexpr std::uint64_t mouseTouch = 0;

/// Brings touches to a window, and says for each event whether it goes on to what lies under the views.
///
/// A press is kept from a page while a recognizer may want it, and played again from its beginning if none does. A page
/// that had seen the beginning of what turns out to be a drag would never see an end of it.
///
/// A finger whose page has moved from under it makes no tap. A mouse does: pages are told of its button in any case.
///
/// Ownership: owned by a surface's input, shared for the length of a call; it holds the window.
/// Threads:   main thread only.
class HeldTouches {
 public:
  enum class Verdict : std::uint8_t {
    passes,           ///< the event goes on
    ends,             ///< the event is for nobody else
    playedFromStart,  ///< the touch's first event goes on now, and this one after it
    leaves,           ///< the touch ends for what it was on, as that has moved from under it; it is no tap
  };

  explicit HeldTouches(std::shared_ptr<UIWindow> window) : window_(std::move(window)) {}

  /// Actions of recognizers are called inside, and may end the surface.
  [[nodiscard]] Verdict handle(const UITouchEvent& touch);
  /// A button of the mouse that is no touch.
  [[nodiscard]] Verdict handleOtherButton(unsigned button, bool isPress);
  /// Whether a recognizer has, or may yet have, a touch other than this one.
  [[nodiscard]] bool isBusy(std::optional<std::uint64_t> besides = {}) const;
  /// Whether there is a page that may not be scrolled. Two fingers would zoom it, and it would stay like that.
  [[nodiscard]] bool isOverFixedPage(CGPoint location) const;
  /// What is not on screen gets no more events, the ends of its touches included.
  void cancelAll();

 private:
  enum class Owner : std::uint8_t {
    undecided,   ///< a recognizer may want it
    views,       ///< a recognizer has it
    underneath,  ///< it goes on to the page or widget
    nobody,      ///< it is kept from everybody
  };

  struct Touch {
    Owner owner;
    TouchAnchor anchor;
  };

  [[nodiscard]] bool wouldPinch(const UITouchEvent& touch) const;

  std::shared_ptr<UIWindow> window_;
  /// The fingers that are down, and the mouse's first button.
  std::map<std::uint64_t, Touch> touches_;
  std::set<unsigned> keptButtons_;
};

}  // namespace corvane::engine
