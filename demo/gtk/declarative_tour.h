/// A tour of the declarative host app: the call floats over the other screen, and comes back.
#pragma once

#include <gtk/gtk.h>

#include <chrono>
#include <filesystem>
#include <memory>
#include <utility>

#include "corvane/bridge/agent_event.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/gtk/gtk_surface.h"

namespace corvane::demo {

/// Follows the call that the page runs by itself, does in its course what a user would do, saves pictures, and ends the
/// loop.
///
/// Ownership: owned by its window. Threads: main thread only.
/// Failure:   a tour that hangs is ended after a minute and is then not complete.
class DeclarativeTour : public std::enable_shared_from_this<DeclarativeTour> {
 public:
  DeclarativeTour(std::shared_ptr<gtk::Surface> surface, std::filesystem::path screenshotFolder, GMainLoop* loop)
      : surface_(std::move(surface)), screenshotFolder_(std::move(screenshotFolder)), loop_(loop) {}

  void begin();
  void follow(const AgentEvent& event);
  /// Whether the call has come back to its screen as it was, without having been loaded again.
  [[nodiscard]] bool isComplete() const { return isComplete_; }

 private:
  void after(std::chrono::milliseconds delay, void (*step)(DeclarativeTour& self));
  void tap(CGPoint place);
  void savePicture(const char* name);
  [[nodiscard]] bool isBack() const;

  std::shared_ptr<gtk::Surface> surface_;
  std::filesystem::path screenshotFolder_;
  GMainLoop* loop_;
  int loads_ = 0;
  bool hasBegunToFloat_ = false;
  bool isComplete_ = false;
};

}  // namespace corvane::demo
