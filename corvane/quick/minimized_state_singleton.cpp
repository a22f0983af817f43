#include "corvane/quick/minimized_state_singleton.h"

#include "corvane/agent_view/minimized_state.h"

namespace corvane::quick {

MinimizedStateSingleton::MinimizedStateSingleton() : QmlOperations(MinimizedState::shared()) {}

bool MinimizedStateSingleton::isMinimized() const { return MinimizedState::shared().isMinimized(); }

void MinimizedStateSingleton::bringToFront() { MinimizedState::shared().bringToFront(); }

void MinimizedStateSingleton::maximize() { MinimizedState::shared().maximize(); }

void MinimizedStateSingleton::remove() { MinimizedState::shared().remove(); }

}  // namespace corvane::quick
