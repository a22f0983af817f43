#include "corvane/platform/qt/qt_surface.h"

#include <utility>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/qt/qt_surface_core.h"
#include "corvane/platform/qt/qt_surface_widget.h"
#include "corvane/platform/qt/qt_widget_host.h"

namespace corvane::qt {

class Surface::Parts final {
 public:
  Parts()
      : widget_(std::make_unique<SurfaceWidget>().release()),
        core_(SurfaceCore::create(std::make_shared<WidgetHost>(*widget_))) {
    widget_->setClient(core_.get());
  }
  Parts(const Parts&) = delete;
  Parts& operator=(const Parts&) = delete;
  ~Parts() {
    core_->end();
    if (widget_ == nullptr) return;
    widget_->setClient(nullptr);
    widget_->hide();
    widget_->setParent(nullptr);
    // The widget may be in the middle of telling us something.
    std::unique_ptr<SurfaceWidget> widget(widget_.data());
    if (RunLoop::hasMain()) RunLoop::main().post([widget = std::move(widget)] {});
  }

  [[nodiscard]] QWidget* widget() const { return widget_; }
  [[nodiscard]] SurfaceCore& core() const { return *core_; }

 private:
  QPointer<SurfaceWidget> widget_;
  std::shared_ptr<SurfaceCore> core_;
};

std::shared_ptr<Surface> Surface::create() {
  auto surface = std::make_shared<Surface>(ConstructionKey{});
  surface->window()->setDelegate(surface);
  return surface;
}

Surface::Surface(ConstructionKey) : parts_(std::make_shared<Parts>()) {}

Surface::~Surface() = default;

QWidget* Surface::widget() const { return parts_->widget(); }
const std::shared_ptr<UIWindow>& Surface::window() const { return parts_->core().window(); }
void Surface::viewTreeDidChange() { parts_->core().viewTreeDidChange(); }

}  // namespace corvane::qt
