// Stands in where the library was not there that lets a program move the mouse of an X server.
#include "demo/gtk/input_device.h"

namespace corvane::demo {

std::unique_ptr<InputDevice> openX11Input(GdkDisplay* /*display*/, std::string& reason) {
  reason = "This was built without libXtst";
  return nullptr;
}

}  // namespace corvane::demo
