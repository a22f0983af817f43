#include "corvane/agent_view/call_state.h"

namespace corvane {

void CallState::apply(const AgentEvent& event) {
  event.match(
      [&](const AgentEvent::CallStatusUpdate& update) {
        callSessionStatus = update.status;
        // Only the end of a call forgets the customer; the page reports `disconnected` at other times, too.
        if (update.status == CallSessionStatus::disconnecting) {
          clientLocale.reset();
          cart.clear();
        }
      },
      [&](const AgentEvent::ClientLocale& client) { clientLocale = client.locale; },
      [&](const AgentEvent::ProductUpdateInCart& update) {
        if (update.data.quantity < 1) {
          cart.erase(update.data.sku);
        } else {
          cart.insert_or_assign(update.data.sku, update.data.quantity);
        }
      },
      [&](const AgentEvent::ProductRemovedFromCart& removal) { cart.erase(removal.sku); },
      [](const AgentEvent::ProductRemovedFromCall&) {}, [](const AgentEvent::RefreshSsoToken&) {},
      [](const AgentEvent::Unauthorized&) {}, [](const AgentEvent::Unknown&) {}, [](const AgentEvent::Error&) {},
      [](const AgentEvent::DidLoad&) {}, [](const AgentEvent::PreviewStarted&) {},
      [](const AgentEvent::WillMinimize&) {}, [](const AgentEvent::DidMinimize&) {},
      [](const AgentEvent::WillMaximize&) {}, [](const AgentEvent::DidMaximize&) {});
}

}  // namespace corvane
