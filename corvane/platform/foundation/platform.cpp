#include "corvane/platform/foundation/platform.h"

#include <cassert>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "corvane/platform/foundation/main_thread_state.h"
#include "corvane/platform/foundation/run_loop.h"

namespace corvane {

namespace {

PlatformInstallation* installation = nullptr;

[[noreturn]] void endWithoutPlatform() {
  static_cast<void>(
      std::fputs("corvane: no backend is installed. Call install() of gtk::Backend, of qt::Backend or, in tests, of "
                 "headless::Backend before you use the framework. Keep what it gives, and end it last.\n",
                 stderr));
  std::abort();
}

}  // namespace

std::string PlatformInstallation::refusal() {
  return installation == nullptr ? "" : "A backend is installed already; there can be one at a time";
}

PlatformInstallation::PlatformInstallation(Platform platform)
    : platform_(std::move(platform)), state_(std::make_unique<MainThreadState>()) {
  assert(installation == nullptr);
  installation = this;
  platform_detail::installedState = state_.get();
}

PlatformInstallation::~PlatformInstallation() {
  platform_.runLoop->end();
  platform_detail::installedState = nullptr;
  installation = nullptr;
}

const Platform* PlatformInstallation::findPlatform() {
  return installation == nullptr ? nullptr : &installation->platform_;
}

const Platform& PlatformInstallation::platform() {
  if (installation == nullptr) endWithoutPlatform();
  return installation->platform_;
}

MainThreadState* platform_detail::installedState = nullptr;

MainThreadState& mainThreadState() {
  MainThreadState* const state = findMainThreadState();
  if (state == nullptr) endWithoutPlatform();
  return *state;
}

void platform_detail::requireMainThread(const std::source_location& door) {
  const Platform* const platform = PlatformInstallation::findPlatform();
  if (platform == nullptr || platform->thread == std::this_thread::get_id()) return;
  static_cast<void>(std::fprintf(stderr,
                                 "corvane: %s was called on another thread than the main one, which installed the "
                                 "backend. Call it there: RunLoop::main().post([] { ... }).\n",
                                 door.function_name()));
  std::abort();
}

}  // namespace corvane
