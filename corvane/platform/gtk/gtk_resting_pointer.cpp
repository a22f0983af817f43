#include "corvane/platform/gtk/gtk_resting_pointer.h"

#include <utility>

#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_surface_input.h"

namespace corvane::gtk {

std::shared_ptr<RestingPointer> RestingPointer::create(GtkWidget* widget, const std::shared_ptr<UIWindow>& window) {
  auto pointer = std::make_shared<RestingPointer>();
  pointer->widget_ = GObjectHandle<GtkWidget>::retain(widget);
  pointer->window_ = window;
  pointer->later_.emplace(whileAlive(pointer->weak_from_this(), &RestingPointer::lookAgain));
  pointer->rootChange_ = SignalConnection::make<void(GtkWidget*, GParamSpec*)>(
      widget, "notify::root",
      [follow = whileAlive(pointer->weak_from_this(), &RestingPointer::followRoot)](GtkWidget*, GParamSpec*) mutable {
        follow();
      });
  pointer->followRoot();
  return pointer;
}

RestingPointer::~RestingPointer() { leaveRoot(); }

void RestingPointer::leaveRoot() {
  events_.reset();
  GtkWidget* const root = controller_ ? gtk_event_controller_get_widget(controller_.get()) : nullptr;
  if (root != nullptr) gtk_widget_remove_controller(root, controller_.get());
  controller_ = {};
  lastMotion_.reset();
}

void RestingPointer::followRoot() {
  leaveRoot();
  GtkRoot* const root = gtk_widget_get_root(widget_.get());
  if (root == nullptr) return;
  controller_ = GObjectHandle<GtkEventController>::adopt(gtk_event_controller_legacy_new());
  gtk_event_controller_set_propagation_phase(controller_.get(), GTK_PHASE_CAPTURE);
  events_ = SignalConnection::make<gboolean(GtkEventController*, GdkEvent*)>(
      controller_.get(), "event", [weak = weak_from_this()](GtkEventController*, GdkEvent* event) -> gboolean {
        if (const auto self = weak.lock()) self->note(event);
        return GDK_EVENT_PROPAGATE;
      });
  // The widget takes a reference over.
  gtk_widget_add_controller(objectCast<GtkWidget>(root), GObjectHandle(controller_).release());
}

void RestingPointer::note(GdkEvent* event) {
  const GdkEventType type = gdk_event_get_event_type(event);
  if (type == GDK_LEAVE_NOTIFY) return lastMotion_.reset();
  if (type != GDK_MOTION_NOTIFY) return;
  lastMotion_.reset(gdk_event_ref(event));
  viewBelow_ = viewBelow();
}

std::weak_ptr<UIView> RestingPointer::viewBelow() const {
  const auto window = window_.lock();
  if (window == nullptr || lastMotion_ == nullptr) return {};
  return window->hitTest(locationIn(widget_.get(), *window, lastMotion_.get()));
}

void RestingPointer::viewsDidChange() {
  if (lastMotion_ == nullptr) return;
  const auto before = std::exchange(viewBelow_, viewBelow()).lock();
  // Not inside a layout.
  if (before != viewBelow_.lock()) later_->setReadyTime({});
}

void RestingPointer::lookAgain() {
  later_->setNeverReady();
  if (lastMotion_ != nullptr) putBack(lastMotion_.get());
}

}  // namespace corvane::gtk
