#include "corvane/platform/qt/qt_responsiveness.h"

#include <chrono>
#include <utility>

#include "corvane/platform/foundation/while_alive.h"

namespace corvane::qt {

namespace {

/// What is quick needs no question; together they are as long as the other engine waits.
constexpr std::chrono::milliseconds delay{1500};
constexpr std::chrono::milliseconds patience{1500};

}  // namespace

Responsiveness::Responsiveness(std::shared_ptr<Evaluations> evaluations, std::weak_ptr<WebEngineClient> client)
    : evaluations_(std::move(evaluations)), client_(std::move(client)), timer_(std::make_unique<QTimer>()) {
  timer_->setSingleShot(true);
  timer_->callOnTimeout(timer_.get(), [this] { isAsking_ ? fail() : ask(); });
}

void Responsiveness::expectAnswer() {
  if (timer_ != nullptr && !timer_->isActive() && isResponding_) timer_->start(delay);
}

void Responsiveness::ask() {
  isAsking_ = true;
  timer_->start(patience);
  evaluations_->run("0",
                    whileAlive(weak_from_this(), [number = ++question_](Responsiveness& self, const EvaluationResult&) {
                      if (self.question_ == number) self.answered();
                    }));
}

void Responsiveness::fail() {
  isResponding_ = false;
  if (const auto client = client_.lock()) client->engineDidChangeResponsiveness(false);
}

void Responsiveness::forget() {
  ++question_;
  answered();
}

void Responsiveness::end() { timer_.reset(); }

void Responsiveness::answered() {
  if (timer_ == nullptr) return;
  timer_->stop();
  isAsking_ = false;
  if (std::exchange(isResponding_, true)) return;
  if (const auto client = client_.lock()) client->engineDidChangeResponsiveness(true);
}

}  // namespace corvane::qt
