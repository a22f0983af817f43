#include <X11/extensions/XTest.h>
#include <gdk/x11/gdkx.h>

#include <cmath>

#include "demo/gtk/input_device.h"

namespace corvane::demo {

namespace {

/// A connection of its own, as that of another program would be.
class X11Input final : public InputDevice {
 public:
  explicit X11Input(Display* display) : display_(display) {}
  X11Input(const X11Input&) = delete;
  X11Input& operator=(const X11Input&) = delete;
  ~X11Input() override { XCloseDisplay(display_); }

  void move(GdkSurface* surface, CGPoint to) override {
    const int scale = gdk_surface_get_scale_factor(surface);
    const auto pixel = [&](double position) { return static_cast<int>(std::lround(position * scale)); };
    int x = 0;
    int y = 0;
    Window ignored = 0;
    XTranslateCoordinates(display_, GDK_SURFACE_XID(surface), DefaultRootWindow(display_), pixel(to.x), pixel(to.y), &x,
                          &y, &ignored);
    XTestFakeMotionEvent(display_, -1, x, y, CurrentTime);
    XFlush(display_);
  }
  void setButton(int button, bool isDown) override {
    XTestFakeButtonEvent(display_, static_cast<unsigned>(button), isDown ? True : False, CurrentTime);
    XFlush(display_);
  }
  void setKey(unsigned key, bool isDown) override {
    XTestFakeKeyEvent(display_, XKeysymToKeycode(display_, key), isDown ? True : False, CurrentTime);
    XFlush(display_);
  }

 private:
  Display* display_;
};

}  // namespace

std::unique_ptr<InputDevice> openX11Input(GdkDisplay* display, std::string& reason) {
  Display* const opened = GDK_IS_X11_DISPLAY(display) ? XOpenDisplay(gdk_display_get_name(display)) : nullptr;
  if (opened == nullptr) {
    reason = "The display is no X server, and no compositor that tools/wayland/run.sh has started";
    return nullptr;
  }
  auto device = std::make_unique<X11Input>(opened);
  int event = 0;
  int error = 0;
  int major = 0;
  int minor = 0;
  if (XTestQueryExtension(opened, &event, &error, &major, &minor) == False) {
    reason = "The X server lacks the test extension";
    return nullptr;
  }
  return device;
}

}  // namespace corvane::demo
