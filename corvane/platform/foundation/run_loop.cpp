#include "corvane/platform/foundation/run_loop.h"

#include "corvane/platform/foundation/platform.h"

namespace corvane {

RunLoop::~RunLoop() = default;

RunLoop& RunLoop::main() { return *PlatformInstallation::platform().runLoop; }

bool RunLoop::hasMain() { return PlatformInstallation::findPlatform() != nullptr; }

}  // namespace corvane
