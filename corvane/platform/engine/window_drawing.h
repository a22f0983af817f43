/// How a window of views looks on its surface at one moment: what is drawn, in which order, and where pages stand.
#pragma once

#include <vector>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/ui_color.h"
#include "corvane/platform/views/ui_image_view.h"
#include "corvane/platform/views/ui_label.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::engine {

/// A web view of the tree, and how it stands on the surface.
struct Placement {
  WebEngine* engine;
  /// For which the page is laid out. A view whose size is animated has its last one at once, and the picture is
  /// stretched until it fits. No page could be laid out anew for each picture.
  CGSize size;
  /// From the page's coordinates to the surface's.
  CGAffineTransform transform;
};

/// The web views that can be seen, from the back to the front.
[[nodiscard]] std::vector<Placement> placementsIn(const UIWindow& window, RunLoop::Time time);

/// What a toolkit draws with. Each `begin` is followed by its `end`, nested like brackets.
class Canvas {
 public:
  virtual ~Canvas() = default;
  /// A view whose coordinates are mapped to its superview's, shown with this alpha as a whole.
  virtual void beginView(const CGAffineTransform& transform, CGFloat alpha) = 0;
  virtual void endView() = 0;
  /// Nothing is drawn outside of a rectangle with round corners; the radius fits into it.
  virtual void beginClip(const CGRect& rect, CGFloat radius) = 0;
  virtual void endClip() = 0;
  virtual void fill(const CGRect& rect, const UIColor& color) = 0;
  /// The edge lies inside of the rectangle, and the shadow outside of it only.
  virtual void drawBorder(const CGRect& rect, CGFloat radius, CGFloat width, const UIColor& color) = 0;
  virtual void drawShadow(const CGRect& rect, CGFloat radius, const UIViewDecoration& shadow) = 0;
  /// Draws the text from the top of the rectangle on, cut off at its end.
  virtual void drawText(const UILabel& label, const CGRect& rect) = 0;
  virtual void drawImage(const UIImageView& view, const CGRect& rect) = 0;
  /// `inView` maps the page to the view that is being drawn, `onSurface` to the surface.
  virtual void drawPage(const Placement& page, const CGAffineTransform& inView) = 0;
};

/// Draws all views, each with its background, its page and its subviews, from the back to the front.
void drawWindow(Canvas& canvas, const UIWindow& window, RunLoop::Time time);

/// Whether the mapping leaves something to see, and has only numbers with which toolkits can calculate.
[[nodiscard]] bool isDrawable(const CGAffineTransform& transform);
[[nodiscard]] bool isDrawable(const CGRect& rect);

/// A page's length for a view's. The page keeps what it has where that fits as well. A length that was calculated may
/// lie a hair on the other side of a half.
[[nodiscard]] int pageLength(CGFloat length, int present);
/// The middle of a rectangle that a picture of this size fills without being stretched.
[[nodiscard]] CGRect fittedInto(const CGRect& rect, CGSize picture);

}  // namespace corvane::engine
