/// A platform view whose subviews are what view values show.
#pragma once

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Puts the platform views of mounted view values into one view, in the order of the values.
///
/// A view that was put here is left alone from then on: where it goes, how large it is there, and whether it comes
/// back. Only a view that is still here at the end is taken away.
///
/// Ownership: holds the view; those inside are held by the values' nodes.
/// Threads:   main thread only.
class CORVANE_EXPORT ViewContainer {
 public:
  explicit ViewContainer(std::shared_ptr<UIView> view) : view_(std::move(view)) {}

  [[nodiscard]] const std::shared_ptr<UIView>& view() const { return view_; }

  /// The values are gone through once more, from the first on.
  void begin() { last_ = nullptr; }
  /// Adds a view behind which those of later values stand, and makes it fill this one.
  void add(const std::shared_ptr<UIView>& view);
  /// Goes past a view that was added before.
  void keep(const UIView& view);
  /// Takes a view away, unless another value shows it, too, or it has moved elsewhere.
  void remove(const std::shared_ptr<UIView>& view);

 private:
  [[nodiscard]] std::size_t placeAfterLast(const UIView& added) const;

  std::shared_ptr<UIView> view_;
  /// One entry for each value, so that a view which a new value takes over is there twice for a while.
  std::vector<const UIView*> added_;
  /// The view of the value that was gone past last; null before the first one. Compared, and never looked into.
  const UIView* last_ = nullptr;
};

}  // namespace corvane
