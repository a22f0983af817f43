/// Which files the arguments of a command stand for.
#pragma once

#include <string>
#include <vector>

namespace corvane::tools {

struct CatalogueFiles {
  struct Failure {
    std::string path;
    std::string reason;
  };

  std::vector<std::string> paths{};
  std::vector<Failure> failures{};  ///< the directories that could not be listed or have nothing to read
};

/// Replaces directories by the *.json files in them and below them, in the order of their names; everything else stays
/// as it is. Links to directories below a given one are not followed, since they may lead around in circles.
[[nodiscard]] CatalogueFiles findCatalogueFiles(const std::vector<std::string>& arguments);

}  // namespace corvane::tools
