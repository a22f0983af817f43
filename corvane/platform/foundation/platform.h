/// What a backend brings, and its installation.
#pragma once

#include <memory>
#include <source_location>
#include <string>
#include <thread>

#include "corvane/export.h"

namespace corvane {

class CaptureAuthorization;
class RunLoop;
class TextMeasurer;
class UIWindowScene;
class WebEngineFactory;
struct MainThreadState;

/// The parts of a backend, as one value.
///
/// Ownership: the parts belong to the backend and outlive the installation.
struct Platform {
  RunLoop* runLoop = nullptr;
  WebEngineFactory* engines = nullptr;
  const CaptureAuthorization* capture = nullptr;
  /// Null for a backend that shows nothing: sizes of texts are estimated then.
  const TextMeasurer* text = nullptr;
  /// The scene that the windows of the backend join; null for a backend that shows none.
  std::shared_ptr<UIWindowScene> scene{};
  /// The main thread: the one that installs.
  std::thread::id thread = std::this_thread::get_id();
};

/// Makes a platform the one that everything runs on, from its construction to its end.
///
/// Its end first ends the run loop, so that what the tasks hold ends while everything is still installed.
///
/// Ownership: owned by the backend, of which it is the last member. There is one at a time.
/// Threads:   the thread that makes it becomes the main thread.
/// Failure:   none; ask `refusal` beforehand.
class CORVANE_EXPORT PlatformInstallation final {
 public:
  /// Why nothing can be installed now, for developers; empty where it can.
  [[nodiscard]] static std::string refusal();

  explicit PlatformInstallation(Platform platform);
  PlatformInstallation(const PlatformInstallation&) = delete;
  PlatformInstallation& operator=(const PlatformInstallation&) = delete;
  ~PlatformInstallation();

  /// The installed platform. Without one, the program ends with a sentence that says what is missing.
  [[nodiscard]] static const Platform& platform();
  /// The same, or null without one: for what may outlive a backend.
  [[nodiscard]] static const Platform* findPlatform();

 private:
  Platform platform_;
  std::unique_ptr<MainThreadState> state_;
};

namespace platform_detail {

CORVANE_EXPORT void requireMainThread(const std::source_location& door);

}  // namespace platform_detail

/// Ends a debug build that calls a door of the framework on another thread than the main one. The message names the
/// door, which is the caller, and says what to call instead. While nothing is installed there is no main thread.
inline void assertMainThread(
    [[maybe_unused]] const std::source_location& door = std::source_location::current()) noexcept {
#ifndef NDEBUG
  platform_detail::requireMainThread(door);
#endif
}

}  // namespace corvane
