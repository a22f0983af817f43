#include "corvane/platform/qt/qt_surface_drawing.h"

#include <QPainterPath>
#include <algorithm>
#include <utility>

#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_text.h"
#include "corvane/platform/qt/qt_text_measurer.h"
#include "corvane/platform/qt/qt_web_engine.h"

namespace corvane::qt {

namespace {

QRectF toQRect(const CGRect& rect) { return {rect.minX(), rect.minY(), rect.size.width, rect.size.height}; }

QTransform toQTransform(const CGAffineTransform& transform) {
  return {transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty};
}

QColor toQColor(const UIColor& color) {
  const auto part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
  return QColor::fromRgbF(part(color.red), part(color.green), part(color.blue), part(color.alpha));
}

QPainterPath roundedPath(const QRectF& rect, CGFloat radius) {
  QPainterPath path;
  path.addRoundedRect(rect, radius, radius);
  return path;
}

int alignmentOf(TextAlignment alignment) {
  switch (alignment) {
    case TextAlignment::leading:
      return Qt::AlignLeft;
    case TextAlignment::center:
      return Qt::AlignHCenter;
    case TextAlignment::trailing:
      return Qt::AlignRight;
  }
  return Qt::AlignLeft;
}

void smoothen(QPainter& painter) { painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform); }

}  // namespace

PainterCanvas::PainterCanvas(QPainter& painter, QSize size, qreal devicePixelRatio)
    : painter_(painter), size_(size), devicePixelRatio_(devicePixelRatio) {
  smoothen(painter_);
}

void PainterCanvas::beginView(const CGAffineTransform& transform, CGFloat alpha) {
  alphas_.push_back(alpha);
  if (alpha < 1) {
    const QTransform present = painter().transform();
    auto picture = std::make_unique<QImage>(size_ * devicePixelRatio_, QImage::Format_ARGB32_Premultiplied);
    picture->setDevicePixelRatio(devicePixelRatio_);
    picture->fill(Qt::transparent);
    auto aside = std::make_unique<QPainter>(picture.get());
    smoothen(*aside);
    aside->setTransform(present);
    groups_.push_back({std::move(picture), std::move(aside)});
  }
  painter().save();
  painter().setTransform(toQTransform(transform), true);
}

void PainterCanvas::endView() {
  painter().restore();
  const CGFloat alpha = alphas_.back();
  alphas_.pop_back();
  if (alpha >= 1) return;
  Group group = std::move(groups_.back());
  groups_.pop_back();
  group.painter.reset();
  painter().save();
  painter().setOpacity(alpha);
  painter().resetTransform();
  painter().drawImage(QPointF(), *group.picture);
  painter().restore();
}

void PainterCanvas::beginClip(const CGRect& rect, CGFloat radius) {
  painter().save();
  if (radius > 0) {
    painter().setClipPath(roundedPath(toQRect(rect), radius), Qt::IntersectClip);
  } else {
    painter().setClipRect(toQRect(rect), Qt::IntersectClip);
  }
}

void PainterCanvas::endClip() { painter().restore(); }

void PainterCanvas::fill(const CGRect& rect, const UIColor& color) {
  painter().fillRect(toQRect(rect), toQColor(color));
}

void PainterCanvas::drawBorder(const CGRect& rect, CGFloat radius, CGFloat width, const UIColor& color) {
  QPainterPath edge = roundedPath(toQRect(rect), radius);
  const CGFloat inner = std::max(0.0, radius - width);
  const QRectF inside = toQRect(rect).adjusted(width, width, -width, -width);
  if (inside.isValid()) edge = edge.subtracted(roundedPath(inside, inner));
  painter().fillPath(edge, toQColor(color));
}

void PainterCanvas::drawShadow(const CGRect& rect, CGFloat radius, const UIViewDecoration& shadow) {
  // The painter cannot blur, so layers that get larger and add up fade out instead.
  constexpr int layers = 8;
  UIColor color = shadow.shadowColor;
  // At the edge half of the shadow is under the view, as where it is blurred.
  color.alpha /= 2.0 * layers;
  const QColor shade = toQColor(color);
  const QPainterPath own = roundedPath(toQRect(rect), radius);
  const QRectF moved = toQRect(rect).translated(shadow.shadowOffset.x, shadow.shadowOffset.y);
  for (int layer = 1; layer <= layers; ++layer) {
    const CGFloat part = static_cast<CGFloat>(layer) / layers;
    const CGFloat reach = shadow.shadowRadius * part * part;
    painter().fillPath(roundedPath(moved.adjusted(-reach, -reach, reach, reach), radius + reach).subtracted(own),
                       shade);
  }
}

void PainterCanvas::drawText(const UILabel& label, const CGRect& rect) {
  painter().save();
  painter().setClipRect(toQRect(rect), Qt::IntersectClip);
  painter().setFont(toQFont(label.font()));
  painter().setPen(toQColor(label.color()));
  painter().drawText(toQRect(rect), textFlags | alignmentOf(label.alignment()), toQString(label.text()));
  painter().restore();
}

void PainterCanvas::drawImage(const UIImageView& view, const CGRect& rect) {
  std::shared_ptr<void>& kept = view.picture();
  if (kept == nullptr) kept = std::make_shared<QImage>(toQString(view.file()));
  const auto& picture = *static_cast<const QImage*>(kept.get());
  if (picture.isNull()) return;
  const CGSize size{static_cast<CGFloat>(picture.width()), static_cast<CGFloat>(picture.height())};
  painter().drawImage(toQRect(engine::fittedInto(rect, size)), picture);
}

void PainterCanvas::drawPage(const engine::Placement& page, const CGAffineTransform& inView) {
  // Another backend's engine has no picture for us.
  auto* const engine = dynamic_cast<QtWebEngine*>(page.engine);
  if (engine == nullptr) return;
  painter().save();
  painter().setTransform(toQTransform(inView), true);
  engine->view().draw(painter(), devicePixelRatio_);
  painter().restore();
}

}  // namespace corvane::qt
