#include "corvane/platform/qt/qt_surface_widget.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QVariant>

namespace corvane::qt {

SurfaceWidget::SurfaceWidget() {
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setAttribute(Qt::WA_NoSystemBackground);
  setAttribute(Qt::WA_InputMethodEnabled);
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(QStringLiteral("Call"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
  connect(qApp, &QApplication::focusChanged, this, [this] {
    if (client_ != nullptr) client_->focusMoved();
  });
}

QVariant SurfaceWidget::inputMethodQuery(Qt::InputMethodQuery query) const {
  const QVariant answer = client_ != nullptr ? client_->answerInputMethod(query) : QVariant();
  return answer.isValid() ? answer : QWidget::inputMethodQuery(query);
}

bool SurfaceWidget::event(QEvent* event) {
  if (client_ == nullptr) return QWidget::event(event);
  if (isInput(*event)) return client_->handleInput(*event) || QWidget::event(event);
  switch (event->type()) {
    case QEvent::Resize:
      client_->surfaceResized({static_cast<CGFloat>(width()), static_cast<CGFloat>(height())});
      return true;
    case QEvent::Show:
      client_->surfaceShown();
      break;
    case QEvent::Hide:
      client_->surfaceHidden();
      break;
    case QEvent::ActivationChange:
      if (isActiveWindow()) client_->surfaceActivated();
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void SurfaceWidget::paintEvent(QPaintEvent*) {
  if (client_ == nullptr) return;
  QPainter painter(this);
  client_->drawSurface(painter, devicePixelRatioF());
}

}  // namespace corvane::qt
