/// How the demo's floating call stands out from what it floats over.
#pragma once

#include "corvane/agent_view/velnor_agent_view.h"

namespace corvane::demo {

/// Gives the agent view an edge and a shadow when it is about to float, and takes them away when it is about to grow
/// back.
void followWithEdge(VelnorAgentView& view, const AgentEvent& event);

}  // namespace corvane::demo
