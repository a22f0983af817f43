#include "demo/shop/floating_look.h"

namespace corvane::demo {

namespace {

/// In the coordinates of the large view, of which the floating one is about a third. Dark around light is seen on any
/// ground.
constexpr UIViewDecoration floatingLook{.borderWidth = 6,
                                        .borderColor = {.red = 1, .green = 1, .blue = 1},
                                        .shadowRadius = 48,
                                        .shadowOffset = {0, 12},
                                        .shadowColor = {.alpha = 0.5}};

}  // namespace

void followWithEdge(VelnorAgentView& view, const AgentEvent& event) {
  if (event.is<AgentEvent::WillMinimize>()) view.setDecoration(floatingLook);
  if (event.is<AgentEvent::WillMaximize>()) view.setDecoration({});
}

}  // namespace corvane::demo
