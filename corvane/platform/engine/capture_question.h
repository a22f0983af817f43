/// A page's wish for the camera or the microphone, from the engine's question to the answer.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "corvane/platform/web/wk_ui_delegate.h"

namespace corvane::engine {

/// Passes an answer on once, with a refusal at the latest when this goes.
class CaptureAnswer {
 public:
  explicit CaptureAnswer(std::move_only_function<void(bool)> pass) : pass_(std::move(pass)) {}
  CaptureAnswer(CaptureAnswer&& other) noexcept : pass_(std::exchange(other.pass_, nullptr)) {}
  CaptureAnswer& operator=(CaptureAnswer&&) = delete;
  ~CaptureAnswer() { (*this)(false); }

  [[nodiscard]] bool isGiven() const { return !pass_; }
  void operator()(bool isAllowed) {
    if (auto once = std::exchange(pass_, nullptr)) once(isAllowed);
  }

 private:
  std::move_only_function<void(bool)> pass_;
};

/// Asks the user.
using CaptureAsking = std::move_only_function<void(const WKMediaCaptureRequest&, std::move_only_function<void(bool)>)>;

/// Takes the decision of a web view's delegate, and asks the user where that is the decision.
[[nodiscard]] WKPermissionDecisionHandler makeDecisionHandler(WKMediaCaptureRequest request, CaptureAnswer answer,
                                                              CaptureAsking ask);

/// What the user is asked, in one sentence. The host name is empty for a page that has none.
[[nodiscard]] std::string captureQuestion(const std::string& hostName, WKMediaCaptureType type);

}  // namespace corvane::engine
