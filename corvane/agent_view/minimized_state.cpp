#include "corvane/agent_view/minimized_state.h"

#include <utility>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/minimized/minimized_store.h"
#include "corvane/platform/foundation/platform.h"

namespace corvane {

MinimizedState& MinimizedState::shared() {
  static auto* const state = new MinimizedState;
  return *state;
}

std::shared_ptr<VelnorAgentView> MinimizedState::agentView() const {
  assertMainThread();
  return MinimizedStore::shared().agentView();
}

bool MinimizedState::isMinimized() const {
  assertMainThread();
  const auto view = agentView();
  return view != nullptr && view->isMinimized();
}

void MinimizedState::bringToFront() const {
  assertMainThread();
  const auto view = agentView();
  if (view == nullptr) return;
  if (const auto superview = view->superview()) superview->bringSubviewToFront(view);
}

void MinimizedState::moveTo(const std::shared_ptr<UIView>& view) const {
  assertMainThread();
  const auto held = agentView();
  if (held == nullptr || view == nullptr || held->superview() == view) return;
  view->addSubview(held);
  view->bringSubviewToFront(held);
}

void MinimizedState::registerRestoreAction(RestoreAction action) {
  assertMainThread();
  MinimizedStore::shared().setRestoreAction(std::move(action));
}

void MinimizedState::resetRestoreAction() {
  assertMainThread();
  MinimizedStore::shared().setRestoreAction(nullptr);
}

void MinimizedState::remove() const {
  assertMainThread();
  if (const auto view = agentView()) view->removeFromSuperview();
  MinimizedStore::shared().setAgentView(nullptr);
}

void MinimizedState::maximize() const {
  assertMainThread();
  if (const auto view = agentView()) view->maximizeView();
}

RequestChannel* MinimizedState::requestChannel() const {
  const auto view = agentView();
  return view == nullptr ? nullptr : AgentViewAccess::parts(*view).requests.get();
}

}  // namespace corvane
