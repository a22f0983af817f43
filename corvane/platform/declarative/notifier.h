/// Telling others that something happens, and listening to it.
#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "corvane/export.h"

namespace corvane {

/// Keeps somebody listening; its end ends that.
class Subscription {
 public:
  Subscription() = default;
  explicit Subscription(std::move_only_function<void()> end) : end_(std::move(end)) {}
  Subscription(Subscription&& other) noexcept : end_(std::exchange(other.end_, nullptr)) {}
  Subscription& operator=(Subscription&& other) noexcept {
    // By way of a third one, so that what this one held ends here.
    const Subscription previous(std::move(*this));
    end_ = std::exchange(other.end_, nullptr);
    return *this;
  }
  ~Subscription() { end(); }

  void end() {
    if (auto end = std::exchange(end_, nullptr)) end();
  }

 private:
  std::move_only_function<void()> end_;
};

/// Calls whoever listens, in the order in which they began to.
///
/// Threads: main thread only. Listeners may do anything: end subscriptions, their own included, begin others (which are
///          not called in this round), notify again, end the notifier.
template <class... Arguments>
class Notifier {
 public:
  using Handler = std::function<void(Arguments...)>;

  [[nodiscard]] Subscription subscribe(Handler handler) const {
    auto listener = std::make_shared<Listener>(std::move(handler));
    listeners_->push_back(listener);
    return Subscription([listeners = std::weak_ptr(listeners_), listener = std::move(listener)] {
      listener->isEnded = true;
      if (const auto list = listeners.lock()) std::erase(*list, listener);
    });
  }

  /// Differs from that of every other notifier, also of one that has ended while a subscription to it is held.
  [[nodiscard]] const void* identity() const { return listeners_.get(); }

  void notify(Arguments... arguments) const {
    const auto listeners = *listeners_;
    for (const auto& listener : listeners) {
      if (!listener->isEnded) listener->handler(arguments...);
    }
  }

 private:
  struct Listener {
    explicit Listener(Handler handler) : handler(std::move(handler)) {}
    Handler handler;
    bool isEnded = false;
  };

  std::shared_ptr<std::vector<std::shared_ptr<Listener>>> listeners_ =
      std::make_shared<std::vector<std::shared_ptr<Listener>>>();
};

}  // namespace corvane
