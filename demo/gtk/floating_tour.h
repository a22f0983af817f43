/// The part of a tour in which the call floats: a user's mouse makes it small, drags it, works beside it and brings it
/// back.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/gtk/gtk_frame_meter.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "demo/gtk/pointer_input.h"

namespace corvane::demo {

class HostTourStage;

/// What the mouse uses.
struct FloatingTourProps {
  std::shared_ptr<gtk::Surface> surface;
  std::shared_ptr<VelnorAgentView> view;
  /// Buttons of the products screen: one that asks the page, and one that brings the call back.
  GtkWidget* askButton = nullptr;
  GtkWidget* restoreButton = nullptr;
};

/// Saves a picture at every stop, and prints how smooth the animations were and how often the page was laid out anew.
///
/// Ownership: owned by the tour that it is a part of. Threads: main thread only.
/// Failure:   without a mouse to move it is skipped with a word; an animation that never begins leaves it incomplete.
class FloatingTour : public std::enable_shared_from_this<FloatingTour> {
 public:
  FloatingTour(std::weak_ptr<HostTourStage> stage, FloatingTourProps props);

  /// Runs once; `next` is called when it is over, however it went.
  void run(std::function<void()> next);
  [[nodiscard]] bool isComplete() const { return isComplete_; }
  /// How many requests it makes of the page.
  [[nodiscard]] std::size_t requests() const { return pointer_ != nullptr ? 1 : 0; }

 private:
  struct Step;
  using Time = std::chrono::nanoseconds;

  [[nodiscard]] static const std::vector<Step>& steps();
  void runNext();
  /// The step is done.
  void goOn();

  void watchPage();
  void minimize();
  void drag();
  void dragOn(int movements);
  void letGo();
  void workBeside();
  void maximize();
  void askPage();

  /// Goes on when the animation that is about to begin is over.
  void measure(const char* animation);
  void measureStart(const char* animation, Time latest);
  void measureEnd(const char* animation);
  void evaluate(const char* script, std::function<void(FloatingTour&, double)> use);
  void click(GtkWidget* button);
  void savePicture(const char* name);

  std::weak_ptr<HostTourStage> stage_;
  FloatingTourProps props_;
  std::function<void()> next_;
  std::size_t nextStep_ = 0;
  std::unique_ptr<PointerInput> pointer_;
  std::optional<gtk::FrameMeter> meter_;
  bool isComplete_ = false;
};

}  // namespace corvane::demo
