#include "corvane/platform/qt/qt_screenshot.h"

#include <QPixmap>
#include <QWidget>
#include <QtQuick/QQuickWindow>

#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

bool saveScreenshot(QWidget* widget, const std::filesystem::path& file) {
  if (widget == nullptr || !widget->isVisible() || widget->size().isEmpty()) return false;
  return widget->grab().save(toQString(file.string()), "PNG");
}

bool saveScreenshot(QQuickWindow& window, const std::filesystem::path& file) {
  if (!window.isVisible()) return false;
  const QImage picture = window.grabWindow();
  return !picture.isNull() && picture.save(toQString(file.string()), "PNG");
}

}  // namespace corvane::qt
