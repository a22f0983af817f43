/// What the agent view knows of the call, kept in step with the page's events.
#pragma once

#include <optional>
#include <string>

#include "corvane/bridge/agent_event.h"
#include "corvane/bridge/call_session_status.h"
#include "corvane/bridge/completion.h"

namespace corvane {

struct CallState {
  CallSessionStatus callSessionStatus = CallSessionStatus::disconnected;
  /// The customer's language and region, from the start of the call to its end.
  std::optional<std::string> clientLocale;
  /// The customer's cart: quantities by SKU, each at least 1.
  CartQuantities cart;

  /// Follows an event of the page; most events change nothing here.
  void apply(const AgentEvent& event);
};

}  // namespace corvane
