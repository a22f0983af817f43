// Serves the stand-in agent tool page to any app on this machine.
#include <glib.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "demo/local_page_server.h"

namespace {

struct Run {
  GMainLoop* loop = nullptr;
  int status = 0;
};

/// Starts a program with the page's address as its last argument; false where there is no such program.
bool startProgram(int count, char** arguments, std::string address, Run& run) {
  std::vector<char*> command(arguments + 1, arguments + count);
  command.push_back(address.data());
  command.push_back(nullptr);
  constexpr auto flags =
      static_cast<GSpawnFlags>(G_SPAWN_DO_NOT_REAP_CHILD | G_SPAWN_SEARCH_PATH | G_SPAWN_CHILD_INHERITS_STDIN);
  GPid program = 0;
  GError* error = nullptr;
  if (g_spawn_async(nullptr, command.data(), nullptr, flags, nullptr, nullptr, &program, &error) == FALSE) {
    std::fprintf(stderr, "page: %s\n", error->message);
    g_error_free(error);
    return false;
  }
  const auto ended = [](GPid, gint status, gpointer data) {
    auto& ending = *static_cast<Run*>(data);
    ending.status = g_spawn_check_wait_status(status, nullptr) == TRUE ? 0 : 1;
    g_main_loop_quit(ending.loop);
  };
  g_child_watch_add(program, ended, &run);
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  const auto server = corvane::demo::LocalPageServer::start(CORVANE_DEMO_PAGES);
  if (!server) {
    std::fprintf(stderr, "page: %s\n", server.error().c_str());
    return 1;
  }
  const std::string address = (*server)->address("index.html");
  const std::unique_ptr<GMainLoop, decltype(&g_main_loop_unref)> loop(g_main_loop_new(nullptr, FALSE),
                                                                      &g_main_loop_unref);
  Run run{.loop = loop.get()};
  if (count > 1) {
    if (!startProgram(count, arguments, address, run)) return 1;
  } else {
    std::printf("%s\n%s#tour\n", address.c_str(), address.c_str());
    std::fflush(stdout);
  }
  g_main_loop_run(loop.get());
  return run.status;
}
