#include "demo/gtk/pointer_input.h"

#include <gtk/gtk.h>

#include <ranges>
#include <utility>

#include "demo/gtk/input_device.h"

namespace corvane::demo {

namespace {

/// From the widget's coordinates to those of its window's surface.
CGPoint onSurface(GtkWidget* widget, CGPoint point) {
  GtkNative* const native = gtk_widget_get_native(widget);
  double left = 0;
  double top = 0;
  gtk_native_get_surface_transform(native, &left, &top);
  graphene_point_t onNative{};
  const graphene_point_t own{static_cast<float>(point.x), static_cast<float>(point.y)};
  if (!gtk_widget_compute_point(widget, reinterpret_cast<GtkWidget*>(native), &own, &onNative)) return point;
  return {onNative.x + left, onNative.y + top};
}

}  // namespace

std::unique_ptr<PointerInput> PointerInput::open(GtkWidget* widget, std::string& reason) {
  auto device = openWaylandInput();
  if (device == nullptr) device = openX11Input(gtk_widget_get_display(widget), reason);
  if (device == nullptr) return nullptr;
  return std::unique_ptr<PointerInput>(new PointerInput(widget, std::move(device)));
}

PointerInput::PointerInput(GtkWidget* widget, std::unique_ptr<InputDevice> device)
    : widget_(widget), device_(std::move(device)) {}

PointerInput::~PointerInput() {
  for (const int button : pressed_) device_->setButton(button, false);
}

void PointerInput::move(CGPoint to) {
  device_->move(gtk_native_get_surface(gtk_widget_get_native(widget_)), onSurface(widget_, to));
  position_ = to;
}

void PointerInput::moveBy(CGPoint way) { move({position_.x + way.x, position_.y + way.y}); }

void PointerInput::press(int button) {
  device_->setButton(button, true);
  pressed_.insert(button);
}

void PointerInput::release(int button) {
  device_->setButton(button, false);
  pressed_.erase(button);
}

void PointerInput::click(CGPoint at) {
  move(at);
  press();
  release();
}

void PointerInput::moveInSteps(CGPoint to, int steps) {
  const CGPoint from = position_;
  for (int step = 1; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    move({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
  }
}

void PointerInput::type(std::span<const unsigned> chord) {
  for (const unsigned key : chord) device_->setKey(key, true);
  for (const unsigned key : std::views::reverse(chord)) device_->setKey(key, false);
}

bool PointerInput::hasFingers() const { return device_->hasFingers(); }

void PointerInput::touch(int finger, TouchPhase phase, CGPoint at) {
  device_->touch(finger, phase, onSurface(widget_, at));
}

}  // namespace corvane::demo
