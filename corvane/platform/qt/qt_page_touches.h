/// Touches on their way into a page.
#pragma once

#include <QEventPoint>
#include <QPointF>
#include <vector>

class QPointingDevice;
class QTouchEvent;
class QWidget;

namespace corvane::qt {

/// What a finger does, in the page's own coordinates.
struct PageFinger {
  int identifier;
  QEventPoint::State state;
  QPointF position;
};

/// Sends the page what all fingers on it do at one moment.
void sendTouches(QWidget& page, const std::vector<PageFinger>& fingers, const QTouchEvent& original);
/// Takes all fingers away from the page. None of them was a tap.
void cancelTouchesOf(QWidget& page, const QTouchEvent& original);

}  // namespace corvane::qt
