/// What a surface is shown by, and what it hears from there, in an app of widgets as in one of Qt Quick.
#pragma once

#include <QEvent>
#include <QPointF>
#include <QRectF>
#include <QSize>
#include <QVariant>
#include <functional>
#include <optional>

#include "corvane/platform/geometry/geometry.h"

class QPainter;
class QWindow;

namespace corvane::qt {

/// Stands for the toolkit's own object that shows a surface. Once that has ended the surface is in no window, has no
/// size and never has the focus.
///
/// Ownership: shared by the surface and its parts. Threads: main thread only. Failure: none.
class SurfaceHost {
 public:
  /// Whether something may have the focus: its box on the surface, or none for the surface itself.
  using FocusFilter = std::function<bool(const std::optional<QRectF>&)>;

  virtual ~SurfaceHost() = default;
  /// Null for none.
  [[nodiscard]] virtual QWindow* nativeWindow() const = 0;
  /// A point of the native window on the surface.
  [[nodiscard]] virtual QPointF fromWindow(QPointF point) const = 0;
  [[nodiscard]] virtual QSize size() const = 0;
  [[nodiscard]] virtual bool isVisible() const = 0;
  virtual void queueFrame() = 0;

  [[nodiscard]] virtual bool hasFocus() const = 0;
  virtual void takeFocus(Qt::FocusReason reason) = 0;
  /// The box, on the surface, of what else in the window has the focus; none for nothing.
  [[nodiscard]] virtual std::optional<QRectF> otherFocus() const = 0;
  /// Nothing has the focus any more.
  virtual void dropFocus() = 0;
  /// The focus goes to the next thing in the order of Tab that passes the filter, from what has it or else from the
  /// surface. False where there is none.
  virtual bool moveFocus(bool isForward, const FocusFilter& mayHave) = 0;
};

/// What the toolkit tells a surface.
///
/// Ownership: the toolkit's object knows it until one of the two ends. Threads: main thread only.
class SurfaceClient {
 public:
  virtual ~SurfaceClient() = default;
  virtual void surfaceResized(CGSize size) = 0;
  virtual void surfaceShown() = 0;
  virtual void surfaceHidden() = 0;
  virtual void surfaceActivated() = 0;
  /// The focus has come to something in this window, or to nothing.
  virtual void focusMoved() = 0;
  virtual void drawSurface(QPainter& painter, qreal devicePixelRatio) = 0;
  /// Keys, input methods and the focus. True for what a page has taken.
  virtual bool handleInput(QEvent& event) = 0;
  [[nodiscard]] virtual QVariant answerInputMethod(Qt::InputMethodQuery query) = 0;
};

/// Whether an event of the toolkit's object is one for `handleInput`.
[[nodiscard]] inline bool isInput(const QEvent& event) {
  switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::ShortcutOverride:
    case QEvent::InputMethod:
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      return true;
    default:
      return false;
  }
}

}  // namespace corvane::qt
