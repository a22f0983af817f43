// From the start of a program to the first picture of its page, and the memory that it takes then: an agent view beside
// a bare web view. Each is a program of its own, which this one starts in turns.
#include <gtk/gtk.h>
#include <unistd.h>
#include <webkit/webkit.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_surface.h"
#include "demo/server/local_page_server.h"

namespace corvane::benchmarks {
namespace {

using Clock = std::chrono::steady_clock;
using gtk::GObjectHandle;
using gtk::objectCast;

/// Memory of a process and of those that it started, in KiB: each shared page counts in parts.
long proportionalMemory(const std::string& process) {
  long sum = 0;
  std::ifstream memory("/proc/" + process + "/smaps_rollup");
  for (std::string line; std::getline(memory, line);) {
    if (line.starts_with("Pss:")) sum += std::stol(line.substr(4));
  }
  std::error_code gone;
  for (const auto& task : std::filesystem::directory_iterator("/proc/" + process + "/task", gone)) {
    std::ifstream children(task.path() / "children");
    for (std::string child; children >> child;) sum += proportionalMemory(child);
  }
  return sum;
}

WebKitWebView* findPage(GtkWidget* widget) {
  if (WEBKIT_IS_WEB_VIEW(widget)) return objectCast<WebKitWebView>(widget);
  WebKitWebView* page = nullptr;
  for (auto* child = gtk_widget_get_first_child(widget); child != nullptr && page == nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    page = findPage(child);
  }
  return page;
}

/// Waits for the page's first picture, then prints nanoseconds since the start and KiB.
void report(WebKitWebView* page, Clock::time_point start) {
  while (std::string_view(webkit_web_view_get_title(page) == nullptr ? "" : webkit_web_view_get_title(page)) !=
         "painted") {
    g_main_context_iteration(nullptr, TRUE);
  }
  const auto taken = Clock::now() - start;
  for (const auto end = Clock::now() + std::chrono::seconds(1); Clock::now() < end;) {
    if (g_main_context_iteration(nullptr, FALSE) == FALSE) g_usleep(1000);
  }
  std::printf("%ld %ld\n", static_cast<long>(std::chrono::nanoseconds(taken).count()), proportionalMemory("self"));
}

int runOne(std::string_view kind, const std::string& address, Clock::time_point start) {
  if (kind == "bare") {
    gtk_init();
    auto* const window = objectCast<GtkWindow>(gtk_window_new());
    gtk_window_set_default_size(window, 390, 844);
    const auto session = GObjectHandle<WebKitNetworkSession>::adopt(webkit_network_session_new_ephemeral());
    auto* const page = objectCast<WebKitWebView>(
        static_cast<GObject*>(g_object_new(WEBKIT_TYPE_WEB_VIEW, "network-session", session.get(), nullptr)));
    gtk_window_set_child(window, objectCast<GtkWidget>(page));
    webkit_web_view_load_uri(page, address.c_str());
    gtk_window_present(window);
    report(page, start);
    return 0;
  }
  const auto backend = gtk::Backend::install({.isEphemeral = true});
  if (!backend) return 1;
  auto* const window = objectCast<GtkWindow>(gtk_window_new());
  gtk_window_set_default_size(window, 390, 844);
  const auto surface = gtk::Surface::create();
  gtk_window_set_child(window, surface->widget());
  const auto view = VelnorAgentView::create(Region::custom(address), "shop", false);
  view->setFrame(surface->window()->bounds());
  view->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
  surface->window()->addSubview(view);
  view->loadBooking("b1");
  gtk_window_present(window);
  report(findPage(surface->widget()), start);
  return 0;
}

struct Figures {
  std::string kind;
  std::vector<double> milliseconds{};
  std::vector<double> mebibytes{};
};

void measure(Figures& figures, const std::string& address) {
  const auto program = std::filesystem::read_symlink("/proc/self/exe").string();
  const auto start = std::to_string(Clock::now().time_since_epoch().count());
  const std::array<const char*, 5> arguments{program.c_str(), figures.kind.c_str(), address.c_str(), start.c_str(),
                                             nullptr};
  const auto child =
      GObjectHandle<GSubprocess>::adopt(g_subprocess_newv(arguments.data(), G_SUBPROCESS_FLAGS_STDOUT_PIPE, nullptr));
  struct Output {
    char* text = nullptr;
    bool isThere = false;
  } output;
  g_subprocess_communicate_utf8_async(
      child.get(), nullptr, nullptr,
      [](GObject* source, GAsyncResult* result, gpointer data) {
        auto& out = *static_cast<Output*>(data);
        g_subprocess_communicate_utf8_finish(objectCast<GSubprocess>(source), result, &out.text, nullptr, nullptr);
        out.isThere = true;
      },
      &output);
  while (!output.isThere) g_main_context_iteration(nullptr, TRUE);
  const std::unique_ptr<char, decltype(&g_free)> text(output.text, &g_free);
  long nanoseconds = 0;
  long kibibytes = 0;
  if (std::sscanf(text == nullptr ? "" : text.get(), "%ld %ld", &nanoseconds, &kibibytes) != 2) return;
  figures.milliseconds.push_back(static_cast<double>(nanoseconds) / 1e6);
  figures.mebibytes.push_back(static_cast<double>(kibibytes) / 1024);
}

double median(std::vector<double> values) {
  if (values.empty()) return 0;
  std::ranges::sort(values);
  return values[values.size() / 2];
}

int compare() {
  const auto server = demo::LocalPageServer::start(CORVANE_BENCHMARK_PAGES);
  if (!server) {
    std::printf("start: skipped. %s\n", server.error().c_str());
    return 0;
  }
  const std::string address = (*server)->address("paints.html");
  std::array figures{Figures{.kind = "bare"}, Figures{.kind = "corvane"}};
  constexpr int rounds = 15;
  for (int round = 0; round < rounds; ++round) {
    for (Figures& each : figures) measure(each, address);
  }
  for (const Figures& each : figures) {
    std::printf("%-8s first picture %6.1f ms (%.3f), memory %6.1f MiB (%.3f), %zu runs\n", each.kind.c_str(),
                median(each.milliseconds), median(each.milliseconds) / median(figures[0].milliseconds),
                median(each.mebibytes), median(each.mebibytes) / median(figures[0].mebibytes), each.mebibytes.size());
  }
  return 0;
}

}  // namespace
}  // namespace corvane::benchmarks

int main(int count, char** arguments) {
  using corvane::benchmarks::Clock;
  if (count != 4) return corvane::benchmarks::compare();
  return corvane::benchmarks::runOne(arguments[1], arguments[2],
                                     Clock::time_point(Clock::duration(std::stoll(arguments[3]))));
}
