#include "corvane/platform/gtk/gtk_surface_keyboard.h"

#include <array>
#include <utility>

#include "corvane/platform/engine/key_gestures.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/gtk/gtk_surface_drawing.h"
#include "corvane/platform/gtk/gtk_transform.h"

namespace corvane::gtk {

namespace {

/// An app has fewer widgets in a row that are covered.
constexpr int mostSteps = 256;

bool isInside(GtkWidget* widget, GtkWidget* ancestor) {
  return widget == ancestor || gtk_widget_is_ancestor(widget, ancestor) != FALSE;
}

}  // namespace

std::shared_ptr<SurfaceKeyboard> SurfaceKeyboard::create(GtkWidget* widget, std::shared_ptr<UIWindow> window) {
  auto keyboard = std::make_shared<SurfaceKeyboard>(ConstructionKey{}, widget, std::move(window));
  keyboard->begin();
  return keyboard;
}

SurfaceKeyboard::SurfaceKeyboard(ConstructionKey, GtkWidget* widget, std::shared_ptr<UIWindow> window)
    : widget_(GObjectHandle<GtkWidget>::retain(widget)),
      window_(std::move(window)),
      keys_(GObjectHandle<GtkEventController>::adopt(gtk_event_controller_key_new())) {}

void SurfaceKeyboard::begin() {
  keyPresses_ = SignalConnection::make<gboolean(GtkEventControllerKey*, guint, guint, GdkModifierType)>(
      keys_.get(), "key-pressed",
      [weak = weak_from_this()](GtkEventControllerKey*, guint key, guint, GdkModifierType) -> gboolean {
        const auto keyboard = weak.lock();
        return keyboard != nullptr && keyboard->handleKey(key) ? GDK_EVENT_STOP : GDK_EVENT_PROPAGATE;
      });
  // The widget takes a reference over.
  gtk_widget_add_controller(widget_.get(), GObjectHandle(keys_).release());
  rootChanges_ = SignalConnection::make<void(GtkWidget*, GParamSpec*)>(
      widget_.get(), "notify::root",
      [follow = whileAlive(weak_from_this(), &SurfaceKeyboard::followRoot)](GtkWidget*, GParamSpec*) mutable {
        follow();
      });
  placing_.emplace(whileAlive(weak_from_this(), &SurfaceKeyboard::placeFocus));
  followRoot();
}

SurfaceKeyboard::~SurfaceKeyboard() {
  const auto remove = [](const auto& controller) {
    GtkWidget* const widget = controller ? gtk_event_controller_get_widget(controller.get()) : nullptr;
    if (widget != nullptr) gtk_widget_remove_controller(widget, controller.get());
  };
  keyPresses_.reset();
  tabPresses_.reset();
  remove(keys_);
  remove(tabKeys_);
}

void SurfaceKeyboard::followRoot() {
  focusChanges_.reset();
  tabPresses_.reset();
  if (tabKeys_ && gtk_event_controller_get_widget(tabKeys_.get()) != nullptr) {
    gtk_widget_remove_controller(root_.get(), tabKeys_.get());
  }
  tabKeys_ = {};
  root_ = {};
  auto* const root = objectCast<GtkWidget>(gtk_widget_get_root(widget_.get()));
  if (root == nullptr) return;
  root_ = GObjectHandle<GtkWidget>::retain(root);
  focusChanges_ = SignalConnection::make<void(GtkWidget*, GParamSpec*)>(
      root, "notify::focus-widget",
      [leave = whileAlive(weak_from_this(), &SurfaceKeyboard::leaveCovered)](GtkWidget*, GParamSpec*) mutable {
        leave();
      });
  tabKeys_ = GObjectHandle<GtkEventController>::adopt(gtk_event_controller_key_new());
  gtk_event_controller_set_propagation_phase(tabKeys_.get(), GTK_PHASE_CAPTURE);
  tabPresses_ = SignalConnection::make<gboolean(GtkEventControllerKey*, guint, guint, GdkModifierType)>(
      tabKeys_.get(), "key-pressed",
      [weak = weak_from_this()](GtkEventControllerKey*, guint key, guint, GdkModifierType modifiers) -> gboolean {
        const auto keyboard = weak.lock();
        if (keyboard == nullptr) return GDK_EVENT_PROPAGATE;
        const bool isBackward = key == GDK_KEY_ISO_Left_Tab || (modifiers & GDK_SHIFT_MASK) != 0;
        keyboard->direction_ = isBackward ? GTK_DIR_TAB_BACKWARD : GTK_DIR_TAB_FORWARD;
        // The views may have changed since they were last drawn.
        keyboard->placeFocus();
        return GDK_EVENT_PROPAGATE;
      });
  gtk_widget_add_controller(root, GObjectHandle(tabKeys_).release());
}

void SurfaceKeyboard::viewsDidChange() {
  if (placing_) placing_->setReadyTime({});
}

GtkWidget* SurfaceKeyboard::pageAt(CGPoint point) const {
  for (auto view = window_->hitTest(point); view != nullptr; view = view->superview()) {
    GtkWebEngine* const engine = engineOf(*view);
    if (engine != nullptr && gtk_widget_get_parent(engine->widget()) == widget_.get()) return engine->widget();
  }
  return nullptr;
}

bool SurfaceKeyboard::covers(GtkWidget* other) const {
  if (!root_ || other == widget_.get() || other == root_.get()) return false;
  if (objectCast<GtkWidget>(gtk_widget_get_native(other)) != root_.get() || gtk_widget_get_mapped(other) == FALSE) {
    return false;
  }
  const auto width = static_cast<float>(gtk_widget_get_width(other));
  const auto height = static_cast<float>(gtk_widget_get_height(other));
  // Corners and middle: what shows some of itself can be used.
  for (const auto& [x, y] : std::to_array<std::pair<float, float>>(
           {{0.5F, 0.5F}, {0.05F, 0.05F}, {0.95F, 0.05F}, {0.05F, 0.95F}, {0.95F, 0.95F}})) {
    const graphene_point_t own{x * width, y * height};
    graphene_point_t point{};
    if (!gtk_widget_compute_point(other, root_.get(), &own, &point)) return false;
    GtkWidget* const picked = gtk_widget_pick(root_.get(), point.x, point.y, GTK_PICK_DEFAULT);
    if (picked == nullptr || !isInside(picked, widget_.get()) || isInside(picked, other)) return false;
  }
  return true;
}

/// A page that comes over what has the focus gets it. What the user is in and can see keeps it.
void SurfaceKeyboard::placeFocus() {
  placing_->setNeverReady();
  const bool isFloating = engine::floatingView(*window_) != nullptr;
  if ((gtk_widget_get_focusable(widget_.get()) != FALSE) != isFloating) {
    gtk_widget_set_focusable(widget_.get(), isFloating);
    gtk_accessible_update_property(GTK_ACCESSIBLE(widget_.get()), GTK_ACCESSIBLE_PROPERTY_KEY_SHORTCUTS,
                                   isFloating ? "Left Right Up Down Enter" : "", -1);
  }
  if (!root_ || gtk_widget_get_mapped(widget_.get()) == FALSE) return;
  GtkWidget* const focus = gtk_root_get_focus(objectCast<GtkRoot>(root_.get()));
  const bool isStale = focus == widget_.get() && !isFloating;
  if (focus != nullptr && !isStale && !covers(focus)) return;
  // A floating view leaves the rest of the window to the keys.
  GtkWidget* const page = isFloating ? nullptr : pageAt({window_->bounds().midX(), window_->bounds().midY()});
  if (page != nullptr && gtk_widget_get_can_focus(page) != FALSE) {
    gtk_widget_grab_focus(page);
  } else if (focus != nullptr) {
    leaveCovered();
  }
}

/// The focus goes on as Tab was going, past everything that nobody sees.
void SurfaceKeyboard::leaveCovered() {
  gtk_widget_queue_draw(widget_.get());
  if (isLeaving_ || !root_) return;
  const auto root = root_;
  const auto focus = [&] { return gtk_root_get_focus(objectCast<GtkRoot>(root.get())); };
  isLeaving_ = true;
  for (int step = 0; step < mostSteps && focus() != nullptr && covers(focus()); ++step) {
    if (gtk_widget_child_focus(root.get(), direction_) == FALSE) break;
  }
  if (focus() != nullptr && covers(focus())) gtk_root_set_focus(objectCast<GtkRoot>(root.get()), nullptr);
  isLeaving_ = false;
}

bool SurfaceKeyboard::handleKey(guint key) {
  if (gtk_widget_is_focus(widget_.get()) == FALSE) return false;
  const auto view = engine::floatingView(*window_);
  if (view == nullptr) return false;
  switch (key) {
    case GDK_KEY_Left:
    case GDK_KEY_KP_Left:
      engine::dragByKey(*window_, *view, engine::KeySide::left);
      return true;
    case GDK_KEY_Right:
    case GDK_KEY_KP_Right:
      engine::dragByKey(*window_, *view, engine::KeySide::right);
      return true;
    case GDK_KEY_Up:
    case GDK_KEY_KP_Up:
      engine::dragByKey(*window_, *view, engine::KeySide::top);
      return true;
    case GDK_KEY_Down:
    case GDK_KEY_KP_Down:
      engine::dragByKey(*window_, *view, engine::KeySide::bottom);
      return true;
    case GDK_KEY_Return:
    case GDK_KEY_KP_Enter:
    case GDK_KEY_space:
      tap(*view);
      return true;
    default:
      return false;
  }
}

void SurfaceKeyboard::tap(const UIView& view) {
  GtkWidget* const page = pageAt(view.convertPoint({view.bounds().midX(), view.bounds().midY()}, nullptr));
  if (!engine::tapByKey(*window_, view) && page != nullptr) gtk_widget_grab_focus(page);
}

void SurfaceKeyboard::drawFocus(GtkSnapshot* snapshot) const {
  if (gtk_widget_has_visible_focus(widget_.get()) == FALSE) return;
  const auto view = engine::floatingView(*window_);
  if (view == nullptr) return;
  constexpr float thickness = 3;
  constexpr GdkRGBA ring{0.11F, 0.44F, 0.85F, 1};
  const graphene_rect_t rect = makeGrapheneRect(engine::shownBox(*view));
  GskRoundedRect outline;
  gsk_rounded_rect_init_from_rect(&outline, &rect, thickness);
  const std::array widths{thickness, thickness, thickness, thickness};
  const std::array colours{ring, ring, ring, ring};
  gtk_snapshot_append_border(snapshot, &outline, widths.data(), colours.data());
}

}  // namespace corvane::gtk
