/// The item that shows a surface in a window of Qt Quick.
#pragma once

#include <QImage>
#include <QtQuick/QQuickItem>
#include <memory>

#include "corvane/platform/qt/qt_surface_core.h"

class QQuickWindow;

namespace corvane::qt {

/// Lies over all other items of its window and is as large as it.
///
/// The picture is made on the main thread, while the scene is polished: pages and views belong to it, and the scene may
/// be drawn on another one.
///
/// Ownership: owned by the window's root item.
/// Threads:   main thread only, but for the node of the scene.
class CallLayer final : public QQuickItem {
 public:
  /// The one of a window, which is made if there is none.
  static CallLayer& of(QQuickWindow& window);
  explicit CallLayer(QQuickWindow& window);
  CallLayer(const CallLayer&) = delete;
  CallLayer& operator=(const CallLayer&) = delete;
  ~CallLayer() override;

  [[nodiscard]] SurfaceCore& core() const { return *core_; }

  [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 protected:
  bool event(QEvent* event) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;
  void updatePolish() override;
  QSGNode* updatePaintNode(QSGNode* node, UpdatePaintNodeData* data) override;

 private:
  void followWindow(QQuickWindow& window);

  std::shared_ptr<SurfaceCore> core_;
  QImage picture_;
};

}  // namespace corvane::qt
