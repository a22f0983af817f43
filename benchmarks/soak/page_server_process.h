/// The pages of the soak, served by a process of their own, so that what it keeps is not taken for the app's.
#pragma once

#include <sys/types.h>

#include <array>
#include <expected>
#include <memory>
#include <string>
#include <string_view>

namespace corvane::soak {

/// Ownership: owned by its maker; the process ends with it, and with this program.
/// Threads:   `start` before any other thread exists.
/// Failure:   `start` gives a text.
class PageServerProcess {
 public:
  [[nodiscard]] static std::expected<std::unique_ptr<PageServerProcess>, std::string> start();
  PageServerProcess(const PageServerProcess&) = delete;
  PageServerProcess& operator=(const PageServerProcess&) = delete;
  ~PageServerProcess();

  /// The stand-in agent tool of the demo.
  [[nodiscard]] std::string agentTool() const { return folders_[0] + "index.html"; }
  /// A page that answers every request at once and does nothing else.
  [[nodiscard]] std::string lightPage() const { return folders_[1] + "answers_at_once.html"; }
  [[nodiscard]] std::string soakPage(std::string_view file) const { return folders_[2] + std::string(file); }

 private:
  PageServerProcess() = default;

  pid_t process_ = 0;
  std::array<std::string, 3> folders_;
};

}  // namespace corvane::soak
