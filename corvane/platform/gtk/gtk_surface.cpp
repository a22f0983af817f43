#include "corvane/platform/gtk/gtk_surface.h"

#include <gtk/gtk.h>

#include <chrono>
#include <optional>
#include <utility>

#include "corvane/platform/engine/surface_scene.h"
#include "corvane/platform/engine/window_drawing.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/glib_source.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_active_window.h"
#include "corvane/platform/gtk/gtk_resting_pointer.h"
#include "corvane/platform/gtk/gtk_surface_drawing.h"
#include "corvane/platform/gtk/gtk_surface_input.h"
#include "corvane/platform/gtk/gtk_surface_keyboard.h"
#include "corvane/platform/gtk/gtk_surface_widget.h"
#include "corvane/platform/gtk/gtk_transform.h"

namespace corvane::gtk {

/// What the toolkit sees of a surface; it is kept alive for the length of every call that it gets.
class Surface::Parts final : public SurfaceWidgetClient, public std::enable_shared_from_this<Parts> {
 public:
  Parts() : window_(UIWindow::create()), widget_(GObjectHandle<GtkWidget>::sink(makeSurfaceWidget(*this))) {}

  void begin() {
    adoption_.emplace(whileAlive(weak_from_this(), &Parts::adoptWebViews));
    input_ = SurfaceInput::create(widget(), window_);
    keyboard_ = SurfaceKeyboard::create(widget(), window_);
    pointer_ = RestingPointer::create(widget(), window_);
    engine::joinScene(*window_);
    activity_ = ActiveWindowFollower::create(widget(), window_);
  }

  void end() {
    if (tick_ != 0) gtk_widget_remove_tick_callback(widget(), std::exchange(tick_, 0));
    activity_.reset();
    engine::leaveScene(*window_);
    pointer_.reset();
    keyboard_.reset();
    input_.reset();
    adoption_.reset();
    endSurfaceWidget(widget());
  }

  [[nodiscard]] GtkWidget* widget() const { return widget_.get(); }
  [[nodiscard]] const std::shared_ptr<UIWindow>& window() const { return window_; }

  void viewTreeDidChange() {
    // The tree changes inside addSubview and its like, and during layout, where the toolkit allows no change of
    // children.
    if (adoption_) adoption_->setReadyTime({});
    followAnimations();
    if (!isAllocating_) queueFrame();
  }

  void allocate(CGSize size) override {
    const auto alive = shared_from_this();
    isAllocating_ = true;
    if (window_->frame() != CGRect{{}, size}) window_->setFrame({{}, size});
    window_->layoutIfNeeded();
    for (const engine::Placement& placement : engine::placementsIn(*window_, frameTime())) place(placement);
    isAllocating_ = false;
    if (keyboard_ != nullptr) keyboard_->viewsDidChange();
    if (pointer_ != nullptr) pointer_->viewsDidChange();
    followAnimations();
  }

  void draw(GtkSnapshot* snapshot) override {
    drawWindow(snapshot, widget(), *window_, frameTime());
    if (keyboard_ != nullptr) keyboard_->drawFocus(snapshot);
  }

  bool takesTouchAt(CGPoint point) override { return viewAt(point) != nullptr; }

  bool takesTouchAt(CGPoint point, GtkWidget* child) override {
    const auto view = viewAt(point);
    const GtkWebEngine* engine = view != nullptr ? engineOf(*view) : nullptr;
    return engine != nullptr && engine->widget() == child;
  }

 private:
  void queueFrame() const {
    // A change of a corner or an alpha moves no widget, and would not be drawn for its place alone.
    gtk_widget_queue_allocate(widget());
    gtk_widget_queue_draw(widget());
  }

  [[nodiscard]] bool isAnimating() const { return RunLoop::hasMain() && window_->isAnimating(); }

  /// All parts of a frame are of the same moment, the one that the frame clock has set for it. Changes are over by
  /// the run loop's time, which is a little ahead. From then on that one counts, so that the last frame shows the
  /// views where they are.
  [[nodiscard]] RunLoop::Time frameTime() const {
    GdkFrameClock* clock = gtk_widget_get_frame_clock(widget());
    if (clock == nullptr || !isAnimating()) return monotonicTime();
    return std::chrono::microseconds(gdk_frame_clock_get_frame_time(clock));
  }

  void followAnimations() {
    if (tick_ != 0 || input_ == nullptr || !isAnimating()) return;
    tick_ = gtk_widget_add_tick_callback(
        widget(),
        [](GtkWidget*, GdkFrameClock*, gpointer parts) -> gboolean { return static_cast<Parts*>(parts)->showFrame(); },
        this, nullptr);
  }

  gboolean showFrame() {
    queueFrame();
    if (isAnimating()) return G_SOURCE_CONTINUE;
    tick_ = 0;
    return G_SOURCE_REMOVE;
  }

  void adoptWebViews() {
    adoption_->setNeverReady();
    GtkWidget* behind = nullptr;
    for (const engine::Placement& placement : engine::placementsIn(*window_, frameTime())) {
      auto* const engine = dynamic_cast<GtkWebEngine*>(placement.engine);
      if (engine == nullptr) continue;
      GtkWidget* child = engine->widget();
      engine->moveTo(widget());
      if (gtk_widget_get_prev_sibling(child) != behind) gtk_widget_insert_after(child, widget(), behind);
      gtk_widget_set_child_visible(child, TRUE);
      behind = child;
    }
    // What is left in front of them is hidden or has left the window.
    GtkWidget* other = behind != nullptr ? gtk_widget_get_next_sibling(behind) : gtk_widget_get_first_child(widget());
    for (; other != nullptr; other = gtk_widget_get_next_sibling(other)) gtk_widget_set_child_visible(other, FALSE);
    queueFrame();
  }

  void place(const engine::Placement& placement) const {
    const auto* const engine = dynamic_cast<const GtkWebEngine*>(placement.engine);
    GtkWidget* const child = engine != nullptr ? engine->widget() : nullptr;
    // New ones come in with the adoption that their arrival has posted, and are laid out after it.
    if (child == nullptr || gtk_widget_get_parent(child) != widget() || gtk_widget_get_child_visible(child) == FALSE)
      return;
    // The toolkit complains about a child that is laid out without having been asked for its size.
    gtk_widget_measure(child, GTK_ORIENTATION_HORIZONTAL, -1, nullptr, nullptr, nullptr, nullptr);
    gtk_widget_allocate(child, engine::pageLength(placement.size.width, gtk_widget_get_width(child)),
                        engine::pageLength(placement.size.height, gtk_widget_get_height(child)), -1,
                        makeGskTransform(placement.transform));
  }

  /// A point of the widget is one of the window, up to where the window's own coordinates begin.
  [[nodiscard]] std::shared_ptr<UIView> viewAt(CGPoint point) const {
    const CGPoint origin = window_->bounds().origin;
    return window_->hitTest({point.x + origin.x, point.y + origin.y});
  }

  std::shared_ptr<UIWindow> window_;
  GObjectHandle<GtkWidget> widget_;
  std::shared_ptr<SurfaceInput> input_;
  std::shared_ptr<SurfaceKeyboard> keyboard_;
  std::shared_ptr<RestingPointer> pointer_;
  std::shared_ptr<ActiveWindowFollower> activity_;
  bool isAllocating_ = false;
  guint tick_ = 0;
  /// Calls `adoptWebViews` once the present change is over.
  std::optional<GlibSource> adoption_;
};

std::shared_ptr<Surface> Surface::create() {
  auto surface = std::make_shared<Surface>(ConstructionKey{});
  surface->window()->setDelegate(surface);
  return surface;
}

Surface::Surface(ConstructionKey) : parts_(std::make_shared<Parts>()) { parts_->begin(); }

Surface::~Surface() { parts_->end(); }

GtkWidget* Surface::widget() const { return parts_->widget(); }
const std::shared_ptr<UIWindow>& Surface::window() const { return parts_->window(); }
void Surface::viewTreeDidChange() { parts_->viewTreeDidChange(); }

}  // namespace corvane::gtk
