/// A small web server for the pages of the demo and of tests.
#pragma once

#include <expected>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

namespace corvane::demo {

/// Serves the pages in one folder, read-only, to this machine, and carries words between two of them: what one posts to
/// `mailbox/ROOM/SIDE` the other gets from there.
///
/// Every user of the machine can reach the port, so all addresses carry a random secret; nothing is served without it.
///
/// Ownership: owned by its maker; the port closes with it.
/// Threads:   the thread of the GLib default main context, which it answers on.
/// Failure:   `start` gives a text; a file that is missing, hidden, no part of a page or outside of the folder is
///            answered with 404.
class LocalPageServer {
 public:
  /// Starts to serve on a free port of 127.0.0.1.
  [[nodiscard]] static std::expected<std::unique_ptr<LocalPageServer>, std::string> start(
      const std::filesystem::path& folder);
  LocalPageServer(const LocalPageServer&) = delete;
  LocalPageServer& operator=(const LocalPageServer&) = delete;
  ~LocalPageServer();

  /// The address of a file, named relative to the folder; a query and a fragment may follow the name. The host name
  /// `localhost` instead of 127.0.0.1 leads to the same files and is another origin to the page.
  [[nodiscard]] std::string address(std::string_view file) const;

 private:
  struct Service;
  explicit LocalPageServer(std::unique_ptr<Service> service);

  std::unique_ptr<Service> service_;
};

}  // namespace corvane::demo
