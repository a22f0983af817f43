#include "demo/local_page_server.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <filesystem>
#include <fstream>
#include <regex>
#include <string>

#include "tests/support/main_context.h"

namespace corvane::demo {
namespace {

namespace fs = std::filesystem;

/// A folder with pages, a secret file beside it, and ways from the one to the other.
class LocalPages {
 public:
  LocalPages() : root_(fs::temp_directory_path() / ("corvane_pages_" + std::to_string(getpid()))) {
    fs::create_directories(folder() / "inner" / ".git");
    for (const char* name : {"a b.html", "inner/code.js", ".hidden.html", "inner/.git/config", "../outside.html"}) {
      std::ofstream(folder() / name) << "content of " << name;
    }
    fs::create_symlink(root_ / "outside.html", folder() / "link.html");
  }
  LocalPages(const LocalPages&) = delete;
  LocalPages& operator=(const LocalPages&) = delete;
  ~LocalPages() { fs::remove_all(root_); }

  [[nodiscard]] fs::path folder() const { return root_ / "pages"; }

 private:
  fs::path root_;
};

/// Sends a request as it stands, which no browser would do, and gives everything that comes back.
std::string answerTo(const std::string& requestLine, std::uint16_t port) {
  const int connection = socket(AF_INET, SOCK_STREAM, 0);
  const sockaddr_in server{
      .sin_family = AF_INET, .sin_port = htons(port), .sin_addr = {htonl(INADDR_LOOPBACK)}, .sin_zero = {}};
  EXPECT_EQ(connect(connection, reinterpret_cast<const sockaddr*>(&server), sizeof(server)), 0);
  const std::string request = requestLine + " HTTP/1.1\r\nHost: 127.0.0.1\r\nConnection: close\r\n\r\n";
  EXPECT_EQ(send(connection, request.data(), request.size(), 0), static_cast<ssize_t>(request.size()));
  std::string received;
  std::array<char, 4096> buffer{};
  EXPECT_TRUE(test::runMainContextUntil([&] {
    const ssize_t size = recv(connection, buffer.data(), buffer.size(), MSG_DONTWAIT);
    if (size > 0) received.append(buffer.data(), static_cast<std::size_t>(size));
    return size == 0;
  }));
  close(connection);
  return received;
}

TEST(LocalPageServer, ServesTheFilesOfItsFolderToThoseWhoKnowTheSecret) {
  const LocalPages pages;
  const auto server = LocalPageServer::start(pages.folder());
  ASSERT_TRUE(server) << server.error();
  std::smatch parts;
  const std::string address = (*server)->address("");
  ASSERT_TRUE(std::regex_match(address, parts, std::regex("http://127.0.0.1:([0-9]+)(/.*/)"))) << address;
  const auto port = static_cast<std::uint16_t>(std::stoi(parts[1]));
  const std::string secret = parts[2];

  for (const auto& [file, type, content] :
       {std::array<std::string, 3>{"a%20b.html?a=1", "text/html; charset=utf-8", "content of a b.html"},
        {"inner/code.js", "text/javascript; charset=utf-8", "content of inner/code.js"}}) {
    const std::string answer = answerTo("GET " + secret + file, port);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 200") && answer.contains("Content-Type: " + type + "\r\n") &&
                answer.ends_with("\r\n\r\n" + content))
        << answer;
  }

  const std::string wrongSecret = "/" + std::string(secret.size() - 2, '0') + "/";
  for (const std::string& path :
       {std::string("/a%20b.html"), wrongSecret + "a%20b.html", secret, secret + "missing.html", secret + "inner",
        secret + "../outside.html", secret + "%2e%2e/outside.html", secret + "..%2foutside.html",
        secret + "inner/../../outside.html", secret + "/etc/passwd", secret + "%2fetc/passwd", secret + "link.html",
        secret + ".hidden.html", secret + "inner/.git/config"}) {
    const std::string answer = answerTo("GET " + path, port);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 40") && !answer.contains("content of")) << path << "\n" << answer;
  }
  EXPECT_TRUE(answerTo("POST " + secret + "a%20b.html", port).starts_with("HTTP/1.1 405"));
  EXPECT_FALSE(LocalPageServer::start(pages.folder() / "missing"));
}

}  // namespace
}  // namespace corvane::demo
