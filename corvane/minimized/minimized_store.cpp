#include "corvane/minimized/minimized_store.h"

#include <utility>

namespace corvane {

MinimizedStore& MinimizedStore::shared() {
  static auto* const store = new MinimizedStore;
  return *store;
}

void MinimizedStore::setAgentView(std::shared_ptr<VelnorAgentView> view) {
  // The previous view may end here; by then the store already says what it holds now.
  const auto previous = std::exchange(agentView_, std::move(view));
}

}  // namespace corvane
