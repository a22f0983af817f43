// A mouse, a keyboard and fingers for a headless Weston, moved by the lines that come out of a pipe.
#include <fcntl.h>
#include <libweston/libweston.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <set>
#include <sstream>
#include <string>

// The library exports these, and its package leaves their header out.
// NOLINTBEGIN(readability-identifier-naming): the names are the compositor's
extern "C" {
void weston_seat_init(weston_seat* seat, weston_compositor* compositor, const char* name);
int weston_seat_init_pointer(weston_seat* seat);
int weston_seat_init_keyboard(weston_seat* seat, xkb_keymap* keymap);
int weston_seat_init_touch(weston_seat* seat);
weston_touch_device* weston_touch_create_touch_device(weston_touch* touch, const char* path, void* data,
                                                      const weston_touch_device_ops* operations);
void notify_motion_absolute(weston_seat* seat, const timespec* time, double x, double y);
void notify_button(weston_seat* seat, const timespec* time, std::int32_t button, wl_pointer_button_state state);
void notify_pointer_frame(weston_seat* seat);
void notify_key(weston_seat* seat, const timespec* time, std::uint32_t key, wl_keyboard_key_state state,
                weston_key_state_update update);
void notify_touch_normalized(weston_touch_device* device, const timespec* time, int finger, double x, double y,
                             const weston_point2d_device_normalized* normalized, int kind);
void notify_touch_frame(weston_touch_device* device);
}
// NOLINTEND(readability-identifier-naming)

namespace {

class VirtualInput {
 public:
  VirtualInput(weston_compositor* compositor, const char* pipe) : pipe_(open(pipe, O_RDWR | O_NONBLOCK | O_CLOEXEC)) {
    weston_seat_init(&seat_, compositor, "virtual");
    weston_seat_init_pointer(&seat_);
    weston_seat_init_keyboard(&seat_, nullptr);
    weston_seat_init_touch(&seat_);
    screen_ = weston_touch_create_touch_device(seat_.touch_state, "virtual", nullptr, nullptr);
    wl_event_loop_add_fd(
        wl_display_get_event_loop(compositor->wl_display), pipe_, WL_EVENT_READABLE,
        [](int, std::uint32_t, void* input) { return static_cast<VirtualInput*>(input)->read(); }, this);
  }

 private:
  int read() {
    char bytes[4096];
    const ssize_t count = ::read(pipe_, bytes, sizeof bytes);
    if (count > 0) waiting_.append(bytes, static_cast<std::size_t>(count));
    for (std::size_t end = 0; (end = waiting_.find('\n')) != std::string::npos; waiting_.erase(0, end + 1)) {
      run(waiting_.substr(0, end));
    }
    return 0;
  }

  void run(const std::string& line) {
    std::istringstream words(line);
    std::string command;
    words >> command;
    timespec time{};
    weston_compositor_get_time(&time);
    if (command == "move") {
      double x = 0;
      double y = 0;
      words >> x >> y;
      notify_motion_absolute(&seat_, &time, x, y);
      notify_pointer_frame(&seat_);
    } else if (command == "button" || command == "key") {
      unsigned code = 0;
      bool isDown = false;
      words >> code >> isDown;
      if (command == "key") {
        notify_key(&seat_, &time, code, isDown ? WL_KEYBOARD_KEY_STATE_PRESSED : WL_KEYBOARD_KEY_STATE_RELEASED,
                   STATE_UPDATE_AUTOMATIC);
      } else {
        notify_button(&seat_, &time, static_cast<std::int32_t>(code),
                      isDown ? WL_POINTER_BUTTON_STATE_PRESSED : WL_POINTER_BUTTON_STATE_RELEASED);
        notify_pointer_frame(&seat_);
      }
    } else if (command == "cancel") {
      cancelFingers(time);
    } else {
      int finger = 0;
      double x = 0;
      double y = 0;
      words >> finger >> x >> y;
      touch(time, finger, x, y, command == "down" ? WL_TOUCH_DOWN : command == "up" ? WL_TOUCH_UP : WL_TOUCH_MOTION);
    }
  }

  void touch(const timespec& time, int finger, double x, double y, int kind) {
    if (kind == WL_TOUCH_DOWN) fingers_.insert(finger);
    if (kind != WL_TOUCH_DOWN && !fingers_.contains(finger)) return;
    if (kind == WL_TOUCH_UP) fingers_.erase(finger);
    notify_touch_normalized(screen_, &time, finger, x, y, nullptr, kind);
    notify_touch_frame(screen_);
  }

  /// The compositor's own way does nothing unless a grab is active. The fingers then leave without anybody's notice.
  void cancelFingers(const timespec& time) {
    weston_touch* const touched = seat_.touch_state;
    wl_resource* resource = nullptr;
    wl_resource_for_each(resource, &touched->focus_resource_list) wl_touch_send_cancel(resource);
    weston_touch_set_focus(touched, nullptr);
    while (!fingers_.empty()) touch(time, *fingers_.begin(), 0, 0, WL_TOUCH_UP);
  }

  int pipe_;
  weston_seat seat_{};
  weston_touch_device* screen_ = nullptr;
  std::set<int> fingers_;
  std::string waiting_;
};

}  // namespace

/// The compositor ends with its program, and the input with it.
// NOLINTNEXTLINE(readability-identifier-naming,readability-non-const-parameter): the compositor looks for it
extern "C" __attribute__((visibility("default"))) int wet_module_init(weston_compositor* compositor, int*, char**) {
  const char* const pipe = std::getenv("CORVANE_INPUT");
  if (pipe == nullptr || mkfifo(pipe, 0600) != 0) return -1;
  static const auto input = std::make_unique<VirtualInput>(compositor, pipe);
  return 0;
}
