#include "benchmarks/soak/processes.h"

#include <unistd.h>

#include <charconv>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace corvane::soak {

std::vector<ChildProcess> childProcesses() {
  std::vector<ChildProcess> children;
  std::error_code ignored;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
    const std::string folder = entry.path().filename();
    pid_t id = 0;
    if (std::from_chars(folder.data(), folder.data() + folder.size(), id).ec != std::errc()) continue;
    std::ifstream file(entry.path() / "stat");
    const std::string text(std::istreambuf_iterator<char>(file), {});
    // The name stands in brackets and may hold any character.
    const auto begin = text.find('(');
    const auto end = text.rfind(')');
    if (begin == std::string::npos || end == std::string::npos) continue;
    std::istringstream rest(text.substr(end + 1));
    char state = 0;
    pid_t parent = 0;
    rest >> state >> parent;
    if (parent == getpid() && state != 'Z') children.push_back({id, text.substr(begin + 1, end - begin - 1)});
  }
  return children;
}

bool isWebProcess(const ChildProcess& child) { return child.name.starts_with("WebKitWebProc"); }

bool isNetworkProcess(const ChildProcess& child) { return child.name.starts_with("WebKitNetwork"); }

double mebibytesIn(const std::string& file, std::string_view line) {
  std::ifstream stream(file);
  for (std::string text; std::getline(stream, text);) {
    if (text.starts_with(line)) return std::stod(text.substr(line.size())) / 1024;
  }
  return 0;
}

int openFileCount() {
  std::error_code ignored;
  return static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd", ignored),
                                        std::filesystem::directory_iterator{}));
}

}  // namespace corvane::soak
