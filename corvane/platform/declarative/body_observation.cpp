#include "corvane/platform/declarative/body_observation.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/declarative/observable_object.h"
#include "corvane/platform/foundation/main_thread_state.h"

namespace corvane {

BodyObservation::Evaluation::Evaluation(BodyObservation& observation)
    : observation_(observation), outer_(std::exchange(mainThreadState().bodyObservation, &observation)) {
  // What is read from now on has the changes that were announced; what is still to change says so when it is read.
  observation.isOutdated_ = false;
  for (Followed& followed : observation.followed_) followed.isRead = false;
}

BodyObservation::Evaluation::~Evaluation() {
  if (MainThreadState* const state = findMainThreadState()) state->bodyObservation = outer_;
  std::erase_if(observation_.followed_, [](const Followed& followed) { return !followed.isRead; });
}

void BodyObservation::noteRead(const ObservableObject& object) {
  const MainThreadState* const state = findMainThreadState();
  if (state != nullptr && state->bodyObservation != nullptr) state->bodyObservation->follow(object);
}

void BodyObservation::follow(const ObservableObject& object) {
  // What is read is about to be replaced, and its announcement may have gone by already.
  if (object.changesUnderWay_ > 0) becomeOutdated();
  const auto known = std::ranges::find(followed_, object.objectWillChange().identity(), &Followed::object);
  if (known != followed_.end()) {
    known->isRead = true;
    return;
  }
  // The subscription is this object's own, and nothing is called once it has ended.
  followed_.push_back({.object = object.objectWillChange().identity(),
                       .isRead = true,
                       .subscription = object.objectWillChange().subscribe([this] { becomeOutdated(); })});
}

void BodyObservation::becomeOutdated() {
  isOutdated_ = true;
  updater_.requestUpdate();
}

}  // namespace corvane
