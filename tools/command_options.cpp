#include "tools/command_options.h"

namespace corvane::tools {

std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments) {
  Options options;
  bool mayBeOption = true;
  for (const std::string& argument : arguments) {
    if (!mayBeOption || argument == "-" || !argument.starts_with('-')) {
      options.files.push_back(argument);
    } else if (argument == "--") {
      mayBeOption = false;
    } else if (argument == "--check") {
      if (options.output == Output::products) options.output = Output::verdict;
    } else if (argument == "--json") {
      options.output = Output::json;
    } else if (argument == "--strict") {
      options.strictness = Strictness::refuses;
    } else if (argument == "--help" || argument == "-h") {
      options.wantsHelp = true;
    } else if (argument == "--version") {
      options.wantsVersion = true;
    } else {
      return std::unexpected(argument);
    }
  }
  if (options.files.empty()) options.files.emplace_back("-");
  return options;
}

const char* usageText() {
  return R"(usage: corvane-product [--check | --json] [--strict] [FILE...]

Reads products as JSON, checks them, and prints each good one on a line of its own, as the agent tool page gets it.

FILE is a file with products, one after the other or in arrays, a directory (all *.json files in it and below it), or
- for standard input, which is also read when no FILE is given.

  --check    prints no products, only whether they are good
  --json     prints what is found instead of products, each as a JSON object on a line of its own
  --strict   refuses products of which a value would be left out, instead of a warning
  --help     prints this
  --version  prints the version

What is wrong goes to standard error as FILE:LINE:COLUMN, all counted from 1. Behind text that is no JSON, reading goes
on at the next line that begins a product; how many bytes are not read because of that is said.

Exit status:
  0  all products are good, though there may be warnings
  1  some products are refused, or some text is no JSON
  2  wrong usage, or something could not be read or written
)";
}

}  // namespace corvane::tools
