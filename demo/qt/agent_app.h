/// What the tour needs of the agent's app, whether it is made of widgets or of QML.
#pragma once

#include <filesystem>
#include <memory>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/qt/qt_frame_meter.h"
#include "corvane/platform/views/ui_window.h"

class QWindow;

namespace corvane::demo {

/// Ownership: owned by its maker. Threads: main thread only. Failure: none.
class AgentApp {
 public:
  virtual ~AgentApp() = default;

  /// Shows the window, and the call in it.
  virtual void open() = 0;
  /// Null while there is no call.
  [[nodiscard]] virtual std::shared_ptr<VelnorAgentView> agentView() const = 0;
  [[nodiscard]] virtual std::shared_ptr<UIWindow> views() const = 0;
  /// Null until it is open.
  [[nodiscard]] virtual QWindow* nativeWindow() const = 0;
  virtual void addToCall(const Product& product) = 0;
  virtual void showProducts() = 0;
  /// Counts the frames of the window from now on.
  [[nodiscard]] virtual std::unique_ptr<qt::FrameMeter> measure() = 0;
  [[nodiscard]] virtual bool savePicture(const std::filesystem::path& file) = 0;
};

}  // namespace corvane::demo
