/// A page that is never on screen by itself, and its picture.
#pragma once

#include <QImage>
#include <QPointer>
#include <QSize>
#include <QtWebEngineWidgets/QWebEngineView>
#include <functional>
#include <utility>

class QPainter;
class QQuickWidget;

namespace corvane::qt {

/// Shows a page off screen, where it draws itself at full speed, and keeps its newest picture for the surfaces.
///
/// A page that is hidden would have its timers slowed down, and a call may be going on in it. So it is shown from the
/// beginning to the end, whether a surface has it or not.
///
/// Ownership: owned by the engine, which posts its end, as it may be in the middle of telling something.
/// Threads:   main thread only.
/// Failure:   none.
class PageView final : public QWebEngineView {
 public:
  PageView();

  /// Called when the page looks different, at most once between two drawings.
  void setPictureHandler(std::function<void()> changed) { changed_ = std::move(changed); }
  /// Called when the Tab key goes on behind the page's last field, or before its first one; true is forward.
  void setEndOfTabs(std::function<void(bool)> handler) { endOfTabs_ = std::move(handler); }
  /// How large the page is laid out, in its own pixels.
  void setPageSize(QSize size);
  /// Draws the page at its size, in its own pixels.
  void draw(QPainter& painter, qreal devicePixelRatio);
  /// What takes the user's input for the page; null before the first load.
  [[nodiscard]] QWidget* inputTarget() const { return focusProxy(); }

 protected:
  void childEvent(QChildEvent* event) override;
  bool focusNextPrevChild(bool isForward) override;

 private:
  void watchPicture();

  QPointer<QQuickWidget> prime_;
  /// What draws the page at present. It comes with the first load and changes with pages of other sites.
  QPointer<QQuickWidget> drawn_;
  std::function<void()> changed_;
  std::function<void(bool)> endOfTabs_;
  QImage picture_;
  bool isStale_ = true;
  bool isDrawing_ = false;
};

}  // namespace corvane::qt
