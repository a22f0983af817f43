/// One way through the view values that a mount shows.
#pragma once

#include <functional>
#include <utility>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/declarative/body_observation.h"
#include "corvane/platform/declarative/view_container.h"

namespace corvane {

using ViewAction = std::function<void()>;

/// What the nodes are given while they are mounted, updated and unmounted, and what they leave to be done afterwards.
class CORVANE_EXPORT ViewPass {
 public:
  ViewPass(ViewUpdater& updater, ViewContainer& container);
  ViewPass(const ViewPass&) = delete;
  ViewPass& operator=(const ViewPass&) = delete;

  [[nodiscard]] ViewUpdater& updater() { return updater_; }
  [[nodiscard]] ViewContainer& container() { return *container_; }

  void appear(ViewAction action) {
    if (action) appearActions_.push_back(std::move(action));
  }
  void disappear(ViewAction action) {
    if (action) disappearActions_.push_back(std::move(action));
  }
  /// Calls what was left to be done: first what has gone disappears, and then what has come appears.
  void runActions();

  /// From its construction to its end, platform views go into another container.
  class Inside {
   public:
    Inside(ViewPass& pass, ViewContainer& container) : pass_(pass), outer_(std::exchange(pass.container_, &container)) {
      container.begin();
    }
    Inside(const Inside&) = delete;
    Inside& operator=(const Inside&) = delete;
    ~Inside() { pass_.container_ = outer_; }

   private:
    ViewPass& pass_;
    ViewContainer* outer_;
  };

 private:
  ViewUpdater& updater_;
  ViewContainer* container_;
  std::vector<ViewAction> appearActions_;
  std::vector<ViewAction> disappearActions_;
};

}  // namespace corvane
