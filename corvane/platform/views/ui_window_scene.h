/// A scene that is made of windows.
#pragma once

#include <memory>
#include <vector>

#include "corvane/platform/views/ui_scene.h"

namespace corvane {

class UIWindow;

/// Lists the windows that belong together; a window joins by `UIWindow::setWindowScene`.
///
/// Ownership: like every scene; it knows its windows weakly.
/// Threads:   main thread only.
class CORVANE_EXPORT UIWindowScene final : public UIScene {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<UIWindowScene> create();
  explicit UIWindowScene(ConstructionKey key);
  ~UIWindowScene() override;

  /// In the order in which they joined.
  [[nodiscard]] std::vector<std::shared_ptr<UIWindow>> windows() const;

 private:
  friend class UIWindow;
  [[nodiscard]] std::shared_ptr<UIWindow> keyWindow() const;
  void append(const std::shared_ptr<UIWindow>& window);
  void remove(const UIWindow& window);

  std::vector<std::weak_ptr<UIWindow>> windows_;
};

}  // namespace corvane
