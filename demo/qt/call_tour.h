/// A call from beginning to end without anybody at the keys: both sides, the floating window, the shop.
#pragma once

#include <QTimer>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/platform/qt/qt_frame_meter.h"
#include "demo/qt/agent_app.h"
#include "demo/qt/customer_window.h"

namespace corvane::demo {

/// Goes from step to step as each becomes true, saves pictures of both sides, and prints how smooth the animations
/// were.
///
/// Ownership: owned by its maker, as are the windows, which outlive it. Threads: main thread only.
/// Failure:   a step that takes too long ends the tour with a word.
class CallTour {
 public:
  CallTour(AgentApp& agent, CustomerWindow& customer, const Product& product, std::filesystem::path pictures);

  /// Calls the function once, with whether the tour has come to its end.
  void begin(std::function<void(bool)> ended);

 private:
  struct Step {
    const char* name;
    std::function<void()> act;
    std::function<bool()> isDone;
  };

  void addSteps(const Product& product);
  void addFloatingSteps();
  void next();
  void look();
  [[nodiscard]] std::function<bool()> hasCall(CallSessionStatus status) const;
  /// Whether a script of the customer's page gives true; asked again until it does.
  [[nodiscard]] std::function<bool()> customerSees(std::string script);
  void runForCustomer(std::string_view script);
  /// Whether the present step is old enough for pictures.
  [[nodiscard]] bool hasPaused() const;
  void clickForAgent(const std::string& action);
  /// Takes the floating call by the mouse to the other half of the window.
  void drag();
  void measure();
  void printFrames(const char* name);
  void savePictures(const std::string& name);

  AgentApp& agent_;
  CustomerWindow& customer_;
  std::filesystem::path pictures_;
  std::vector<Step> steps_;
  std::size_t current_ = 0;
  std::chrono::steady_clock::time_point begun_;
  std::function<void(bool)> ended_;
  std::unique_ptr<qt::FrameMeter> frames_;
  std::shared_ptr<bool> answer_ = std::make_shared<bool>(false);
  QTimer timer_;
};

}  // namespace corvane::demo
