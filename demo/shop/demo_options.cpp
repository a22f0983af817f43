#include "demo/shop/demo_options.h"

#include <string_view>

namespace corvane::demo {

namespace {

constexpr const char* usage =
    "usage: corvane-demo [--tour] [--declarative] [--variant plain|framed|cross-origin] [--screenshots FOLDER]";

}  // namespace

std::expected<DemoOptions, std::string> readOptions(std::span<char*> arguments) {
  DemoOptions options;
  for (std::size_t index = 1; index < arguments.size(); ++index) {
    const std::string_view argument = arguments[index];
    const std::string_view value = index + 1 < arguments.size() ? arguments[index + 1] : "";
    if (argument == "--tour") {
      options.isTour = true;
    } else if (argument == "--declarative") {
      options.isDeclarative = true;
    } else if (argument == "--variant" && value == "plain") {
      ++index;
    } else if (argument == "--variant" && value == "framed") {
      options.page = "framed.html";
      ++index;
    } else if (argument == "--variant" && value == "cross-origin") {
      options.page = "framed_cross_origin.html";
      ++index;
    } else if (argument == "--screenshots" && !value.empty()) {
      options.screenshotFolder = value;
      ++index;
    } else {
      return std::unexpected(std::string(usage));
    }
  }
  return options;
}

}  // namespace corvane::demo
