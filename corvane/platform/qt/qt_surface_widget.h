/// The widget of a surface.
#pragma once

#include <QWidget>

#include "corvane/platform/geometry/geometry.h"

namespace corvane::qt {

/// What the toolkit tells a surface.
///
/// Ownership: whoever makes the widget; it leaves the widget before it ends.
/// Threads:   main thread only.
class SurfaceWidgetClient {
 public:
  virtual ~SurfaceWidgetClient() = default;
  virtual void surfaceResized(CGSize size) = 0;
  virtual void surfaceShown() = 0;
  virtual void surfaceHidden() = 0;
  virtual void surfaceActivated() = 0;
  virtual void drawSurface() = 0;
  /// Keys, input methods and the focus. True for what a page has taken.
  virtual bool handleInput(QEvent& event) = 0;
  [[nodiscard]] virtual QVariant answerInputMethod(Qt::InputMethodQuery query) = 0;
};

/// Shows what its client draws. The mouse never comes to it: the client sees the window's events before any widget.
class SurfaceWidget final : public QWidget {
 public:
  explicit SurfaceWidget(SurfaceWidgetClient& client);

  /// It shows nothing from then on.
  void leaveClient() { client_ = nullptr; }

  [[nodiscard]] QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  SurfaceWidgetClient* client_;
};

}  // namespace corvane::qt
