#include "corvane/platform/engine/responsiveness.h"

#include <chrono>
#include <utility>

#include "corvane/platform/foundation/while_alive.h"

namespace corvane::engine {

namespace {

/// What is quick needs no question.
constexpr std::chrono::milliseconds delay{1500};
constexpr std::chrono::milliseconds patience{1500};

}  // namespace

Responsiveness::Responsiveness(std::shared_ptr<RunLoop> runLoop, Question question,
                               std::weak_ptr<WebEngineClient> client)
    : runLoop_(std::move(runLoop)), question_(std::move(question)), client_(std::move(client)) {}

void Responsiveness::expectAnswer() {
  if (state_ != State::idle) return;
  state_ = State::waiting;
  after(delay, &Responsiveness::ask);
}

void Responsiveness::after(RunLoop::Time time, void (Responsiveness::*step)()) {
  runLoop_->schedule(time, whileAlive(weak_from_this(), [step, number = ++step_](Responsiveness& self) {
                       if (self.step_ == number) (self.*step)();
                     }));
}

void Responsiveness::ask() {
  state_ = State::asking;
  after(patience, &Responsiveness::fail);
  question_(whileAlive(weak_from_this(), [number = step_](Responsiveness& self) {
    if (self.step_ == number) self.forget();
  }));
}

void Responsiveness::fail() { setResponding(false); }

void Responsiveness::forget() {
  ++step_;
  state_ = State::idle;
  setResponding(true);
}

void Responsiveness::setResponding(bool isResponding) {
  if (std::exchange(isResponding_, isResponding) == isResponding) return;
  if (const auto client = client_.lock()) client->engineDidChangeResponsiveness(isResponding);
}

}  // namespace corvane::engine
