/// What a screen does with the agent while it is shown, and when it comes and goes.
///
///   host->show(HomeScreen{} | onAgentEvent(handler) | bringAgentToFront());
#pragma once

#include <functional>
#include <utility>

#include "corvane/bridge/agent_event.h"
#include "corvane/declarative/velnor_agent.h"
#include "corvane/export.h"
#include "corvane/platform/declarative/appearance.h"
#include "corvane/platform/declarative/view_modifier.h"

namespace corvane {

/// Hands the agent's events to a handler, before the agent view's own handler gets them.
///
/// There is one such handler at a time. The view that appears last sets it, and any view that disappears with a handler
/// of its own clears it.
class CORVANE_EXPORT AgentEventHandlerModifier : public ViewModifier {
 public:
  explicit AgentEventHandlerModifier(AgentEventHandler eventHandler) : eventHandler_(std::move(eventHandler)) {}

  template <View Content>
  [[nodiscard]] auto body(Content content) const {
    return std::move(content) | onAppear(setHandler()) | onDisappear(&clearHandler);
  }

 private:
  [[nodiscard]] ViewAction setHandler() const;
  static void clearHandler();

  AgentEventHandler eventHandler_;
};

/// Brings a minimized agent in front of the others of its superview when the view appears.
class CORVANE_EXPORT BringAgentToFrontModifier : public ViewModifier {
 public:
  template <View Content>
  [[nodiscard]] auto body(Content content) const {
    return std::move(content) | onAppear(&bringToFront);
  }

 private:
  static void bringToFront();
};

/// Registers, when the view appears, what is to be done with an agent that has grown back: typically to show it. It
/// stays registered when the view disappears.
class CORVANE_EXPORT MinimizedStateRestoreModifier : public ViewModifier {
 public:
  using RestoreAction = std::function<void(const VelnorAgent&)>;

  explicit MinimizedStateRestoreModifier(RestoreAction restoreAction) : restoreAction_(std::move(restoreAction)) {}

  template <View Content>
  [[nodiscard]] auto body(Content content) const {
    return std::move(content) | onAppear(registerAction());
  }

 private:
  [[nodiscard]] ViewAction registerAction() const;

  RestoreAction restoreAction_;
};

/// Drops whatever is registered so when the view disappears.
class CORVANE_EXPORT MinimizedStateResetRestoreModifier : public ViewModifier {
 public:
  template <View Content>
  [[nodiscard]] auto body(Content content) const {
    return std::move(content) | onDisappear(&resetAction);
  }

 private:
  static void resetAction();
};

[[nodiscard]] inline AgentEventHandlerModifier onAgentEvent(AgentEventHandler eventHandler) {
  return AgentEventHandlerModifier(std::move(eventHandler));
}
[[nodiscard]] inline BringAgentToFrontModifier bringAgentToFront() { return {}; }
[[nodiscard]] inline MinimizedStateRestoreModifier restoreAgentAction(
    MinimizedStateRestoreModifier::RestoreAction action) {
  return MinimizedStateRestoreModifier(std::move(action));
}
[[nodiscard]] inline MinimizedStateResetRestoreModifier resetAgentRestoreAction() { return {}; }

}  // namespace corvane
