/// Touches, and changes of the views under them, by the bytes of any source; with what must hold all the while.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "corvane/platform/headless/headless_backend.h"
#include "corvane/platform/views/ui_pan_gesture_recognizer.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane {

/// Builds a tree of views with recognizers and lets a source of bytes decide what happens to it, also inside actions.
class TouchStorm {
 public:
  using Bytes = std::function<std::uint8_t()>;

  explicit TouchStorm(Bytes bytes) : bytes_(std::move(bytes)) {
    for (auto& view : views_) {
      const auto container = parent();
      view = UIView::create({{at(), at()}, {at() * 2, at() * 2}});
      container->addSubview(view);
      view->setTransform(CGAffineTransform::makeScale(pick(8) * 0.25, 1));
      view->setAutoresizingMask(static_cast<UIViewAutoresizing>(pick(64)));
      view->setClipsToBounds(pick(2) == 0);
      view->setCornerRadius(at());
    }
    for (std::size_t i = 0; i < recognizers_.size(); ++i) {
      const auto note = [this, i](UIGestureRecognizer& recognizer) { noteAction(i, recognizer); };
      if (i % 2 == 0) {
        recognizers_[i] = UIPanGestureRecognizer::create(note);
      } else {
        recognizers_[i] = UITapGestureRecognizer::create(note);
      }
      anyView()->addGestureRecognizer(recognizers_[i]);
    }
  }
  TouchStorm(const TouchStorm&) = delete;
  TouchStorm& operator=(const TouchStorm&) = delete;
  ~TouchStorm() = default;

  void step() {
    const int choice = pick(18);
    if (choice < 12) {
      sendTouch();
    } else {
      changeSomething(choice);
    }
  }

  /// Lifts all fingers; afterwards everything must be at rest.
  void finish() {
    isQuiet_ = true;
    for (std::uint64_t finger = 0; finger < fingerCount; ++finger) send(finger, TouchPhase::cancelled);
    for (std::size_t i = 0; i < recognizers_.size(); ++i) {
      require(recognizers_[i]->state() == State::possible, "a recognizer is stuck");
      require(last_[i] == State::possible, "a gesture has no end");
    }
  }

  /// The first thing that was wrong; empty for nothing.
  [[nodiscard]] const std::string& complaint() const { return complaint_; }
  [[nodiscard]] int actionCount() const { return actionCount_; }

 private:
  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
  using State = UIGestureRecognizerState;
  static constexpr std::uint64_t fingerCount = 3;

  int pick(int count) { return bytes_() % count; }
  CGFloat at() { return bytes_() / 2.0; }
  std::shared_ptr<UIView> anyView() { return views_[static_cast<std::size_t>(pick(static_cast<int>(views_.size())))]; }
  std::shared_ptr<UIView> parent() {
    auto view = anyView();
    return view != nullptr && pick(3) != 0 ? view : window_;
  }
  void require(bool condition, const char* complaint) {
    if (!condition && complaint_.empty()) complaint_ = complaint;
  }

  void sendTouch() {
    using enum TouchPhase;
    static constexpr std::array phases{began, moved, moved, moved, moved, moved, moved, moved, ended, ended, cancelled};
    const auto finger = static_cast<std::uint64_t>(pick(fingerCount));
    send(finger, phases[static_cast<std::size_t>(pick(phases.size()))]);
  }

  void send(std::uint64_t finger, TouchPhase phase) {
    const int sequence = phase == TouchPhase::began ? ++sequences_ : sequence_[finger];
    sequence_[finger] = sequence;
    const TouchOutcome outcome = window_->sendTouch({finger, phase, {at(), at()}});
    std::optional<TouchOutcome>& last = outcome_[finger];
    // Events that are sent inside of another one's actions are told of before it, so the order is lost.
    if (sequence_[finger] != sequence || isNested_ || (phase != TouchPhase::began && !last)) return last.reset();
    if (phase == TouchPhase::began) {
      require(outcome != TouchOutcome::released, "nothing was held yet");
    } else {
      require(last != TouchOutcome::claimed || outcome == TouchOutcome::claimed, "a claimed touch was released");
      require((last != TouchOutcome::ignored && last != TouchOutcome::released) || outcome == TouchOutcome::ignored,
              "a touch was taken back");
      require(phase == TouchPhase::moved || outcome != TouchOutcome::held, "a touch is held for ever");
    }
    last = outcome;
    if (phase == TouchPhase::ended || phase == TouchPhase::cancelled) last.reset();
  }

  void changeSomething(int choice) {
    const auto view = anyView();
    const auto index = static_cast<std::size_t>(pick(static_cast<int>(recognizers_.size())));
    const auto recognizer = recognizers_[index];
    switch (choice) {
      case 12:
        view->addGestureRecognizer(recognizer);
        break;
      case 13:
        recognizer->setEnabled(pick(4) != 0);
        break;
      case 14:
        // Seldom, or soon nothing would be left.
        if (pick(8) == 0) return view->removeFromSuperview();
        [[fallthrough]];
      case 15: {
        const auto container = parent();
        if (!container->isDescendantOf(*view)) container->addSubview(view);
        break;
      }
      default: {
        const auto container = parent();
        container->setFrame({container->frame().origin, {at(), at()}});
        for (const auto& each : views_) {
          const CGSize size = each->bounds().size;
          require(size.width >= 0 && size.height >= 0, "a view has less than no size");
        }
      }
    }
  }

  void noteAction(std::size_t index, const UIGestureRecognizer& recognizer) {
    ++actionCount_;
    State& last = last_[index];
    const bool isOngoing = last == State::began || last == State::changed;
    const bool isPan = index % 2 == 0;
    switch (recognizer.state()) {
      case State::began:
        require(isPan && !isOngoing, "began in the middle");
        break;
      case State::changed:
        require(isPan && isOngoing, "changed before it began");
        break;
      case State::ended:
        require(isPan == isOngoing, "ended before it began");
        break;
      case State::cancelled:
        require(isPan && isOngoing, "cancelled before it began");
        break;
      default:
        require(false, "called for nothing");
    }
    const bool isOver = recognizer.state() == State::ended || recognizer.state() == State::cancelled;
    last = isOver ? State::possible : recognizer.state();
    if (isQuiet_ || depth_ > 3 || pick(4) != 0) return;
    ++depth_;
    isNested_ = true;
    step();
    if (--depth_ == 0) isNested_ = false;
  }

  Bytes bytes_;
  std::string complaint_;
  int actionCount_ = 0;
  int depth_ = 0;
  bool isNested_ = false;
  bool isQuiet_ = false;
  int sequences_ = 0;
  std::array<int, fingerCount> sequence_{};
  std::array<std::optional<TouchOutcome>, fingerCount> outcome_{};
  std::array<State, 6> last_{};
  std::array<std::shared_ptr<UIGestureRecognizer>, 6> recognizers_;
  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {128, 128}});
  std::array<std::shared_ptr<UIView>, 6> views_;
};

}  // namespace corvane
