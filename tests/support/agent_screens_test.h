/// Screens of view values in a phone's window, with agents on them.
#pragma once

#include <gmock/gmock.h>

#include <string_view>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/declarative/agent_modifiers.h"
#include "corvane/declarative/velnor_agent.h"
#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/declarative/conditional_view.h"
#include "corvane/platform/declarative/view_identity.h"
#include "corvane/platform/declarative/view_mount.h"
#include "corvane/platform/declarative/z_stack.h"
#include "corvane/platform/views/ui_window.h"
#include "tests/support/headless_test.h"

namespace corvane {

class AgentScreensTest : public HeadlessTest {
 protected:
  using Engine = headless::HeadlessWebEngine;

  static VelnorAgent agent(std::string organisationId = "shop", std::string connectId = "b1") {
    return {Region::eu(), std::move(organisationId), std::move(connectId), false};
  }
  static VelnorAgentContext& context() { return VelnorAgentContext::shared(); }
  static MinimizedState& minimizedState() { return MinimizedState::shared(); }
  static Engine& engine(const VelnorAgentView& view) { return *Engine::of(view); }
  static std::size_t loadCount(const VelnorAgentView& view) {
    return engine(view).recordsOf<Engine::LoadRequested>().size();
  }
  /// Shrinks an agent view and lets it come to rest.
  void minimize(const VelnorAgentView& view) {
    post(view, minimizeRequest);
    loop().advance(std::chrono::milliseconds(250));
  }
  void letRest() { loop().advance(std::chrono::milliseconds(250)); }
  AgentEventHandler noteAs(std::string who) {
    return [this, who = std::move(who)](const AgentEvent& event) { log_.push_back(who + " " + encodeJson(event)); };
  }

  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {390, 844}});
  std::shared_ptr<ViewMount> mount_ = ViewMount::create(*window_);
};

}  // namespace corvane
