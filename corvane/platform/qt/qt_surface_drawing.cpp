#include "corvane/platform/qt/qt_surface_drawing.h"

#include <QPainterPath>
#include <algorithm>
#include <utility>

#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_web_engine.h"

namespace corvane::qt {

namespace {

QRectF toQRect(const CGRect& rect) { return {rect.minX(), rect.minY(), rect.size.width, rect.size.height}; }

QTransform toQTransform(const CGAffineTransform& transform) {
  return {transform.a, transform.b, transform.c, transform.d, transform.tx, transform.ty};
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
  QPainterPath path;
  path.addRoundedRect(toQRect(rect), radius, radius);
  if (radius > 0) {
    painter().setClipPath(path, Qt::IntersectClip);
  } else {
    painter().setClipRect(toQRect(rect), Qt::IntersectClip);
  }
}

void PainterCanvas::endClip() { painter().restore(); }

void PainterCanvas::fill(const CGRect& rect, const UIColor& color) {
  const auto part = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
  painter().fillRect(toQRect(rect),
                     QColor::fromRgbF(part(color.red), part(color.green), part(color.blue), part(color.alpha)));
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
