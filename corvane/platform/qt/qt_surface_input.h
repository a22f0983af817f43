/// Mouse, touches and keys on a surface, between our views and what is under them.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QWidget>
#include <QWindow>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include "corvane/platform/engine/held_touches.h"
#include "corvane/platform/qt/qt_page_touches.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/web/wk_web_view.h"

class QMouseEvent;
class QPointingDevice;
class QTouchEvent;
class QWheelEvent;

namespace corvane::qt {

class QtWebEngine;

/// Sees the events of the native window before any widget does. What none of our views wants goes on to the host app's
/// widgets as if the surface were not there; what is a page's is made anew in the page's own coordinates.
///
/// Ownership: owned by the surface; it holds the window, and itself for the length of every call that it gets.
/// Threads:   main thread only.
class SurfaceInput final : public QObject, public std::enable_shared_from_this<SurfaceInput> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<SurfaceInput> create(QWidget& widget, std::shared_ptr<UIWindow> window);
  SurfaceInput(ConstructionKey key, QWidget& widget, std::shared_ptr<UIWindow> window);

  /// The widget may have come into another window.
  void watchWindow();
  /// What is not on screen gets no more events.
  void cancelAll();
  /// A key or its like on its way to the page that has the focus. False where there is none.
  [[nodiscard]] bool handleFocused(QEvent& event);
  [[nodiscard]] QVariant answerInputMethod(Qt::InputMethodQuery query) const;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// What lies under a point.
  struct Target {
    enum class Kind : std::uint8_t {
      host,   ///< a widget of the host app
      views,  ///< views that take touches and are no page
      page,
    };
    Kind kind = Kind::host;
    std::weak_ptr<WKWebView> page{};
  };
  /// All that is needed of an event of the mouse. The toolkit's own share their contents with those that come later.
  struct Click {
    QEvent::Type type;
    QPointF onWindow;
    QPointF onScreen;
    Qt::MouseButton button;
    Qt::MouseButtons buttons;
    Qt::KeyboardModifiers modifiers;
    ulong timestamp;
    const QPointingDevice* device;
  };

  [[nodiscard]] bool filter(QEvent* event);
  [[nodiscard]] bool handleMouse(const QMouseEvent& event);
  [[nodiscard]] bool handleWheel(const QWheelEvent& event);
  [[nodiscard]] bool handleTouch(QTouchEvent& event);
  [[nodiscard]] bool cancelTouches(const QTouchEvent& event);
  /// Whether the event ends here.
  [[nodiscard]] bool deliver(const Click& click, bool isReplay);
  void sendToPage(WKWebView& page, const Click& click);
  void sendToHost(const Click& click);
  void leavePage();
  void focus(const std::shared_ptr<WKWebView>& page);
  void showCursorOf(const QtWebEngine* engine);

  [[nodiscard]] CGPoint onSurface(QPointF onWindow) const;
  [[nodiscard]] Target targetAt(CGPoint onSurface) const;
  /// A point of the surface in a page's own coordinates; none while the page is not to be seen.
  [[nodiscard]] std::optional<QPointF> onPage(const WKWebView& page, CGPoint onSurface) const;

  QPointer<QWidget> widget_;
  QPointer<QWindow> native_;
  std::shared_ptr<UIWindow> window_;
  std::shared_ptr<engine::HeldTouches> held_;
  /// The first button's press, for as long as it is held back.
  std::optional<Click> beginning_;
  /// Who has what is pressed, from the first button's press to the last one's release.
  std::optional<Target> pressed_;
  std::weak_ptr<WKWebView> hovered_;
  std::weak_ptr<WKWebView> focused_;
  std::map<int, Target> fingers_;
  std::map<int, QPointF> fingersBeginnings_;
  bool isReplaying_ = false;
};

}  // namespace corvane::qt
