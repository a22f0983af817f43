#include "corvane/platform/declarative/body_observation.h"

#include <algorithm>
#include <utility>

#include "corvane/platform/declarative/observable_object.h"

namespace corvane {

namespace {

BodyObservation* current = nullptr;

}  // namespace

BodyObservation::Evaluation::Evaluation(BodyObservation& observation)
    : observation_(observation), outer_(std::exchange(current, &observation)) {
  for (Followed& followed : observation.followed_) followed.isRead = false;
}

BodyObservation::Evaluation::~Evaluation() {
  current = outer_;
  std::erase_if(observation_.followed_, [](const Followed& followed) { return !followed.isRead; });
}

void BodyObservation::noteRead(const ObservableObject& object) {
  if (current != nullptr) current->follow(object);
}

void BodyObservation::follow(const ObservableObject& object) {
  const auto known = std::ranges::find(followed_, object.identity_, &Followed::object);
  if (known != followed_.end()) {
    known->isRead = true;
    return;
  }
  // The subscription is this object's own, and nothing is called once it has ended.
  followed_.push_back(
      {.object = object.identity_, .isRead = true, .subscription = object.objectWillChange().subscribe([this] {
         isOutdated_ = true;
         updater_.requestUpdate();
       })});
}

}  // namespace corvane
