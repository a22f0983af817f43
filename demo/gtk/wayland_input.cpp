#include <fcntl.h>
#include <gdk/gdk.h>
#include <linux/input-event-codes.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>
#include <utility>

#include "demo/gtk/input_device.h"

namespace corvane::demo {

namespace {

constexpr std::array buttons{BTN_LEFT, BTN_MIDDLE, BTN_RIGHT};
constexpr auto keys = std::to_array<std::pair<unsigned, int>>({{GDK_KEY_Tab, KEY_TAB},
                                                               {GDK_KEY_space, KEY_SPACE},
                                                               {GDK_KEY_Return, KEY_ENTER},
                                                               {GDK_KEY_Escape, KEY_ESC},
                                                               {GDK_KEY_Left, KEY_LEFT},
                                                               {GDK_KEY_Right, KEY_RIGHT},
                                                               {GDK_KEY_Up, KEY_UP},
                                                               {GDK_KEY_Down, KEY_DOWN},
                                                               {GDK_KEY_F6, KEY_F6},
                                                               {GDK_KEY_a, KEY_A},
                                                               {GDK_KEY_Shift_L, KEY_LEFTSHIFT},
                                                               {GDK_KEY_Control_L, KEY_LEFTCTRL}});

/// Writes to the compositor's input module, which reads a command from each line.
class WaylandInput final : public InputDevice {
 public:
  explicit WaylandInput(int pipe) : pipe_(pipe) {}
  WaylandInput(const WaylandInput&) = delete;
  WaylandInput& operator=(const WaylandInput&) = delete;
  ~WaylandInput() override { close(pipe_); }

  /// A mouse that is where it is to go tells nobody, and a window that is new under it would know of none.
  void move(GdkSurface* /*surface*/, CGPoint to) override {
    if (to == position_) send("move", to.x + 1, to.y);
    send("move", to.x, to.y);
    position_ = to;
  }
  void setButton(int button, bool isDown) override {
    send("button", buttons.at(static_cast<std::size_t>(button) - 1), isDown);
  }
  void setKey(unsigned key, bool isDown) override {
    for (const auto& [value, code] : keys) {
      if (value == key) send("key", code, isDown);
    }
  }
  [[nodiscard]] bool hasFingers() const override { return true; }
  void touch(int finger, TouchPhase phase, CGPoint point) override {
    constexpr std::array commands{"down", "drag", "up", "cancel"};
    send(commands.at(static_cast<std::size_t>(phase)), finger, point.x, point.y);
  }

 private:
  template <class... Words>
  void send(const Words&... words) const {
    std::ostringstream line;
    ((line << words << ' '), ...) << '\n';
    const std::string text = line.str();
    // A short line is written as a whole, or not at all where nobody reads any more.
    if (write(pipe_, text.data(), text.size()) < 0) std::perror("input");
  }

  int pipe_;
  CGPoint position_{-1, -1};
};

}  // namespace

std::unique_ptr<InputDevice> openWaylandInput() {
  const char* const path = std::getenv("CORVANE_INPUT");
  const int pipe = path != nullptr ? open(path, O_WRONLY | O_CLOEXEC | O_NONBLOCK) : -1;
  return pipe < 0 ? nullptr : std::make_unique<WaylandInput>(pipe);
}

}  // namespace corvane::demo
