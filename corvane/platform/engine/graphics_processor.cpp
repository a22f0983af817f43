#include "corvane/platform/engine/graphics_processor.h"

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace corvane::engine {

bool hasGraphicsProcessor() {
  const char* forced = std::getenv("LIBGL_ALWAYS_SOFTWARE");
  if (forced != nullptr && std::string_view(forced) != "0" && std::string_view(forced) != "false") return false;
  std::error_code error;
  for (const auto& device : std::filesystem::directory_iterator("/dev/dri", error)) {
    if (!device.path().filename().string().starts_with("renderD")) continue;
    if (access(device.path().c_str(), R_OK | W_OK) == 0) return true;
  }
  return false;
}

}  // namespace corvane::engine
