/// Mouse, touches and keys on a surface, between our views and what is under them.
#pragma once

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QWindow>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "corvane/platform/engine/held_touches.h"
#include "corvane/platform/qt/qt_page_touches.h"
#include "corvane/platform/qt/qt_surface_host.h"
#include "corvane/platform/views/ui_window.h"
#include "corvane/platform/web/wk_web_view.h"

class QDropEvent;
class QEventPoint;
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
  static std::shared_ptr<SurfaceInput> create(std::shared_ptr<SurfaceHost> host, std::shared_ptr<UIWindow> window);
  SurfaceInput(ConstructionKey key, std::shared_ptr<SurfaceHost> host, std::shared_ptr<UIWindow> window);

  /// The surface may have come into another window.
  void watchWindow();
  /// What is not on screen gets no more events.
  void cancelAll();
  /// A key or its like on its way to the page that has the focus. False where there is none.
  [[nodiscard]] bool handleFocused(QEvent& event);
  /// Whether a page has the surface's focus, can be seen and takes input.
  [[nodiscard]] bool hasFocusedPage() const;
  /// Gives the focus to the surface and, in it, to a page, or to none.
  void focus(const std::shared_ptr<WKWebView>& page, Qt::FocusReason reason);
  /// The same while the surface is getting the focus.
  void setFocusedPage(const std::shared_ptr<WKWebView>& page) { focused_ = page; }
  /// The page at a point of the window of views that takes input; null for none.
  [[nodiscard]] std::shared_ptr<WKWebView> pageAt(CGPoint point) const;
  /// Whether our views have what happens at a point of the surface.
  [[nodiscard]] bool takesInputAt(QPointF onSurface) const;
  /// Called before the Tab key goes on in this window; true is forward.
  void setTabHandler(std::function<void(bool)> handler) { tabHandler_ = std::move(handler); }
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
  /// A finger that is down.
  struct Finger {
    Target target{};
    QPointF beginning{};
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
  [[nodiscard]] engine::HeldTouches::Verdict verdictOn(engine::HeldTouches& held, const QEventPoint& point);
  /// Something that is dragged here from elsewhere is for the page under it.
  [[nodiscard]] bool handleDrag(QDropEvent& event);
  void leaveDrag();
  /// Whether the event ends here.
  [[nodiscard]] bool deliver(const Click& click, bool isReplay);
  void sendToPage(WKWebView& page, const Click& click);
  void sendToHost(const Click& click);
  void leavePage();
  void showCursorOf(const QtWebEngine* engine);

  [[nodiscard]] CGPoint onSurface(QPointF onWindow) const;
  [[nodiscard]] Target targetAt(CGPoint onSurface) const;
  /// A point of the surface in a page's own coordinates; none while the page is not to be seen.
  [[nodiscard]] std::optional<QPointF> onPage(const WKWebView& page, CGPoint onSurface) const;

  std::shared_ptr<SurfaceHost> host_;
  QPointer<QWindow> native_;
  std::shared_ptr<UIWindow> window_;
  std::shared_ptr<engine::HeldTouches> held_;
  /// The first button's press, for as long as it is held back.
  std::optional<Click> beginning_;
  /// Who has what is pressed, from the first button's press to the last one's release.
  std::optional<Target> pressed_;
  std::weak_ptr<WKWebView> hovered_;
  std::weak_ptr<WKWebView> focused_;
  std::map<int, Finger> fingers_;
  bool isReplaying_ = false;
  /// Over which something is being dragged.
  std::weak_ptr<WKWebView> dragged_;
  std::function<void(bool)> tabHandler_;
};

}  // namespace corvane::qt
