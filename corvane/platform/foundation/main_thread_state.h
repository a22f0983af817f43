/// What the framework notes on its one thread while a platform is installed, for its own code.
#pragma once

#include <cstdint>
#include <memory>

namespace corvane {

class AnimationRun;
class BodyObservation;
class MovingViews;
class UIApplication;

/// Each member belongs to the file that is named for its type; the others leave it alone.
///
/// Ownership: owned by the installation of a platform, with which it begins and ends.
/// Threads:   main thread only.
struct MainThreadState {
  std::shared_ptr<UIApplication> application{};
  /// The run whose block is being run, the innermost one; null outside of blocks.
  std::shared_ptr<AnimationRun> animationRun{};
  std::shared_ptr<MovingViews> movingViews{};
  /// The innermost body that is being evaluated; null outside of evaluations.
  BodyObservation* bodyObservation = nullptr;
  /// Counts the touches of all windows, because a recognizer may move from one to another.
  std::uint64_t lastTouch = 0;
};

namespace platform_detail {

/// That of the installed platform; null for none.
extern MainThreadState* installedState;

}  // namespace platform_detail

/// Null while no platform is installed.
[[nodiscard]] inline MainThreadState* findMainThreadState() { return platform_detail::installedState; }
/// Without an installed platform, the program ends with a sentence that says so.
[[nodiscard]] MainThreadState& mainThreadState();

}  // namespace corvane
