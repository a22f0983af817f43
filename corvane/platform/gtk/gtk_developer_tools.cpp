#include "corvane/platform/gtk/gtk_developer_tools.h"

#include <algorithm>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_surface_drawing.h"
#include "corvane/platform/gtk/gtk_tools_window.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/views/ui_view.h"

namespace corvane::gtk {

bool showDeveloperTools(const UIView& view) {
  assertMainThread();
  const GtkWebEngine* const engine = engineOf(view);
  if (engine == nullptr) {
    return std::ranges::any_of(view.subviews(), [](const auto& subview) { return showDeveloperTools(*subview); });
  }
  showTools(objectCast<WebKitWebView>(engine->widget()));
  return true;
}

}  // namespace corvane::gtk
