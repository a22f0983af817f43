// A host app on the real backend on Qt. It needs no screen where the toolkit's offscreen platform is chosen.
#include <corvane/corvane.h>
#include <corvane/platform/qt/qt_backend.h>
#include <corvane/platform/qt/qt_surface.h>

#include <QApplication>
#include <cstdio>
#include <cstdlib>

int main(int count, char** arguments) {
  const QApplication application(count, arguments);
  const auto backend = corvane::qt::Backend::install({.isEphemeral = true});
  if (!backend) return std::puts(backend.error().c_str()), EXIT_FAILURE;
  const auto surface = corvane::qt::Surface::create();
  const auto view = corvane::VelnorAgentView::create(corvane::Region::custom("about:blank"), "shop", false);
  surface->window()->addSubview(view);
  return surface->widget() != nullptr && view->window() == surface->window() ? EXIT_SUCCESS : EXIT_FAILURE;
}
