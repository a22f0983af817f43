/// "Only if it still lives": work that is stored for later without keeping its owner alive.
#pragma once

#include <functional>
#include <memory>
#include <utility>

namespace corvane {

/// A callable that calls `work(owner, arguments...)` while the owner lives and does nothing afterwards. The owner is
/// kept alive for the length of the call, so that the work may drop its last other holder.
template <class Owner, class Work>
auto whileAlive(std::weak_ptr<Owner> owner, Work work) {
  return [owner = std::move(owner), work = std::move(work)]<class... Arguments>(Arguments&&... arguments) mutable {
    if (const auto alive = owner.lock()) std::invoke(work, *alive, std::forward<Arguments>(arguments)...);
  };
}

}  // namespace corvane
