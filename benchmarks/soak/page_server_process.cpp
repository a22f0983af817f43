#include "benchmarks/soak/page_server_process.h"

#include <glib.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "demo/server/local_page_server.h"

namespace corvane::soak {

namespace {

constexpr std::array servedFolders{CORVANE_SOAK_AGENT_TOOL, CORVANE_BENCHMARK_PAGES, CORVANE_SOAK_PAGES};

/// Writes the addresses of the folders, one a line.
[[noreturn]] void serve(int output) {
  prctl(PR_SET_PDEATHSIG, SIGTERM);
  std::vector<std::unique_ptr<demo::LocalPageServer>> servers;
  std::string addresses;
  for (const char* const folder : servedFolders) {
    auto server = demo::LocalPageServer::start(folder);
    if (!server) std::_Exit(1);
    addresses += (*server)->address("") + "\n";
    servers.push_back(*std::move(server));
  }
  if (write(output, addresses.data(), addresses.size()) < 0) std::_Exit(1);
  close(output);
  while (true) g_main_context_iteration(nullptr, TRUE);
}

}  // namespace

std::expected<std::unique_ptr<PageServerProcess>, std::string> PageServerProcess::start() {
  std::array<int, 2> ends{};
  if (pipe(ends.data()) != 0) return std::unexpected("no pipe to the page server");
  std::fflush(stdout);
  std::unique_ptr<PageServerProcess> process(new PageServerProcess);
  process->process_ = fork();
  if (process->process_ == 0) {
    close(ends[0]);
    serve(ends[1]);
  }
  close(ends[1]);
  FILE* const input = fdopen(ends[0], "r");
  bool isComplete = true;
  for (std::string& folder : process->folders_) {
    std::array<char, 1000> line{};
    isComplete = isComplete && std::fgets(line.data(), static_cast<int>(line.size()), input) != nullptr;
    folder = line.data();
    if (folder.ends_with('\n')) folder.pop_back();
  }
  std::fclose(input);
  if (!isComplete) return std::unexpected("the page server does not start");
  return process;
}

PageServerProcess::~PageServerProcess() {
  if (process_ <= 0) return;
  kill(process_, SIGTERM);
  waitpid(process_, nullptr, 0);
}

}  // namespace corvane::soak
