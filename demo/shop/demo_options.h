/// What the demo was asked to do.
#pragma once

#include <expected>
#include <filesystem>
#include <span>
#include <string>

namespace corvane::demo {

struct DemoOptions {
  /// The page to show, one of the files of the stand-in agent tool.
  std::string page = "index.html";
  /// Lets the page run through a whole call by itself, saves pictures and ends.
  bool isTour = false;
  /// Shows the host app whose screens are described as values.
  bool isDeclarative = false;
  std::filesystem::path screenshotFolder = "screenshots";
};

/// Reads the command line; a text for the user where it makes no sense.
[[nodiscard]] std::expected<DemoOptions, std::string> readOptions(std::span<char*> arguments);

}  // namespace corvane::demo
