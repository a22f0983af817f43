// The demo on Qt, where a call takes place: the agent's app, and the customer's page in a window beside it.
#include <QApplication>
#include <QWindow>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "corvane/platform/qt/qt_backend.h"
#include "demo/qml/qml_app.h"
#include "demo/qt/call_tour.h"
#include "demo/qt/call_window.h"
#include "demo/qt/customer_window.h"
#include "demo/server/local_page_server.h"
#include "demo/shop/demo_options.h"
#include "demo/shop/shop_products.h"

namespace {

using namespace corvane;

constexpr const char* booking = "booking-7";
constexpr int gap = 24;

bool hasCamera() {
  std::error_code error;
  for (const auto& device : std::filesystem::directory_iterator("/dev", error)) {
    if (device.path().filename().string().starts_with("video")) return true;
  }
  return false;
}

int fail(const std::string& reason) {
  std::fprintf(stderr, "demo: %s\n", reason.c_str());
  return 1;
}

int run(const demo::DemoOptions& options) {
  const bool isMadeUp = options.isTour || !hasCamera();
  const auto backend = qt::Backend::install({.usesMockCaptureDevices = isMadeUp, .isEphemeral = true});
  if (!backend) return fail(backend.error());
  if (isMadeUp) {
    // There is nothing to protect in pictures that the engine makes up.
    (*backend)->setCapturePrompt([](const WKMediaCaptureRequest&, auto answer) { answer(true); });
  }
  const auto server = demo::LocalPageServer::start(CORVANE_DEMO_PAGES);
  if (!server) return fail(server.error());
  const auto products = demo::readProducts(CORVANE_DEMO_CATALOGUE);
  if (!products) return fail(products.error());

  const std::string link = (*server)->address(std::string("customer/index.html?booking=") + booking);
  std::printf("demo: the customer's link, for the window beside or a browser on this machine: %s\n", link.c_str());
  const std::string page = (*server)->address("agent_tool/" + options.page + "#call-now");
  std::unique_ptr<demo::AgentApp> agent;
  if (options.isDeclarative) {
    auto app = demo::QmlApp::load(page, booking, *products);
    if (!app) return fail(app.error());
    agent = *std::move(app);
  } else {
    agent = std::make_unique<demo::CallWindow>(page, booking, *products);
  }
  demo::CustomerWindow customer(link + "#auto");
  agent->open();
  const QRect place = agent->nativeWindow()->geometry();
  customer.move(place.right() + gap, place.y());
  customer.show();
  if (!options.isTour) return QApplication::exec();
  demo::CallTour tour(*agent, customer, products->front(), options.screenshotFolder);
  tour.begin([&](bool isComplete) { QCoreApplication::exit(isComplete ? 0 : 1); });
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  const auto options = demo::readOptions(std::span(argv, static_cast<std::size_t>(argc)));
  if (!options) {
    std::fprintf(stderr, "%s\n", options.error().c_str());
    return 2;
  }
  const QApplication application(argc, argv);
  return run(*options);
}
