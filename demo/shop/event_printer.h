/// Shows in the terminal what a host app is told.
#pragma once

#include "corvane/agent_view/velnor_agent_view.h"

namespace corvane::demo {

/// Prints an event in its JSON form, and the view's state as it stands when the event arrives.
void printEvent(const AgentEvent& event, const VelnorAgentView& view);

}  // namespace corvane::demo
