#include "corvane/platform/qt/qt_page_touches.h"

#include <QCoreApplication>
#include <QPointingDevice>
#include <QTouchEvent>
#include <QWidget>
#include <QWindow>
#include <algorithm>
// The public constructors leave the position at the corner of the page.
#include <private/qeventpoint_p.h>

namespace corvane::qt {

void sendTouches(QWidget& page, const std::vector<PageFinger>& fingers, const QTouchEvent& original) {
  if (fingers.empty()) return;
  QList<QEventPoint> points;
  for (const PageFinger& finger : fingers) {
    points.append(QMutableEventPoint::withTimeStamp(static_cast<ulong>(original.timestamp()), finger.identifier,
                                                    finger.state, finger.position, finger.position,
                                                    page.mapToGlobal(finger.position)));
  }
  const auto areAll = [&](QEventPoint::State state) {
    return std::ranges::all_of(fingers, [&](const PageFinger& finger) { return finger.state == state; });
  };
  QEvent::Type type = QEvent::TouchUpdate;
  if (areAll(QEventPoint::Pressed)) type = QEvent::TouchBegin;
  if (areAll(QEventPoint::Released)) type = QEvent::TouchEnd;
  QTouchEvent touches(type, original.pointingDevice(), original.modifiers(), points);
  touches.setTimestamp(original.timestamp());
  QCoreApplication::sendEvent(&page, &touches);
}

void cancelTouchesOf(QWidget& page, const QTouchEvent& original) {
  QTouchEvent cancel(QEvent::TouchCancel, original.pointingDevice(), original.modifiers(), QList<QEventPoint>());
  QCoreApplication::sendEvent(&page, &cancel);
}

}  // namespace corvane::qt
