/// Which of the engine's objects still exist.
#pragma once

#include <memory>

namespace corvane::soak {

/// Counts objects until their memory is given back; a weak reference would be gone as soon as they are disposed of.
class EngineObjects {
 public:
  /// Any object of the engine's object system.
  void watch(void* object);
  [[nodiscard]] int aliveCount() const { return *aliveCount_; }

 private:
  std::shared_ptr<int> aliveCount_ = std::make_shared<int>(0);
};

}  // namespace corvane::soak
