/// A surface among the items of a window of Qt Quick.
#pragma once

#include <QPointer>
#include <QtQuick/QQuickItem>
#include <optional>

#include "corvane/platform/qt/qt_surface_host.h"

namespace corvane::qt {

/// Knows the surface's item and, around it, the items of the host app. The item may end first.
class ItemHost final : public SurfaceHost {
 public:
  explicit ItemHost(QQuickItem& item) : item_(&item) {}

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
  /// What has the focus; null for nothing, as the root of all items says when it has it.
  [[nodiscard]] QQuickItem* focused() const;
  [[nodiscard]] QRectF boxOf(const QQuickItem& other) const;

  QPointer<QQuickItem> item_;
};

}  // namespace corvane::qt
