/// What the command line of corvane-product asks for.
#pragma once

#include <expected>
#include <string>
#include <vector>

namespace corvane::tools {

enum class Output {
  products,  ///< the good products, with findings beside them
  verdict,   ///< findings, and how many products there are
  json,      ///< findings as JSON
};

enum class Strictness { warns, refuses };

struct Options {
  Output output = Output::products;
  Strictness strictness = Strictness::warns;
  bool wantsHelp = false;
  bool wantsVersion = false;
  std::vector<std::string> files{};
};

/// The options, or the argument that means nothing.
[[nodiscard]] std::expected<Options, std::string> parseOptions(const std::vector<std::string>& arguments);

[[nodiscard]] const char* usageText();

}  // namespace corvane::tools
