// Checks the products of a catalogue and prints them as the agent tool page gets them.
#include <csignal>
#include <cstdio>
#include <string>
#include <vector>

#include "tools/catalogue_check.h"
#include "tools/catalogue_files.h"
#include "tools/command_options.h"
#include "tools/printable_text.h"

namespace corvane::tools {

namespace {

ExitStatus run(const std::vector<std::string>& arguments) {
  const auto options = parseOptions(arguments);
  if (!options) {
    std::fprintf(stderr, "corvane-product: no option %s; --help lists them\n", printable(options.error()).c_str());
    return ExitStatus::trouble;
  }
  if (options->wantsHelp || options->wantsVersion) {
    std::fputs(options->wantsHelp ? usageText() : "corvane-product " CORVANE_VERSION "\n", stdout);
    return std::fflush(stdout) == 0 ? ExitStatus::good : ExitStatus::trouble;
  }
  return CatalogueCheck(*options, findCatalogueFiles(options->files)).run();
}

}  // namespace

}  // namespace corvane::tools

int main(int argc, char** argv) {
  // A closed pipe ends us like other filters, also below a shell that ignores the signal.
  std::signal(SIGPIPE, SIG_DFL);
  // A program may be started without even its own name.
  return static_cast<int>(corvane::tools::run({argv + (argc > 0 ? 1 : 0), argv + argc}));
}
