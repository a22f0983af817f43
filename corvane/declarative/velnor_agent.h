/// The agent as a view value.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "corvane/agent_view/region.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/export.h"
#include "corvane/minimized/minimized_settings.h"
#include "corvane/platform/declarative/any_view.h"
#include "corvane/platform/geometry/geometry.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane {

class VelnorAgentContext;

/// Shows the agent tool for a booking. Makes the agent view, or takes over the context's where region and organisation
/// are the same. Loads the booking if that view does not show it already.
///
///   host->show(VelnorAgent(Region::eu(), "shop-42", "booking-7", false) | onAgentEvent(handler));
///
/// Once it is mounted, what its view shows no longer follows region, organisation and booking. Give it an `id` to have
/// another one mounted, and have the previous one removed first, as its going clears the context. When an agent goes,
/// the context releases the agent view. A minimized one stays on screen, for a later agent to take over.
///
/// The properties that can be set are those of the agent view. They are the value's own, and are given to the agent
/// view that is made for it. While the context has an agent view, whichever that is, they are read from it and written
/// to it as well.
///
/// Ownership: a value. It holds no agent view; the context and whatever shows it do.
/// Threads:   main thread only. Making one is noted in the context.
/// Failure:   none; see `VelnorAgentView` for a page that does not load.
class CORVANE_EXPORT VelnorAgent final {
 public:
  /// An empty `connectId` is the booking of somebody who is not known.
  VelnorAgent(Region region, std::string organisationId, std::string connectId, bool enableSSO);
  /// An agent that shows a view which exists already, such as a minimized one; never null. The context takes the view
  /// over at once.
  explicit VelnorAgent(const std::shared_ptr<VelnorAgentView>& agentView);

  [[nodiscard]] const Region& region() const CORVANE_LIFETIMEBOUND { return region_; }
  [[nodiscard]] const std::string& organisationId() const CORVANE_LIFETIMEBOUND { return organisationId_; }
  [[nodiscard]] const std::string& connectId() const CORVANE_LIFETIMEBOUND { return connectId_; }
  [[nodiscard]] bool enableSSO() const { return enableSSO_; }
  /// The one that all agents share.
  [[nodiscard]] static VelnorAgentContext& context();

  [[nodiscard]] bool tapToMaximize() const;
  void setTapToMaximize(bool isOn);
  [[nodiscard]] MinimizedOrigin minimizedOrigin() const;
  void setMinimizedOrigin(MinimizedOrigin origin);
  [[nodiscard]] std::optional<CGSize> minimizedSize() const;
  void setMinimizedSize(std::optional<CGSize> size);
  [[nodiscard]] std::shared_ptr<UIView> minimizedSuperview() const;
  void setMinimizedSuperview(std::shared_ptr<UIView> view);
  [[nodiscard]] AgentEventHandler eventHandler() const;
  void setEventHandler(AgentEventHandler handler);

  [[nodiscard]] AnyView body() const;

 private:
  struct Wrapper;
  struct Config {
    MinimizedSettings minimized;
    AgentEventHandler eventHandler;
  };

  Config config_;
  Region region_;
  std::string organisationId_;
  std::string connectId_;
  bool enableSSO_;
};

}  // namespace corvane
