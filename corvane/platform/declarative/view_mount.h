/// The place where view values become visible.
#pragma once

#include <memory>
#include <optional>

#include "corvane/export.h"
#include "corvane/platform/declarative/any_view.h"
#include "corvane/platform/declarative/body_observation.h"
#include "corvane/platform/declarative/view_container.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Mounts a view value into a platform view and keeps what is shown in step with it. Bodies that have read a published
/// value are evaluated again on the run loop after it has changed, once for any number of changes. Only what has
/// changed its type or its identity is mounted anew; everything else keeps its platform views.
///
/// Ownership: made by `create` and held by the host app. It holds the platform view that it has made inside the
///            container and everything that it shows. Its end takes all that away; disappear actions that its end
///            calls must not use it, so where they do, call `remove` first.
/// Threads:   main thread only.
/// Failure:   none.
class CORVANE_EXPORT ViewMount final : public std::enable_shared_from_this<ViewMount>, private ViewUpdater {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  /// Makes a mount that fills a view, in front of the view's other subviews. Where it shows nothing, touches pass
  /// through.
  [[nodiscard]] static std::shared_ptr<ViewMount> create(UIView& container);
  ViewMount(ConstructionKey key, UIView& container);
  ViewMount(const ViewMount&) = delete;
  ViewMount& operator=(const ViewMount&) = delete;
  ~ViewMount();

  /// Shows a view in place of the present one, or updates the present one where it is of the same type. Done when this
  /// returns, but for calls from inside an update of this mount: from a body or from an appear or disappear action.
  /// What they show is shown when the update is done.
  void show(AnyView view);
  /// Shows nothing any more.
  void remove();

  /// What everything that is shown is inside of.
  [[nodiscard]] const std::shared_ptr<UIView>& view() const { return container_.view(); }

 private:
  struct Root {
    AnyView view;
    [[nodiscard]] AnyView body() const { return view; }
  };

  void requestUpdate() override;
  void update();
  void runPass();

  ViewContainer container_;
  std::optional<NodeOf<Root>> root_;
  std::optional<AnyView> nextView_;
  bool isOutdated_ = false;
  bool isUpdateRequested_ = false;
  bool isUpdating_ = false;
};

}  // namespace corvane
