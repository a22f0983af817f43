#include "corvane/platform/engine/window_drawing.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "corvane/platform/web/wk_web_view.h"

namespace corvane::engine {

namespace {

/// What the window's own coordinates are on its surface.
CGAffineTransform transformOfWindow(const UIWindow& window, RunLoop::Time time) {
  const CGPoint origin = window.presentation(time).bounds.origin;
  return CGAffineTransform::makeTranslation(-origin.x, -origin.y);
}

CGFloat stretch(CGFloat shown, CGFloat own) {
  // Sizes that were calculated differ in their last digits; stretched by those, pictures would lose their sharpness.
  constexpr CGFloat unnoticeable = 1e-3;
  return own > 0 && std::abs(shown - own) > unnoticeable ? shown / own : 1;
}

/// Maps the picture of a web view to the view's own coordinates.
CGAffineTransform transformOfPage(const UIView& view, const CGRect& shown) {
  const CGSize own = view.bounds().size;
  return CGAffineTransform::makeScale(stretch(shown.size.width, own.width), stretch(shown.size.height, own.height))
      .concatenated(CGAffineTransform::makeTranslation(shown.origin.x, shown.origin.y));
}

void collectPlacements(const UIView& view, const UIViewPresentation& shown, const CGAffineTransform& transform,
                       RunLoop::Time time, std::vector<Placement>& placements) {
  if (view.isHidden() || !isDrawable(transform)) return;
  if (const auto* webView = dynamic_cast<const WKWebView*>(&view)) {
    const CGAffineTransform onSurface = transformOfPage(view, shown.bounds).concatenated(transform);
    if (isDrawable(onSurface)) placements.push_back({&webView->engine(), view.bounds().size, onSurface});
  }
  for (const auto& subview : view.subviews()) {
    const UIViewPresentation inner = subview->presentation(time);
    collectPlacements(*subview, inner, inner.transformToSuperview().concatenated(transform), time, placements);
  }
}

class Drawing {
 public:
  Drawing(Canvas& canvas, RunLoop::Time time) : canvas_(canvas), time_(time) {}

  /// `outer` maps the superview's coordinates to the surface's, `inner` the view's own to its superview's.
  void draw(const UIView& view, const UIViewPresentation& shown, const CGAffineTransform& inner,
            const CGAffineTransform& outer) {
    const CGAffineTransform transform = inner.concatenated(outer);
    if (view.isHidden() || !(shown.alpha > 0) || !isDrawable(inner) || !isDrawable(transform)) return;
    canvas_.beginView(inner, std::min(shown.alpha, 1.0));
    const UIViewDecoration decoration = view.decoration();
    const bool hasEdge = isDrawable(shown.bounds);
    if (hasEdge && decoration.shadowRadius > 0) canvas_.drawShadow(shown.bounds, radiusOf(shown), decoration);
    if (view.backgroundColor() && beginClip(shown)) {
      canvas_.fill(shown.bounds, *view.backgroundColor());
      canvas_.endClip();
    }
    const bool isClipped = view.clipsToBounds();
    if (!isClipped || beginClip(shown)) {
      drawPage(view, shown, transform);
      drawContent(view, shown.bounds);
      for (const auto& subview : view.subviews()) {
        const UIViewPresentation shownInside = subview->presentation(time_);
        draw(*subview, shownInside, shownInside.transformToSuperview(), transform);
      }
      if (isClipped) canvas_.endClip();
    }
    if (hasEdge && decoration.borderWidth > 0) {
      canvas_.drawBorder(shown.bounds, radiusOf(shown), decoration.borderWidth, decoration.borderColor);
    }
    canvas_.endView();
  }

 private:
  /// False, and no clip, where it would leave nothing.
  [[nodiscard]] bool beginClip(const UIViewPresentation& shown) const {
    if (!isDrawable(shown.bounds)) return false;
    canvas_.beginClip(shown.bounds, radiusOf(shown));
    return true;
  }

  [[nodiscard]] static CGFloat radiusOf(const UIViewPresentation& shown) {
    const CGFloat radius = std::min({shown.cornerRadius, shown.bounds.size.width / 2, shown.bounds.size.height / 2});
    return radius > 0 ? radius : 0;
  }

  void drawContent(const UIView& view, const CGRect& bounds) const {
    if (!isDrawable(bounds)) return;
    if (const auto* label = dynamic_cast<const UILabel*>(&view)) canvas_.drawText(*label, bounds);
    if (const auto* image = dynamic_cast<const UIImageView*>(&view)) canvas_.drawImage(*image, bounds);
  }

  void drawPage(const UIView& view, const UIViewPresentation& shown, const CGAffineTransform& transform) const {
    const auto* webView = dynamic_cast<const WKWebView*>(&view);
    if (webView == nullptr) return;
    const CGAffineTransform inView = transformOfPage(view, shown.bounds);
    const CGAffineTransform onSurface = inView.concatenated(transform);
    if (isDrawable(onSurface)) canvas_.drawPage({&webView->engine(), view.bounds().size, onSurface}, inView);
  }

  Canvas& canvas_;
  RunLoop::Time time_;
};

/// Toolkits count in 32-bit floats, where whole pixels get lost from about here on; so do numbers that are none.
bool isReachable(CGFloat number) {
  constexpr CGFloat farthest = 1 << 24;
  return std::abs(number) <= farthest;
}

}  // namespace

std::vector<Placement> placementsIn(const UIWindow& window, RunLoop::Time time) {
  std::vector<Placement> placements;
  collectPlacements(window, window.presentation(time), transformOfWindow(window, time), time, placements);
  return placements;
}

void drawWindow(Canvas& canvas, const UIWindow& window, RunLoop::Time time) {
  Drawing(canvas, time).draw(window, window.presentation(time), transformOfWindow(window, time), {});
}

bool isDrawable(const CGAffineTransform& transform) {
  const bool isInReach = std::ranges::all_of(
      std::array{transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty}, isReachable);
  // Of a view of ten thousand pixels this leaves one.
  constexpr CGFloat smallest = 1e-4 * 1e-4;
  return isInReach && std::abs(transform.a * transform.d - transform.b * transform.c) >= smallest;
}

bool isDrawable(const CGRect& rect) {
  return rect.size.width > 0 && rect.size.height > 0 &&
         std::ranges::all_of(std::array{rect.origin.x, rect.origin.y, rect.size.width, rect.size.height}, isReachable);
}

CGRect fittedInto(const CGRect& rect, CGSize picture) {
  if (!(picture.width > 0) || !(picture.height > 0)) return {};
  const CGFloat scale = std::min(rect.size.width / picture.width, rect.size.height / picture.height);
  const CGSize size{picture.width * scale, picture.height * scale};
  return {{rect.midX() - size.width / 2, rect.midY() - size.height / 2}, size};
}

int pageLength(CGFloat length, int present) {
  constexpr CGFloat hair = 1e-6;
  if (std::abs(length - present) <= 0.5 + hair && present > 0) return present;
  return static_cast<int>(std::clamp(std::round(length), 1.0, 32767.0));
}

}  // namespace corvane::engine
