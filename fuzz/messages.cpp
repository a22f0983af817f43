// Any bytes as the body of a page message: the view must neither crash nor leave its rules.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"
#include "fuzz/require.h"

namespace {

using namespace corvane;

struct Host {
  Host() {
    view->setEventHandler([this](const AgentEvent& event) {
      ++events;
      require(decodeJson<AgentEvent>(encodeJson(event)) == event);
    });
  }

  std::unique_ptr<headless::Backend> backend = headless::Backend::install().value();
  std::shared_ptr<VelnorAgentView> view = VelnorAgentView::create(Region::eu(), "organisation", false);
  int events = 0;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static auto& host = *new Host;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const CallState& state = AgentViewAccess::parts(*host.view).callState;

  host.events = 0;
  headless::HeadlessWebEngine::of(*host.view)->postMessage(agentEventChannel, text);
  require(host.events <= 1);
  for (const auto& [sku, quantity] : state.cart) require(quantity >= 1);
  if (state.cart.size() > 100) AgentViewAccess::parts(*host.view).callState.cart.clear();
  return 0;
}
