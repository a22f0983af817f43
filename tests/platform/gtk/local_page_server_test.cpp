#include "demo/local_page_server.h"

#include <gio/gio.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>
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
    for (const char* name : {"page.html", "code.js", "data.bin", "inner/page.html", ".hidden.html", "inner/.git/config",
                             "a b.html", "../outside.html"}) {
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
std::string answerTo(const std::string& requestLine, const std::string& host) {
  auto answer = std::async(std::launch::async, [&] {
    std::string received;
    GSocketClient* const client = g_socket_client_new();
    auto* const stream =
        reinterpret_cast<GIOStream*>(g_socket_client_connect_to_host(client, host.c_str(), 0, nullptr, nullptr));
    if (stream != nullptr) {
      const std::string request = requestLine + " HTTP/1.1\r\nHost: " + host + "\r\nConnection: close\r\n\r\n";
      g_output_stream_write_all(g_io_stream_get_output_stream(stream), request.data(), request.size(), nullptr, nullptr,
                                nullptr);
      std::array<char, 4096> buffer{};
      GInputStream* const input = g_io_stream_get_input_stream(stream);
      while (const auto size = g_input_stream_read(input, buffer.data(), buffer.size(), nullptr, nullptr)) {
        if (size < 0) break;
        received.append(buffer.data(), static_cast<std::size_t>(size));
      }
      g_object_unref(stream);
    }
    g_object_unref(client);
    g_main_context_wakeup(nullptr);
    return received;
  });
  EXPECT_TRUE(
      test::runMainContextUntil([&] { return answer.wait_for(std::chrono::seconds(0)) == std::future_status::ready; }));
  return answer.get();
}

TEST(LocalPageServer, ServesTheFilesOfItsFolderToThoseWhoKnowTheSecret) {
  const LocalPages pages;
  const auto server = LocalPageServer::start(pages.folder());
  ASSERT_TRUE(server) << server.error();
  const std::string address = (*server)->address("").substr(std::string_view("http://").size());
  const std::string host = address.substr(0, address.find('/'));
  const std::string secret = address.substr(host.size());

  const std::array<std::array<std::string, 3>, 5> served{{
      {"page.html", "text/html; charset=utf-8", "content of page.html"},
      {"a%20b.html?a=1", "text/html; charset=utf-8", "content of a b.html"},
      {"inner/page.html", "text/html; charset=utf-8", "content of inner/page.html"},
      {"code.js", "text/javascript; charset=utf-8", "content of code.js"},
      {"data.bin", "application/octet-stream", "content of data.bin"},
  }};
  for (const auto& [file, type, content] : served) {
    const std::string answer = answerTo("GET " + secret + file, host);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 200") && answer.contains("Content-Type: " + type + "\r\n") &&
                answer.ends_with("\r\n\r\n" + content))
        << file << "\n"
        << answer;
  }

  const std::string wrongSecret = "/" + std::string(secret.size() - 2, '0') + "/";
  for (const std::string& path :
       {std::string("/"), std::string("/page.html"), wrongSecret + "page.html",
        secret.substr(0, secret.size() - 1) + "page.html", secret, secret + "missing.html", secret + "inner",
        secret + "../outside.html", secret + "%2e%2e/outside.html", secret + "..%2foutside.html",
        secret + "inner/../../outside.html", secret + "/etc/passwd", secret + "%2fetc/passwd", secret + "link.html",
        secret + ".hidden.html", secret + "inner/.git/config"}) {
    const std::string answer = answerTo("GET " + path, host);
    EXPECT_TRUE(answer.starts_with("HTTP/1.1 40") && !answer.contains("content of")) << path << "\n" << answer;
  }
  EXPECT_TRUE(answerTo("POST " + secret + "page.html", host).starts_with("HTTP/1.1 405"));
  EXPECT_FALSE(LocalPageServer::start(pages.folder() / "missing"));
}

}  // namespace
}  // namespace corvane::demo
