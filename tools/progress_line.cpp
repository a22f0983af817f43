#include "tools/progress_line.h"

#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <system_error>

namespace corvane::tools {

namespace {

constexpr std::size_t manyFiles = 36;
constexpr auto longRun = std::chrono::milliseconds(500);
constexpr auto betweenUpdates = std::chrono::milliseconds(100);
constexpr double megabyte = 1e6;

/// What all files hold together, or 0 if one of them does not tell.
std::size_t sizeOfAll(const std::vector<std::string>& paths) {
  std::size_t total = 0;
  for (const std::string& path : paths) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    if (error) return 0;
    total += size;
  }
  return total;
}

}  // namespace

ProgressLine::ProgressLine(const std::vector<std::string>& paths)
    : fileCount_(paths.size()),
      isTerminal_(::isatty(STDERR_FILENO) == 1),
      begin_(Clock::now()),
      nextUpdate_(begin_ + (fileCount_ > manyFiles ? std::chrono::milliseconds(0) : longRun)) {
  if (isTerminal_) totalBytes_ = sizeOfAll(paths);
}

void ProgressLine::update(std::size_t fileNumber, std::size_t productsDone, std::size_t bytesDone) {
  if (!isTerminal_) return;
  const auto now = Clock::now();
  if (now < nextUpdate_) return;
  nextUpdate_ = now + betweenUpdates;
  isShown_ = true;
  const double megabytes = static_cast<double>(bytesDone) / megabyte;
  const double seconds = std::chrono::duration<double>(now - begin_).count();
  std::fprintf(stderr, "\r\033[Kfile %zu of %zu, products so far: %zu, %.1f", fileNumber, fileCount_, productsDone,
               megabytes);
  if (totalBytes_ > 0) std::fprintf(stderr, " of %.1f", static_cast<double>(totalBytes_) / megabyte);
  std::fprintf(stderr, " MB, %.0f MB/s", seconds > 0 ? megabytes / seconds : 0);
}

void ProgressLine::clear() {
  if (!isShown_) return;
  isShown_ = false;
  std::fputs("\r\033[K", stderr);
}

}  // namespace corvane::tools
