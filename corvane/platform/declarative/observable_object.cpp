#include "corvane/platform/declarative/observable_object.h"

#include "corvane/platform/declarative/body_observation.h"

namespace corvane {

namespace {

std::uint64_t lastIdentity = 0;

}  // namespace

ObservableObject::ObservableObject() : identity_(++lastIdentity) {}

void ObservableObject::noteRead() const { BodyObservation::noteRead(*this); }

}  // namespace corvane
