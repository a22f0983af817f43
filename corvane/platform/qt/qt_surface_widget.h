/// The widget of a surface.
#pragma once

#include <QWidget>

#include "corvane/platform/qt/qt_surface_host.h"

namespace corvane::qt {

/// Shows what its client draws. The mouse never comes to it: the client sees the window's events before any widget.
class SurfaceWidget final : public QWidget {
 public:
  SurfaceWidget();

  /// Without one it shows nothing.
  void setClient(SurfaceClient* client) { client_ = client; }

  [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  SurfaceClient* client_ = nullptr;
};

}  // namespace corvane::qt
