/// The keyboard's way among a surface, its pages and what the host app has beside them.
#pragma once

#include <QKeyEvent>
#include <QPainter>
#include <memory>

#include "corvane/platform/qt/qt_surface_host.h"
#include "corvane/platform/qt/qt_surface_input.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::qt {

/// Keeps the focus where the user can see it, and lets keys do to a floating view what a finger could.
///
/// The toolkit knows one focus for the whole surface. It belongs to a page, or to the floating view.
///
/// Ownership: owned by the surface; it holds the window, and itself for the length of every call that it gets.
/// Threads:   main thread only.
class SurfaceKeyboard : public std::enable_shared_from_this<SurfaceKeyboard> {
 public:
  SurfaceKeyboard(std::shared_ptr<SurfaceHost> host, std::shared_ptr<UIWindow> window,
                  std::shared_ptr<SurfaceInput> input);

  void begin();
  /// What is covered, and what floats, may be something else by now.
  void viewsDidChange();
  /// Something else in the window may have the focus now.
  void focusDidMove();
  /// Keys and the focus. True for what ends here.
  [[nodiscard]] bool handle(QEvent& event);
  /// The Tab key has come to the end of a page.
  void leavePage(bool isForward);
  /// Marks the floating view while it has the focus.
  void drawFocus(QPainter& painter) const;

 private:
  void placeFocus();
  /// The focus goes on as Tab does, past everything that nobody sees. False where there is nothing to go to.
  bool moveOn(bool isForward);
  [[nodiscard]] bool handleKey(int key);
  void handleFocusIn(QFocusEvent& event);
  /// The page that covers the middle of the surface; null for none.
  [[nodiscard]] std::shared_ptr<WKWebView> pageInTheMiddle() const;
  /// Whether our views lie over the whole of a box on the surface, so that nobody sees what is in it.
  [[nodiscard]] bool covers(const QRectF& box) const;

  std::shared_ptr<SurfaceHost> host_;
  std::shared_ptr<UIWindow> window_;
  std::shared_ptr<SurfaceInput> input_;
  bool isForward_ = true;
  bool isPlacing_ = false;
  bool isLeaving_ = false;
};

}  // namespace corvane::qt
