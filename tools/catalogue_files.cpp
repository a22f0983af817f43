#include "tools/catalogue_files.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace corvane::tools {

namespace {

namespace fs = std::filesystem;

/// Pipes and devices inside a catalogue are somebody else's; a link that leads nowhere is worth an error when opened.
bool isWorthReading(const fs::directory_entry& entry) {
  std::error_code error;
  const fs::file_type type = entry.status(error).type();
  return entry.path().extension() == ".json" && (type == fs::file_type::regular || type == fs::file_type::not_found);
}

void addDirectory(const fs::path& directory, CatalogueFiles& files) {
  std::error_code error;
  std::vector<fs::directory_entry> entries;
  for (auto place = fs::directory_iterator(directory, error); !error && place != fs::directory_iterator();
       place.increment(error)) {
    entries.push_back(*place);
  }
  if (error) files.failures.push_back({directory.string(), "cannot be listed: " + error.message()});
  std::ranges::sort(entries, {}, [](const fs::directory_entry& entry) { return entry.path(); });
  for (const fs::directory_entry& entry : entries) {
    if (entry.symlink_status(error).type() == fs::file_type::directory) {
      addDirectory(entry.path(), files);
    } else if (isWorthReading(entry)) {
      files.paths.push_back(entry.path().string());
    }
  }
}

}  // namespace

CatalogueFiles findCatalogueFiles(const std::vector<std::string>& arguments) {
  CatalogueFiles files;
  for (const std::string& argument : arguments) {
    std::error_code error;
    if (argument == "-" || !fs::is_directory(argument, error)) {
      files.paths.push_back(argument);
      continue;
    }
    const std::size_t found = files.paths.size() + files.failures.size();
    addDirectory(argument, files);
    if (files.paths.size() + files.failures.size() == found) {
      files.failures.push_back({argument, "there is no *.json file in this directory"});
    }
  }
  return files;
}

}  // namespace corvane::tools
