// The demo on a real web engine: serves the stand-in agent tool page to itself and shows it in a host app.
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "corvane/corvane.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "demo/gtk/declarative_window.h"
#include "demo/gtk/host_window.h"
#include "demo/server/local_page_server.h"
#include "demo/shop/demo_options.h"
#include "demo/shop/shop_products.h"

namespace {

using namespace corvane;

/// Runs the demo in a window of one of the two kinds; false where its tour did not come to its end.
template <class Window>
bool runIn(const demo::DemoOptions& options, const std::string& pageAddress, const std::vector<Product>& products) {
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(g_main_loop_new(nullptr, FALSE),
                                                                      &g_main_loop_unref);
  Window window(options, pageAddress, products, loop.get());
  window.show();
  g_main_loop_run(loop.get());
  return !options.isTour || window.isTourComplete();
}

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
  const std::string page = (*server)->address("agent_tool/" + options.page);
  const bool isGood = options.isDeclarative ? runIn<demo::DeclarativeWindow>(options, page, *products)
                                            : runIn<demo::HostWindow>(options, page, *products);
  if (!isGood) std::fputs("demo: the tour did not come to its end\n", stderr);
  return isGood ? 0 : 1;
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
