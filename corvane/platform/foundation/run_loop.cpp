#include "corvane/platform/foundation/run_loop.h"

#include <cassert>

namespace corvane {

namespace {

RunLoop* mainLoop = nullptr;

}  // namespace

RunLoop::~RunLoop() = default;

RunLoop& RunLoop::main() {
  assert(mainLoop != nullptr && "install a backend before using the framework");
  return *mainLoop;
}

bool RunLoop::hasMain() { return mainLoop != nullptr; }

void RunLoop::installMain(RunLoop* loop) { mainLoop = loop; }

}  // namespace corvane
