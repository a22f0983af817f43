/// The processes of this program, as the system sees them.
#pragma once

#include <sys/types.h>

#include <string>
#include <string_view>
#include <vector>

namespace corvane::soak {

struct ChildProcess {
  pid_t id = 0;
  /// Cut off after 15 characters by the system.
  std::string name{};
};

/// The children that still run.
[[nodiscard]] std::vector<ChildProcess> childProcesses();
[[nodiscard]] bool isWebProcess(const ChildProcess& child);
[[nodiscard]] bool isNetworkProcess(const ChildProcess& child);

/// The value of a line of one of the files below /proc, which the system gives in KiB, in MiB; 0 where there is none.
[[nodiscard]] double mebibytesIn(const std::string& file, std::string_view line);
[[nodiscard]] int openFileCount();

}  // namespace corvane::soak
