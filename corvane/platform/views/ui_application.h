/// The running host app, as far as the framework sees it.
#pragma once

#include <memory>
#include <vector>

#include "corvane/export.h"

namespace corvane {

class UIScene;

/// Knows the scenes that are connected. Backends connect what they show, host apps may connect scenes of their own.
///
/// Ownership: one instance, which ends with the backend; it owns the scenes that are connected.
/// Threads:   main thread only.
/// Failure:   without a backend, the program ends with a sentence that says so.
class CORVANE_EXPORT UIApplication final {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static UIApplication& shared();
  explicit UIApplication(ConstructionKey /*key*/) {}
  UIApplication(const UIApplication&) = delete;
  UIApplication& operator=(const UIApplication&) = delete;

  /// Each once, in the order in which they were connected.
  [[nodiscard]] std::vector<std::shared_ptr<UIScene>> connectedScenes() const { return scenes_; }
  /// Does nothing for a scene that is connected already.
  void connect(std::shared_ptr<UIScene> scene);
  void disconnect(const std::shared_ptr<UIScene>& scene);

 private:
  std::vector<std::shared_ptr<UIScene>> scenes_;
};

}  // namespace corvane
