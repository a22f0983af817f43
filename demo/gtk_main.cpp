// The demo on a real web engine: serves the stand-in agent tool page to itself and shows it in a host app.
#include <cstdio>
#include <span>

#include "corvane/corvane.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "demo/demo_options.h"
#include "demo/host_window.h"
#include "demo/local_page_server.h"
#include "demo/shop_products.h"

namespace {

using namespace corvane;

int run(const demo::DemoOptions& options) {
  // A tour runs on build machines, which have no camera.
  const auto backend = gtk::Backend::install({.usesMockCaptureDevices = options.isTour, .isEphemeral = true});
  if (!backend) {
    std::fprintf(stderr, "demo: %s\n", backend.error().c_str());
    return 1;
  }
  if (options.isTour) {
    (*backend)->setCaptureAuthorization(AVMediaType::video, AVAuthorizationStatus::authorized);
    (*backend)->setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::authorized);
  }
  const auto server = demo::LocalPageServer::start(CORVANE_DEMO_PAGES);
  if (!server) {
    std::fprintf(stderr, "demo: %s\n", server.error().c_str());
    return 1;
  }
  const auto products = demo::readProducts(CORVANE_DEMO_CATALOGUE);
  if (!products) {
    std::fprintf(stderr, "demo: %s\n", products.error().c_str());
    return 1;
  }
  GMainLoop* const loop = g_main_loop_new(nullptr, FALSE);
  int result = 0;
  {
    demo::HostWindow window(options, (*server)->address(options.page), *products, loop);
    window.show();
    g_main_loop_run(loop);
    if (options.isTour && !window.isTourComplete()) {
      std::fputs("demo: the tour did not come to its end\n", stderr);
      result = 1;
    }
  }
  g_main_loop_unref(loop);
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  const auto options = demo::readOptions(std::span(argv, static_cast<std::size_t>(argc)));
  if (!options) {
    std::fprintf(stderr, "%s\n", options.error().c_str());
    return 2;
  }
  return run(*options);
}
