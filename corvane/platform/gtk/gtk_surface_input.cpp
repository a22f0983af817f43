#include "corvane/platform/gtk/gtk_surface_input.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_surface_drawing.h"
#include "corvane/platform/gtk/gtk_web_engine.h"

namespace corvane::gtk {

using Verdict = engine::HeldTouches::Verdict;

namespace {

bool isFirstButton(GdkEvent* event) { return gdk_button_event_get_button(event) == GDK_BUTTON_PRIMARY; }

bool hasFirstButtonDown(GdkEvent* event) { return (gdk_event_get_modifier_state(event) & GDK_BUTTON1_MASK) != 0; }

/// Fingers have a sequence each while they are down.
std::uint64_t identifierOf(GdkEvent* event) {
  static_assert(engine::mouseTouch == 0, "The mouse has no sequence");
  return reinterpret_cast<std::uintptr_t>(gdk_event_get_event_sequence(event));
}

/// The page sees the finger leave, but makes no click of it.
void denyTap(GtkWidget* surface, GdkEventSequence* finger) {
  for (GtkWidget* page = gtk_widget_get_first_child(surface); page != nullptr;
       page = gtk_widget_get_next_sibling(page)) {
    const auto controllers = GObjectHandle<GListModel>::adopt(gtk_widget_observe_controllers(page));
    for (guint i = 0; i < g_list_model_get_n_items(controllers.get()); ++i) {
      const auto controller = GObjectHandle<GtkEventController>::adopt(g_list_model_get_item(controllers.get(), i));
      if (GTK_IS_GESTURE(controller.get()) == FALSE) continue;
      gtk_gesture_set_sequence_state(objectCast<GtkGesture>(controller.get()), finger, GTK_EVENT_SEQUENCE_DENIED);
    }
  }
}

}  // namespace

// The toolkit's newer versions call this old and offer nothing in its stead.
void putBack(GdkEvent* event) {
  G_GNUC_BEGIN_IGNORE_DEPRECATIONS
  gdk_display_put_event(gdk_event_get_display(event), event);
  G_GNUC_END_IGNORE_DEPRECATIONS
}

CGPoint locationIn(GtkWidget* widget, const UIWindow& window, GdkEvent* event) {
  double x = 0;
  double y = 0;
  // Asked of the native's origin, since the widget under the finger may move with the finger.
  GtkNative* native = gtk_widget_get_native(widget);
  if (native == nullptr || gdk_event_get_position(event, &x, &y) == FALSE) return {};
  double left = 0;
  double top = 0;
  gtk_native_get_surface_transform(native, &left, &top);
  const graphene_point_t onNative{static_cast<float>(x - left), static_cast<float>(y - top)};
  graphene_point_t point{0, 0};
  if (!gtk_widget_compute_point(objectCast<GtkWidget>(native), widget, &onNative, &point)) return {};
  const CGPoint origin = window.bounds().origin;
  return {point.x + origin.x, point.y + origin.y};
}

std::shared_ptr<SurfaceInput> SurfaceInput::create(GtkWidget* widget, std::shared_ptr<UIWindow> window) {
  auto input = std::make_shared<SurfaceInput>(ConstructionKey{}, widget, std::move(window));
  input->begin();
  return input;
}

SurfaceInput::SurfaceInput(ConstructionKey, GtkWidget* widget, std::shared_ptr<UIWindow> window)
    : widget_(GObjectHandle<GtkWidget>::retain(widget)),
      window_(std::move(window)),
      held_(std::make_shared<engine::HeldTouches>(window_)),
      controller_(GObjectHandle<GtkEventController>::adopt(gtk_event_controller_legacy_new())) {}

void SurfaceInput::begin() {
  gtk_event_controller_set_propagation_phase(controller_.get(), GTK_PHASE_CAPTURE);
  events_ = SignalConnection::make<gboolean(GtkEventController*, GdkEvent*)>(
      controller_.get(), "event", [weak = weak_from_this()](GtkEventController*, GdkEvent* event) -> gboolean {
        const auto input = weak.lock();
        return input != nullptr && input->handle(event) ? GDK_EVENT_STOP : GDK_EVENT_PROPAGATE;
      });
  // What is not on screen gets no more events, the ends of its touches included.
  unmapping_ = SignalConnection::make<void(GtkWidget*)>(
      widget_.get(), "unmap",
      [cancel = whileAlive(weak_from_this(), &SurfaceInput::cancelAll)](GtkWidget*) mutable { cancel(); });
  // The widget takes a reference over.
  gtk_widget_add_controller(widget_.get(), GObjectHandle(controller_).release());
}

SurfaceInput::~SurfaceInput() {
  events_.reset();
  // A widget that has been disposed of has release it already.
  if (gtk_event_controller_get_widget(controller_.get()) != nullptr) {
    gtk_widget_remove_controller(widget_.get(), controller_.get());
  }
}

bool SurfaceInput::handle(GdkEvent* event) {
  if (isReplay(event)) return false;
  switch (gdk_event_get_event_type(event)) {
    case GDK_BUTTON_PRESS:
    case GDK_BUTTON_RELEASE:
      if (!isFirstButton(event)) return handleOtherButton(event);
      break;
    case GDK_MOTION_NOTIFY:
    case GDK_TOUCH_BEGIN:
    case GDK_TOUCH_UPDATE:
    case GDK_TOUCH_END:
    case GDK_TOUCH_CANCEL:
      break;
    case GDK_DROP_START:
      noteDrop(event);
      return false;
    case GDK_GRAB_BROKEN:
      cancelAll();
      return false;
    case GDK_SCROLL:
    case GDK_TOUCHPAD_SWIPE:
      return held_->isBusy();
    case GDK_TOUCHPAD_PINCH:
      return held_->isBusy() || held_->isOverFixedPage(locationOf(event));
    default:
      return false;
  }
  const auto touch = touchOf(event);
  return touch ? handleTouch(event, *touch) : propagate(event);
}

std::optional<UITouchEvent> SurfaceInput::touchOf(GdkEvent* event) const {
  const std::uint64_t identifier = identifierOf(event);
  const auto make = [&](TouchPhase phase) { return UITouchEvent{identifier, phase, locationOf(event)}; };
  switch (gdk_event_get_event_type(event)) {
    case GDK_BUTTON_PRESS:
    case GDK_TOUCH_BEGIN:
      // A page's pop-up has a surface of its own, and only its events come by here.
      if (gdk_event_get_surface(event) != gtk_native_get_surface(gtk_widget_get_native(widget_.get()))) return {};
      return make(TouchPhase::began);
    case GDK_MOTION_NOTIFY:
      // Without the button it is a mouse whose release has gone elsewhere.
      return make(hasFirstButtonDown(event) ? TouchPhase::moved : TouchPhase::cancelled);
    case GDK_TOUCH_UPDATE:
      return make(TouchPhase::moved);
    case GDK_BUTTON_RELEASE:
    case GDK_TOUCH_END:
      return make(TouchPhase::ended);
    default:
      return make(TouchPhase::cancelled);
  }
}

CGPoint SurfaceInput::locationOf(GdkEvent* event) const { return locationIn(widget_.get(), *window_, event); }

bool SurfaceInput::handleTouch(GdkEvent* event, const UITouchEvent& touch) {
  const auto held = held_;
  if (touch.phase == TouchPhase::began) beginnings_[touch.identifier] = EventHandle(gdk_event_ref(event));
  const Verdict verdict = held->handle(touch);
  const bool isOver = touch.phase == TouchPhase::ended || touch.phase == TouchPhase::cancelled;
  if (verdict == Verdict::playedFromStart) replay(beginnings_[touch.identifier].get());
  if (verdict == Verdict::leaves) denyTap(widget_.get(), gdk_event_get_event_sequence(event));
  if (verdict != Verdict::ends || isOver) beginnings_.erase(touch.identifier);
  return verdict == Verdict::ends || propagate(event);
}

bool SurfaceInput::handleOtherButton(GdkEvent* event) {
  const bool isPress = gdk_event_get_event_type(event) == GDK_BUTTON_PRESS;
  const Verdict verdict = held_->handleOtherButton(gdk_button_event_get_button(event), isPress);
  return verdict == Verdict::ends || propagate(event);
}

void SurfaceInput::noteDrop(GdkEvent* event) const {
  const auto view = window_->hitTest(locationOf(event));
  GtkWebEngine* const engine = view != nullptr ? engineOf(*view) : nullptr;
  if (engine != nullptr) engine->somethingWasDropped();
}

void SurfaceInput::cancelAll() {
  const auto held = held_;
  held->cancelAll();
}

bool SurfaceInput::propagate(GdkEvent* event) {
  if (replays_.empty()) return false;
  replay(event);
  return true;
}

void SurfaceInput::replay(GdkEvent* event) {
  replays_.emplace_back(gdk_event_ref(event));
  putBack(event);
}

bool SurfaceInput::isReplay(GdkEvent* event) {
  const auto found = std::ranges::find(replays_, event, [](const EventHandle& replayed) { return replayed.get(); });
  if (found == replays_.end()) return false;
  // They come round in order. Of the earlier ones the toolkit has left out movements that a later one includes, or has
  // found another widget for them.
  replays_.erase(replays_.begin(), found + 1);
  return true;
}

}  // namespace corvane::gtk
