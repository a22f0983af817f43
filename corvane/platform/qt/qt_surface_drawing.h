/// Draws a window of views with the toolkit's painter.
#pragma once

#include <QImage>
#include <QPainter>
#include <memory>
#include <vector>

#include "corvane/platform/engine/window_drawing.h"

namespace corvane::qt {

/// Draws on a widget's painter. Faint views are drawn aside first, so that what overlaps in them does not show through.
///
/// Ownership: lives for one drawing. Threads: main thread only. Failure: none.
class PainterCanvas final : public engine::Canvas {
 public:
  /// The size is that of the widget, in its own pixels.
  PainterCanvas(QPainter& painter, QSize size, qreal devicePixelRatio);

  void beginView(const CGAffineTransform& transform, CGFloat alpha) override;
  void endView() override;
  void beginClip(const CGRect& rect, CGFloat radius) override;
  void endClip() override;
  void fill(const CGRect& rect, const UIColor& color) override;
  void drawBorder(const CGRect& rect, CGFloat radius, CGFloat width, const UIColor& color) override;
  void drawShadow(const CGRect& rect, CGFloat radius, const UIViewDecoration& shadow) override;
  void drawText(const UILabel& label, const CGRect& rect) override;
  void drawImage(const UIImageView& view, const CGRect& rect) override;
  void drawPage(const engine::Placement& page, const CGAffineTransform& inView) override;

 private:
  /// A faint view and its subviews, until they are drawn as one.
  struct Group {
    std::unique_ptr<QImage> picture;
    std::unique_ptr<QPainter> painter;
  };

  [[nodiscard]] QPainter& painter() { return groups_.empty() ? painter_ : *groups_.back().painter; }

  QPainter& painter_;
  QSize size_;
  qreal devicePixelRatio_;
  /// Of the views that are begun.
  std::vector<CGFloat> alphas_;
  std::vector<Group> groups_;
};

}  // namespace corvane::qt
