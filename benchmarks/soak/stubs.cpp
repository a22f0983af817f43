#include "benchmarks/soak/parts.h"
namespace corvane::soak {
void soakBareViews(SoakHost&, const PartOptions&, Checks&) {}
void soakProcesses(SoakHost&, const PartOptions&, Checks&) {}
void soakFlood(SoakHost&, const PartOptions&, Checks&) {}
}  // namespace corvane::soak
