/// The parts of the soak. Each checks, prints its memory, and says at its end what it has done.
#pragma once

#include <cstdint>

#include "benchmarks/soak/checks.h"
#include "benchmarks/soak/soak_host.h"

namespace corvane::soak {

struct PartOptions {
  std::uint64_t seed = 1;
  /// How much of the whole is done.
  int percent = 100;
};

void soakRequests(SoakHost& host, const PartOptions& options, Checks& checks);
void soakViews(SoakHost& host, const PartOptions& options, Checks& checks);
/// The same as the views, with the engine alone: what grows here is none of ours. It checks nothing.
void soakBareViews(SoakHost& host, const PartOptions& options, Checks& checks);
void soakProcesses(SoakHost& host, const PartOptions& options, Checks& checks);
/// Pages that hang and wander, files that are dropped, containers that change: the call outlives them.
void soakTroubles(SoakHost& host, const PartOptions& options, Checks& checks);
void soakFlood(SoakHost& host, const PartOptions& options, Checks& checks);

}  // namespace corvane::soak
