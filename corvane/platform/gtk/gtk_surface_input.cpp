#include "corvane/platform/gtk/gtk_surface_input.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_surface_drawing.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::gtk {

namespace {

bool isFirstButton(GdkEvent* event) { return gdk_button_event_get_button(event) == GDK_BUTTON_PRIMARY; }

bool hasFirstButtonDown(GdkEvent* event) { return (gdk_event_get_modifier_state(event) & GDK_BUTTON1_MASK) != 0; }

/// The mouse has no sequence, fingers have one each while they are down.
std::uint64_t identifierOf(GdkEvent* event) {
  return reinterpret_cast<std::uintptr_t>(gdk_event_get_event_sequence(event));
}

/// A page that has moved from under a finger sees the finger leave, but makes no click of it. This is not for the
/// mouse: the same gestures tell the page that its button is up.
void denyTap(const TouchAnchor& anchor, GdkEvent* event) {
  GdkEventSequence* const finger = gdk_event_get_event_sequence(event);
  const auto view = anchor.view();
  const GtkWebEngine* const engine = view != nullptr ? engineOf(*view) : nullptr;
  if (finger == nullptr || engine == nullptr || !anchor.hasMoved()) return;
  const auto controllers = GObjectHandle<GListModel>::adopt(gtk_widget_observe_controllers(engine->widget()));
  for (guint i = 0; i < g_list_model_get_n_items(controllers.get()); ++i) {
    const auto controller = GObjectHandle<GtkEventController>::adopt(g_list_model_get_item(controllers.get(), i));
    if (GTK_IS_GESTURE(controller.get()) == FALSE) continue;
    gtk_gesture_set_sequence_state(objectCast<GtkGesture>(controller.get()), finger, GTK_EVENT_SEQUENCE_DENIED);
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
      return isBusy();
    case GDK_TOUCHPAD_PINCH:
      return isBusy() || isOverFixedPage(locationOf(event));
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
  using Owner = Touch::Owner;
  const std::uint64_t identifier = touch.identifier;
  const bool isBeginning = touch.phase == TouchPhase::began;
  if (isBeginning) {
    // Gestures have one finger. A page that saw only the others would make a gesture of them.
    const bool isNobodys = isBusy(identifier) || wouldPinch(touch);
    touches_[identifier] = {isNobodys ? Owner::nobody : Owner::undecided, EventHandle(gdk_event_ref(event)),
                            TouchAnchor(*window_, touch.location)};
  }
  if (!touches_.contains(identifier)) return propagate(event);
  const TouchOutcome outcome = window_->sendTouch(touch);
  // Actions may have made the surface disappear.
  const auto found = touches_.find(identifier);
  if (found == touches_.end()) return true;

  Owner& owner = found->second.owner;
  const bool wasUndecided = owner == Owner::undecided;
  if (wasUndecided && outcome == TouchOutcome::claimed) owner = Owner::views;
  if (wasUndecided && outcome == TouchOutcome::released) {
    owner = Owner::underneath;
    replay(found->second.beginning.get());
  }
  // Nobody has seen anything yet of a touch that is cancelled while it is held.
  if (wasUndecided && outcome == TouchOutcome::ignored) owner = isBeginning ? Owner::underneath : Owner::nobody;
  const bool goesOn = owner == Owner::underneath;
  if (goesOn && touch.phase == TouchPhase::ended) denyTap(found->second.anchor, event);
  if (touch.phase == TouchPhase::ended || touch.phase == TouchPhase::cancelled) touches_.erase(found);
  return !goesOn || propagate(event);
}

bool SurfaceInput::handleOtherButton(GdkEvent* event) {
  const guint button = gdk_button_event_get_button(event);
  if (gdk_event_get_event_type(event) == GDK_BUTTON_RELEASE) return keptButtons_.erase(button) > 0 || propagate(event);
  if (!isBusy()) return propagate(event);
  keptButtons_.insert(button);
  return true;
}

bool SurfaceInput::isBusy(std::optional<std::uint64_t> besides) const {
  return std::ranges::any_of(touches_, [&](const auto& touch) {
    const bool isWanted = touch.second.owner == Touch::Owner::undecided || touch.second.owner == Touch::Owner::views;
    return isWanted && touch.first != besides;
  });
}

void SurfaceInput::noteDrop(GdkEvent* event) const {
  const auto view = window_->hitTest(locationOf(event));
  GtkWebEngine* const engine = view != nullptr ? engineOf(*view) : nullptr;
  if (engine != nullptr) engine->somethingWasDropped();
}

bool SurfaceInput::isOverFixedPage(CGPoint location) const {
  const auto page = std::dynamic_pointer_cast<WKWebView>(window_->hitTest(location));
  return page != nullptr && !page->isScrollEnabled();
}

bool SurfaceInput::wouldPinch(const UITouchEvent& touch) const {
  const bool isSecond = std::ranges::any_of(touches_, [&](const auto& other) {
    return other.second.owner == Touch::Owner::underneath && other.first != touch.identifier;
  });
  return isSecond && isOverFixedPage(touch.location);
}

void SurfaceInput::cancelAll() {
  std::vector<std::uint64_t> cancelled;
  for (auto& [identifier, touch] : touches_) {
    if (touch.owner == Touch::Owner::underneath) continue;
    // Should its end come by after all, the page is not to see it.
    touch.owner = Touch::Owner::nobody;
    cancelled.push_back(identifier);
  }
  for (const std::uint64_t identifier : cancelled) {
    window_->sendTouch({.identifier = identifier, .phase = TouchPhase::cancelled, .location = {}});
  }
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
