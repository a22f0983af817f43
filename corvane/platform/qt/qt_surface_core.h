/// A window of views on whatever shows it.
#pragma once

#include <QTimer>
#include <memory>

#include "corvane/platform/qt/qt_surface_host.h"
#include "corvane/platform/views/ui_window.h"

namespace corvane::qt {

class SurfaceInput;
class SurfaceKeyboard;

/// Keeps one window of views and what shows it in step: size, frames, pages, input and the focus.
///
/// Ownership: held by the surface or by the item that shows it, which calls `end`. It is kept alive for the length of
///            every call that it gets.
/// Threads:   main thread only.
/// Failure:   none.
class SurfaceCore final : public SurfaceClient,
                          public UIWindowDelegate,
                          public std::enable_shared_from_this<SurfaceCore> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  static std::shared_ptr<SurfaceCore> create(std::shared_ptr<SurfaceHost> host);
  SurfaceCore(ConstructionKey key, std::shared_ptr<SurfaceHost> host);

  /// The window leaves the scene and is shown no more.
  void end();
  [[nodiscard]] const std::shared_ptr<UIWindow>& window() const { return window_; }

  void viewTreeDidChange() override;

  void surfaceResized(CGSize size) override;
  void surfaceShown() override;
  void surfaceHidden() override;
  void surfaceActivated() override;
  void focusMoved() override;
  void drawSurface(QPainter& painter, qreal devicePixelRatio) override;
  bool handleInput(QEvent& event) override;
  [[nodiscard]] QVariant answerInputMethod(Qt::InputMethodQuery query) override;

 private:
  void begin();
  [[nodiscard]] bool isAnimating() const;
  void followAnimations();
  void showFrame();
  void pageChanged();
  void placePages();

  std::shared_ptr<UIWindow> window_;
  std::shared_ptr<SurfaceHost> host_;
  std::shared_ptr<SurfaceInput> input_;
  std::shared_ptr<SurfaceKeyboard> keyboard_;
  QTimer frames_;
  bool isDrawing_ = false;
  bool isPlacing_ = false;
};

}  // namespace corvane::qt
