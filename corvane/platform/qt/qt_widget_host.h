/// A surface among the widgets of a window.
#pragma once

#include <QPointer>
#include <optional>

#include "corvane/platform/qt/qt_surface_host.h"
#include "corvane/platform/qt/qt_surface_widget.h"

namespace corvane::qt {

/// Knows the surface's widget and, around it, the widgets of the host app. The widget may end first.
class WidgetHost final : public SurfaceHost {
 public:
  explicit WidgetHost(SurfaceWidget& widget) : widget_(&widget) {}

  [[nodiscard]] QWindow* nativeWindow() const override;
  [[nodiscard]] QPointF fromWindow(QPointF point) const override;
  [[nodiscard]] QSize size() const override;
  [[nodiscard]] bool isVisible() const override;
  void queueFrame() override;

  [[nodiscard]] bool hasFocus() const override;
  void takeFocus(Qt::FocusReason reason) override;
  [[nodiscard]] std::optional<QRectF> otherFocus() const override;
  void dropFocus() override;
  bool moveFocus(bool isForward, const FocusFilter& mayHave) override;

 private:
  [[nodiscard]] QWidget* focused() const;
  [[nodiscard]] QRectF boxOf(const QWidget& other) const;

  QPointer<SurfaceWidget> widget_;
};

}  // namespace corvane::qt
