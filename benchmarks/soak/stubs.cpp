#include "benchmarks/soak/parts.h"
namespace corvane::soak {
void soakBareViews(SoakHost&, const PartOptions&, Checks&) {}
}  // namespace corvane::soak
