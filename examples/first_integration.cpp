#include <corvane/corvane.h>
#include <corvane/platform/gtk/gtk_backend.h>
#include <corvane/platform/gtk/gtk_surface.h>
#include <gtk/gtk.h>

#include <cstdio>

int main() {
  const auto backend = corvane::gtk::Backend::install();
  if (!backend) return std::fprintf(stderr, "%s\n", backend.error().c_str()), 1;

  const auto surface = corvane::gtk::Surface::create();
  const auto view = corvane::VelnorAgentView::create(corvane::Region::eu(), "shop-42", /*enableSSO=*/false);
  view->setFrame(surface->window()->bounds());
  view->setAutoresizingMask(corvane::UIViewAutoresizing::flexibleWidth | corvane::UIViewAutoresizing::flexibleHeight);
  view->setEventHandler([](const corvane::AgentEvent& event) { std::puts(corvane::encodeJson(event).c_str()); });
  surface->window()->addSubview(view);
  view->loadBooking("booking-7");

  GtkWidget* const window = gtk_window_new();
  gtk_window_set_child(GTK_WINDOW(window), surface->widget());
  gtk_window_present(GTK_WINDOW(window));
  while (g_list_model_get_n_items(gtk_window_get_toplevels()) > 0) g_main_context_iteration(nullptr, TRUE);
}
