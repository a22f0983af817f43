#include "corvane/platform/declarative/view_pass.h"

namespace corvane {

ViewPass::ViewPass(Kind kind, ViewUpdater& updater, ViewContainer& container)
    : kind_(kind), updater_(updater), container_(&container) {
  container.begin();
}

void ViewPass::runActions() {
  for (const ViewAction& action : std::exchange(disappearActions_, {})) action();
  for (const ViewAction& action : std::exchange(appearActions_, {})) action();
}

}  // namespace corvane
