/// A backend without a screen, for tests of the framework and of host apps.
#pragma once

#include <expected>
#include <functional>
#include <memory>
#include <string>

#include "corvane/export.h"
#include "corvane/platform/capture/capture_authorization.h"
#include "corvane/platform/headless/headless_web_engine.h"
#include "corvane/platform/headless/virtual_run_loop.h"

namespace corvane::headless {

/// Lets the framework run with virtual time and simulated pages.
///
/// Ownership: whoever installed it; it must outlive every view.
/// Threads:   all on the thread that installed it.
/// Failure:   `install` gives a text while another backend is installed; a test takes `.value()`. Nothing is thrown.
class CORVANE_EXPORT Backend final {
 public:
  /// Says whether it takes an engine that has just been made.
  using EngineTaker = std::function<bool(const std::shared_ptr<HeadlessWebEngine>& engine)>;

  [[nodiscard]] static std::expected<std::unique_ptr<Backend>, std::string> install();
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;
  ~Backend();

  [[nodiscard]] VirtualRunLoop& runLoop();
  /// What `queryEngineCapabilities` finds; a page that can hold calls, until it is set.
  void setCapabilities(const EngineCapabilities& capabilities);
  /// What this app may do; `notDetermined` until it is set.
  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status);
  /// Has each new engine shown to the taker, before anything is loaded in it, until the taker takes one. Of several
  /// takers the one that has waited longest is asked first, and an engine that was taken is shown to no other.
  void addEngineTaker(EngineTaker taker);

 private:
  class Services;
  Backend();

  std::unique_ptr<Services> services_;
};

}  // namespace corvane::headless
