/// The agent view as a small floating window: shrinking, dragging, snapping, growing back.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "corvane/bridge/agent_event.h"
#include "corvane/minimized/minimized_geometry.h"
#include "corvane/minimized/minimized_settings.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/ui_pan_gesture_recognizer.h"
#include "corvane/platform/views/ui_tap_gesture_recognizer.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

class VelnorAgentView;

/// What the floating presentation needs of the view that it presents.
class FloatingPresentationDelegate {
 public:
  virtual ~FloatingPresentationDelegate() = default;
  [[nodiscard]] virtual UIView& view() = 0;
  /// The view as what it is, for those who hold it.
  [[nodiscard]] virtual std::shared_ptr<VelnorAgentView> agentView() = 0;
  /// Whether the page takes touches.
  virtual void setPageInteractionEnabled(bool isEnabled) = 0;
  /// The user wants the view back at its full size.
  virtual void maximizeRequested() = 0;
  virtual void emitEvent(const AgentEvent& event) = 0;
};

/// Moves one agent view between its full size and a floating window.
///
/// A guard that does not hold ends an operation without a word: without event and without completion.
///
/// Ownership: owned by its view; animations and recognizers hold it weakly. The container is held while it is set.
/// Threads:   main thread only.
/// Failure:   none.
class FloatingPresentation final : public std::enable_shared_from_this<FloatingPresentation> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<FloatingPresentation> create(std::weak_ptr<FloatingPresentationDelegate> delegate);
  FloatingPresentation(ConstructionKey /*key*/, std::weak_ptr<FloatingPresentationDelegate> delegate)
      : delegate_(std::move(delegate)) {}

  /// Shrinks the view and calls the completion when it can be dragged.
  void minimize(std::function<void()> completion);
  /// The view's superview has another size: a view that floats comes to rest inside again, at its side. A finger that
  /// drags it does that itself, and if the drag is cancelled instead, the view comes to rest then.
  void superviewDidResize(CGSize from);
  /// Grows the view back and calls the completion when it is back where the host app wants it.
  void maximize(std::function<void()> completion);

  /// Between the start of the shrinking and that of the growing. Frame and transform then belong to the presentation.
  [[nodiscard]] bool isMinimized() const { return isMinimized_; }

  /// What the host app wants. Origin and size are read once the view has said that it will shrink, the container before
  /// that and with each movement of a drag. Whether to be tapped is read when the view has shrunk.
  MinimizedSettings settings;

 private:
  /// Where the view was before it floated.
  struct OriginalPlace {
    CGRect frame;
    std::weak_ptr<UIView> superview;
    CGSize superviewSize;

    /// The frame that the view would have by now, had it stayed.
    [[nodiscard]] CGRect frameNow(UIViewAutoresizing mask) const;
  };

  void makeRecognizers();
  /// Tells handlers of a step. False when this is inside such a telling already, which is then no step.
  [[nodiscard]] bool announce(FloatingPresentationDelegate& delegate, const AgentEvent& event);
  [[nodiscard]] std::shared_ptr<UIView> container(const UIView& view) const;
  void didShrink(FloatingPresentationDelegate& delegate, const std::function<void()>& completion);
  void didGrow(FloatingPresentationDelegate& delegate, const std::function<void()>& completion);
  void drag(const UIPanGestureRecognizer& sender);
  [[nodiscard]] bool isDragged(const UIView& view) const;
  /// Brings the view to rest inside its superview, which had another size when the view came to its side.
  void settle(UIView& view, CGSize sidesOf);
  void snap(UIView& view, const SnapTarget& target, CGFloat containerWidth);
  /// A completion that runs a step, and what follows it, if the view still lives by then; the view lives on until both
  /// have returned.
  using Step = void (FloatingPresentation::*)(FloatingPresentationDelegate&, const std::function<void()>&);
  [[nodiscard]] std::move_only_function<void(bool)> afterwards(Step step, std::function<void()> completion);

  std::weak_ptr<FloatingPresentationDelegate> delegate_;
  bool isMinimized_ = false;
  /// While handlers hear of a step that has not begun.
  bool isAnnouncing_ = false;
  OriginalPlace original_;
  CGPoint prevDragLocation_;
  /// Whether the superview has got another size in the drag that goes on.
  bool wasResizedWhileDragged_ = false;
  /// Where the view came to rest last. In a container narrower than the view its place does not tell its side.
  struct Rest {
    HorizontalSide side;
    CGPoint center;
  };
  std::optional<Rest> rest_;
  std::shared_ptr<UIPanGestureRecognizer> panGestureRecognizer_;
  std::shared_ptr<UITapGestureRecognizer> tapGestureRecognizer_;
};

}  // namespace corvane
