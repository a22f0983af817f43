#include "demo/gtk/floating_settings.h"

#include "corvane/agent_view/minimized_state.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane::demo {

namespace {

struct Corner {
  const char* sign;
  const char* name;
  MinimizedOrigin (*origin)();
};

constexpr Corner corners[] = {
    {"↖", "Top left", &MinimizedOrigin::topLeft},
    {"↗", "Top right", &MinimizedOrigin::topRight},
    {"↙", "Bottom left", &MinimizedOrigin::bottomLeft},
    {"↘", "Bottom right", &MinimizedOrigin::bottomRight},
};

}  // namespace

FloatingSettings::FloatingSettings(const std::shared_ptr<VelnorAgentView>& view)
    : settings_(keep(makeColumn(4, "settings"))),
      restore_(keep(makeButton("Bring back", [] { MinimizedState::shared().maximize(); }))) {
  GtkWidget* const row = makeRow();
  GtkWidget* group = nullptr;
  for (const Corner& corner : corners) {
    GtkWidget* const button = makeSwitch(corner.sign, view->minimizedOrigin() == corner.origin(),
                                         whileAlive(std::weak_ptr(view), [&corner](VelnorAgentView& shown, bool isOn) {
                                           if (isOn) shown.setMinimizedOrigin(corner.origin());
                                         }));
    gtk_widget_set_tooltip_text(button, corner.name);
    gtk_toggle_button_set_group(as<GtkToggleButton>(button), as<GtkToggleButton>(group));
    group = button;
    append(row, button);
  }
  append(row,
         makeSwitch("Tap", view->tapToMaximize(), whileAlive(std::weak_ptr(view), &VelnorAgentView::setTapToMaximize)));
  gtk_widget_set_tooltip_text(gtk_widget_get_last_child(row), "A tap brings the call back");
  gtk_widget_set_sensitive(restore_.get(), FALSE);
  append(row, restore_.get());
  append(widget(), makeLabel("Where the call floats, and whether a tap brings it back", "soft"));
  append(widget(), row);
}

void FloatingSettings::follow(const AgentEvent& event) {
  if (event.is<AgentEvent::WillMinimize>()) gtk_widget_set_sensitive(restore_.get(), TRUE);
  if (event.is<AgentEvent::WillMaximize>()) gtk_widget_set_sensitive(restore_.get(), FALSE);
}

}  // namespace corvane::demo
