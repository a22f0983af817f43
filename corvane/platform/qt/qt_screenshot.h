/// Pictures of what an app shows, for its tests and its documentation.
#pragma once

#include <filesystem>

#include "corvane/export.h"

class QQuickWindow;
class QWidget;

namespace corvane::qt {

/// Writes what a widget shows now into a PNG file, in device pixels of its window. False when the widget is not on
/// screen, has no size or the file cannot be written.
[[nodiscard]] CORVANE_EXPORT bool saveScreenshot(QWidget* widget, const std::filesystem::path& file);

/// The same for a window of Qt Quick.
[[nodiscard]] CORVANE_EXPORT bool saveScreenshot(QQuickWindow& window, const std::filesystem::path& file);

}  // namespace corvane::qt
