/// Awaiting the operations of the agent view in coroutines: `co_await awaiting(*view).getCartStatus()`.
#pragma once

#include <concepts>
#include <coroutine>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "corvane/agent_view/agent_operations.h"
#include "corvane/bridge/completion.h"
#include "corvane/product/product.h"

namespace corvane {

/// Thrown into a coroutine whose operation will never be completed: its view or the backend is just ending, or a holder
/// of views held none. The coroutine should end, too: asking again is futile, and a view is only safe to touch through
/// a shared pointer.
class OperationCancelled final : public std::exception {
 public:
  [[nodiscard]] const char* what() const noexcept override { return "operation cancelled"; }
};

/// An operation that has begun. `co_await` gives its outcome, which is what its completion would have received.
///
/// The coroutine goes on inside the completion, or does not pause where the outcome is there already. So several
/// operations can be begun and then awaited one after the other.
///
/// Ownership: owned by whoever asked. When it ends, the operation goes on and its outcome is dropped; a coroutine may
/// be
///            destroyed while it awaits. Nothing here holds the view.
/// Threads:   main thread only.
/// Failure:   an outcome as of any completion. `OperationCancelled` is thrown where there will be none, and
///            `std::logic_error` where an operation is awaited twice. A coroutine is resumed by code that does not
///            throw, so its promise must not let an exception out.
template <class Outcome>
class [[nodiscard]] Awaited {
  struct State;
  class Awaiter;
  class Completion;

 public:
  /// Begins an operation: hands `operation` the completion that it is to call.
  template <std::invocable<Completion> Operation>
  explicit Awaited(Operation&& operation) : state_(std::make_shared<State>()) {
    std::forward<Operation>(operation)(Completion(state_));
  }

  [[nodiscard]] Awaiter operator co_await() {
    if (!state_) throw std::logic_error("an operation is awaited once");
    return Awaiter(std::move(state_));
  }

 private:
  std::shared_ptr<State> state_;
};

/// Shared by those who wait and the completion, as either may end first.
template <class Outcome>
struct Awaited<Outcome>::State {
  bool isSettled = false;
  std::optional<Outcome> outcome;
  std::coroutine_handle<> waiting;

  void settle() {
    isSettled = true;
    if (const auto next = std::exchange(waiting, nullptr)) next.resume();
  }
};

/// Lives in the coroutine that waits, so that its end is seen.
template <class Outcome>
class Awaited<Outcome>::Awaiter {
 public:
  explicit Awaiter(std::shared_ptr<State> state) : state_(std::move(state)) {}
  Awaiter(const Awaiter&) = delete;
  Awaiter& operator=(const Awaiter&) = delete;
  ~Awaiter() { state_->waiting = nullptr; }

  [[nodiscard]] bool await_ready() const noexcept { return state_->isSettled; }
  void await_suspend(std::coroutine_handle<> waiting) noexcept { state_->waiting = waiting; }
  [[nodiscard]] Outcome await_resume() {
    if (!state_->outcome) throw OperationCancelled();
    return std::move(*state_->outcome);
  }

 private:
  std::shared_ptr<State> state_;
};

/// Goes where the operation's completion goes. Its end without a call means that there will be no outcome.
template <class Outcome>
class Awaited<Outcome>::Completion {
 public:
  explicit Completion(std::shared_ptr<State> state) : state_(std::move(state)) {}
  Completion(Completion&&) noexcept = default;
  Completion& operator=(Completion&&) = delete;
  ~Completion() {
    if (state_) state_->settle();
  }

  void operator()(Outcome outcome) {
    const auto state = std::move(state_);
    state->outcome.emplace(std::move(outcome));
    state->settle();
  }

 private:
  std::shared_ptr<State> state_;
};

/// The operations of an agent view, or of a holder of one, without their completions. Each begins at once.
///
/// It refers to the view or the holder, and is made where it is used, by `awaiting`.
class AwaitedOperations {
 public:
  using Done = Awaited<std::optional<AgentError>>;
  template <class Value>
  using Answer = Awaited<AgentResult<Value>>;

  explicit AwaitedOperations(AgentOperations& operations CORVANE_LIFETIMEBOUND) : operations_(operations) {}

  Done addProductToCall(Product product) {
    return Done([&](auto done) { operations_.addProductToCall(std::move(product), std::move(done)); });
  }
  Answer<std::vector<std::string>> getProductsInCall() {
    return Answer<std::vector<std::string>>([&](auto done) { operations_.getProductsInCall(std::move(done)); });
  }
  Answer<bool> isProductInCall(std::string sku) {
    return Answer<bool>([&](auto done) { operations_.isProductInCall(std::move(sku), std::move(done)); });
  }
  Done removeProductInCall(std::string sku) {
    return Done([&](auto done) { operations_.removeProductInCall(std::move(sku), std::move(done)); });
  }
  Done addProductToCart(std::string sku) {
    return Done([&](auto done) { operations_.addProductToCart(std::move(sku), std::move(done)); });
  }
  Done updateProductInCart(std::string sku, std::int64_t quantity) {
    return Done([&](auto done) { operations_.updateProductInCart(std::move(sku), quantity, std::move(done)); });
  }
  Answer<std::vector<std::string>> getProductsInCart() {
    return Answer<std::vector<std::string>>([&](auto done) { operations_.getProductsInCart(std::move(done)); });
  }
  Answer<CartQuantities> getCartStatus() {
    return Answer<CartQuantities>([&](auto done) { operations_.getCartStatus(std::move(done)); });
  }
  Answer<bool> isProductInCart(std::string sku) {
    return Answer<bool>([&](auto done) { operations_.isProductInCart(std::move(sku), std::move(done)); });
  }
  Done removeProductInCart(std::string sku) {
    return Done([&](auto done) { operations_.removeProductInCart(std::move(sku), std::move(done)); });
  }
  Done decrementProductInCart(std::string sku) {
    return Done([&](auto done) { operations_.decrementProductInCart(std::move(sku), std::move(done)); });
  }

 private:
  AgentOperations& operations_;
};

/// `awaiting(*view)`, `awaiting(MinimizedState::shared())`, `awaiting(*context)`.
[[nodiscard]] inline AwaitedOperations awaiting(AgentOperations& operations CORVANE_LIFETIMEBOUND) {
  return AwaitedOperations(operations);
}

/// A coroutine that begins at once and that nobody waits for, such as one that an event handler starts.
///
/// Ownership: it owns itself until it ends. What it refers to must live as long, so give it shared pointers and values
///            as parameters, and let it be no lambda with captures. A shared pointer keeps the view, and so its call,
///            until the coroutine ends. To let the view go meanwhile, begin the operation in one statement, through a
///            weak pointer, and await it in the next.
/// Failure:   ends silently with an operation that was cancelled. Any other exception that leaves it ends the program.
struct DetachedTask {
  struct promise_type {
    DetachedTask get_return_object() const noexcept { return {}; }
    std::suspend_never initial_suspend() const noexcept { return {}; }
    std::suspend_never final_suspend() const noexcept { return {}; }
    void return_void() const noexcept {}
    void unhandled_exception() const noexcept {
      try {
        throw;
      } catch (const OperationCancelled&) {  // NOLINT(bugprone-empty-catch): the coroutine just ends
      } catch (...) {
        std::terminate();
      }
    }
  };
};

}  // namespace corvane
