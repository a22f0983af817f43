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
        const auto self = weak.lock();
        return self != nullptr && self->note(event) ? GDK_EVENT_STOP : GDK_EVENT_PROPAGATE;
      });
  // The widget takes a reference over.
  gtk_widget_add_controller(objectCast<GtkWidget>(root), GObjectHandle(controller_).release());
}

bool RestingPointer::note(GdkEvent* event) {
  switch (gdk_event_get_event_type(event)) {
    case GDK_LEAVE_NOTIFY:
      lastMotion_.reset();
      return false;
    case GDK_BUTTON_PRESS:
      isPressed_ = true;
      return false;
    case GDK_BUTTON_RELEASE:
      isPressed_ = false;
      if (std::exchange(isOutdated_, false)) later_->setReadyTime({});
      return false;
    case GDK_MOTION_NOTIFY:
      break;
    default:
      return false;
  }
  constexpr int buttons = GDK_BUTTON1_MASK | GDK_BUTTON2_MASK | GDK_BUTTON3_MASK;
  // The toolkit has looked by now. To a page a movement of a drag that is over would be one more drag.
  const bool isOver =
      event == lastMotion_.get() && (static_cast<int>(gdk_event_get_modifier_state(event)) & buttons) != 0;
  if (!isOver) lastMotion_.reset(gdk_event_ref(event));
  viewBelow_ = viewBelow();
  return isOver;
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
  isOutdated_ = isPressed_;
  if (isPressed_) return;
  if (lastMotion_ != nullptr) putBack(lastMotion_.get());
}

}  // namespace corvane::gtk
