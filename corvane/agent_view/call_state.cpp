#include "corvane/agent_view/call_state.h"

namespace corvane {

void CallState::apply(const AgentEvent& event) {
  if (const auto* call = event.getIf<AgentEvent::CallStatusUpdate>()) {
    callSessionStatus = call->status;
    // Only the end of a call forgets the customer; the page reports `disconnected` at other times, too.
    if (call->status == CallSessionStatus::disconnecting) {
      clientLocale.reset();
      cart.clear();
    }
  } else if (const auto* client = event.getIf<AgentEvent::ClientLocale>()) {
    clientLocale = client->locale;
  } else if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>()) {
    if (update->data.quantity < 1) {
      cart.erase(update->data.sku);
    } else {
      cart.insert_or_assign(update->data.sku, update->data.quantity);
    }
  } else if (const auto* removal = event.getIf<AgentEvent::ProductRemovedFromCart>()) {
    cart.erase(removal->sku);
  }
}

}  // namespace corvane
