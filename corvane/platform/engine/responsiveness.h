/// Whether a page answers.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::engine {

/// Tells the client when a page has not answered for some seconds, and when it does again. A page of which nobody wants
/// anything is left in peace.
///
/// Ownership: owned by the engine; the run loop and answers hold it weakly.
/// Threads:   main thread only.
class Responsiveness : public std::enable_shared_from_this<Responsiveness> {
 public:
  /// Asks the page anything, and calls the function with its answer.
  using Question = std::function<void(std::function<void()>)>;

  Responsiveness(std::shared_ptr<RunLoop> runLoop, Question question, std::weak_ptr<WebEngineClient> client);

  /// The user or the host has wanted something of the page. Costs nothing while that is known.
  void expectAnswer();
  /// Another document, or none: nothing is expected of the one that was there.
  void forget();
  /// What is known from elsewhere.
  void setResponding(bool isResponding);

 private:
  enum class State : std::uint8_t { idle, waiting, asking };

  void ask();
  void fail();
  void after(RunLoop::Time time, void (Responsiveness::*step)());

  std::shared_ptr<RunLoop> runLoop_;
  Question question_;
  std::weak_ptr<WebEngineClient> client_;
  State state_ = State::idle;
  /// Changes with whatever makes earlier timers and answers meaningless.
  std::uint64_t step_ = 0;
  bool isResponding_ = true;
};

}  // namespace corvane::engine
