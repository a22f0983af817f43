#include "corvane/platform/declarative/observable_object.h"

#include "corvane/platform/declarative/body_observation.h"

namespace corvane {

void ObservableObject::noteRead() const { BodyObservation::noteRead(*this); }

}  // namespace corvane
