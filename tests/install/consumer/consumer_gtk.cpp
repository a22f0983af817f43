// A host app on the real backend. It ends well where there is no screen to show anything on.
#include <corvane/corvane.h>
#include <corvane/platform/gtk/gtk_backend.h>
#include <corvane/platform/gtk/gtk_surface.h>
#include <gtk/gtk.h>

#include <cstdio>
#include <cstdlib>

int main() {
  const auto backend = corvane::gtk::Backend::install({.isEphemeral = true});
  if (!backend) return std::puts(backend.error().c_str()), EXIT_SUCCESS;
  const auto surface = corvane::gtk::Surface::create();
  const auto view = corvane::VelnorAgentView::create(corvane::Region::custom("about:blank"), "shop", false);
  surface->window()->addSubview(view);
  return GTK_IS_WIDGET(surface->widget()) && view->window() == surface->window() ? EXIT_SUCCESS : EXIT_FAILURE;
}
