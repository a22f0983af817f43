/// Lets failed expectations show events as JSON.
#pragma once

#include <ostream>

#include "corvane/bridge/agent_event.h"

namespace corvane {

inline void PrintTo(const AgentEvent& event, std::ostream* out) { *out << encodeJson(event); }

}  // namespace corvane
