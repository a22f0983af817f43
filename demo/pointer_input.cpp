#include "demo/pointer_input.h"

#include <X11/extensions/XTest.h>
#include <gdk/x11/gdkx.h>
#include <gtk/gtk.h>

#include <cmath>
#include <set>
#include <utility>

namespace corvane::demo {

/// A connection of its own, as that of another program would be.
struct PointerInput::Connection {
  Display* display;
  GtkWidget* widget;
  CGPoint position{};
  std::set<int> pressed{};

  Connection(Display* opened, GtkWidget* reference) : display(opened), widget(reference) {}
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() {
    for (const int button : pressed) XTestFakeButtonEvent(display, static_cast<unsigned>(button), False, CurrentTime);
    XCloseDisplay(display);
  }
};

std::unique_ptr<PointerInput> PointerInput::open(GtkWidget* widget, std::string& reason) {
  GdkDisplay* const gdkDisplay = gtk_widget_get_display(widget);
  Display* const display = GDK_IS_X11_DISPLAY(gdkDisplay) ? XOpenDisplay(gdk_display_get_name(gdkDisplay)) : nullptr;
  if (display == nullptr) {
    reason = "The display is no X server";
    return nullptr;
  }
  auto connection = std::make_unique<Connection>(display, widget);
  int event = 0;
  int error = 0;
  int major = 0;
  int minor = 0;
  if (XTestQueryExtension(display, &event, &error, &major, &minor) == False) {
    reason = "The X server lacks the test extension";
    return nullptr;
  }
  return std::unique_ptr<PointerInput>(new PointerInput(std::move(connection)));
}

PointerInput::PointerInput(std::unique_ptr<Connection> connection) : connection_(std::move(connection)) {}

PointerInput::~PointerInput() = default;

void PointerInput::move(CGPoint to) {
  Display* const display = connection_->display;
  GtkNative* const native = gtk_widget_get_native(connection_->widget);
  GdkSurface* const surface = gtk_native_get_surface(native);
  double left = 0;
  double top = 0;
  gtk_native_get_surface_transform(native, &left, &top);
  graphene_point_t onNative{};
  const graphene_point_t point{static_cast<float>(to.x), static_cast<float>(to.y)};
  if (!gtk_widget_compute_point(connection_->widget, reinterpret_cast<GtkWidget*>(native), &point, &onNative)) return;
  const int scale = gdk_surface_get_scale_factor(surface);
  const auto pixel = [&](double position) { return static_cast<int>(std::lround(position * scale)); };
  int x = 0;
  int y = 0;
  Window ignored = 0;
  XTranslateCoordinates(display, GDK_SURFACE_XID(surface), DefaultRootWindow(display), pixel(onNative.x + left),
                        pixel(onNative.y + top), &x, &y, &ignored);
  XTestFakeMotionEvent(display, -1, x, y, CurrentTime);
  XFlush(display);
  connection_->position = to;
}

void PointerInput::moveBy(CGPoint way) {
  const CGPoint from = connection_->position;
  move({from.x + way.x, from.y + way.y});
}

void PointerInput::press(int button) {
  XTestFakeButtonEvent(connection_->display, static_cast<unsigned>(button), True, CurrentTime);
  XFlush(connection_->display);
  connection_->pressed.insert(button);
}

void PointerInput::release(int button) {
  XTestFakeButtonEvent(connection_->display, static_cast<unsigned>(button), False, CurrentTime);
  XFlush(connection_->display);
  connection_->pressed.erase(button);
}

void PointerInput::click(CGPoint at) {
  move(at);
  press();
  release();
}

void PointerInput::moveInSteps(CGPoint to, int steps) {
  const CGPoint from = connection_->position;
  for (int step = 1; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    move({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
  }
}

}  // namespace corvane::demo
