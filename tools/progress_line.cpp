#include "tools/progress_line.h"

#include <unistd.h>

#include <cstdio>

namespace corvane::tools {

namespace {

constexpr std::size_t manyFiles = 36;
constexpr auto longRun = std::chrono::milliseconds(500);
constexpr auto betweenUpdates = std::chrono::milliseconds(100);

}  // namespace

ProgressLine::ProgressLine(std::size_t fileCount)
    : fileCount_(fileCount),
      isTerminal_(::isatty(STDERR_FILENO) == 1),
      nextUpdate_(Clock::now() + (fileCount > manyFiles ? std::chrono::milliseconds(0) : longRun)) {}

void ProgressLine::update(std::size_t fileNumber, std::size_t productsDone) {
  if (!isTerminal_) return;
  const auto now = Clock::now();
  if (now < nextUpdate_) return;
  nextUpdate_ = now + betweenUpdates;
  isShown_ = true;
  std::fprintf(stderr, "\r\033[Kfile %zu of %zu, products so far: %zu", fileNumber, fileCount_, productsDone);
}

void ProgressLine::clear() {
  if (!isShown_) return;
  isShown_ = false;
  std::fputs("\r\033[K", stderr);
}

}  // namespace corvane::tools
