#include "corvane/platform/declarative/view_pass.h"

namespace corvane {

ViewPass::ViewPass(ViewUpdater& updater, ViewContainer& container) : updater_(updater), container_(&container) {
  container.begin();
}

void ViewPass::runActions() {
  for (const ViewAction& action : std::exchange(disappearActions_, {})) action();
  for (const ViewAction& action : std::exchange(appearActions_, {})) action();
}

}  // namespace corvane
