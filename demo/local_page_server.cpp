#include "demo/local_page_server.h"

#include <libsoup/soup.h>
#include <unistd.h>

#include <array>
#include <optional>
#include <span>
#include <system_error>
#include <utility>

namespace corvane::demo {

namespace {

struct Free {
  void operator()(char* text) const { g_free(text); }
  void operator()(GError* error) const { g_error_free(error); }
  void operator()(SoupServer* server) const { g_object_unref(server); }
};

struct ContentType {
  std::string_view extension;
  const char* type;
};

constexpr std::array contentTypes{
    ContentType{".html", "text/html; charset=utf-8"},
    ContentType{".css", "text/css; charset=utf-8"},
    ContentType{".js", "text/javascript; charset=utf-8"},
    ContentType{".json", "application/json; charset=utf-8"},
    ContentType{".svg", "image/svg+xml"},
    ContentType{".png", "image/png"},
};

const char* contentTypeOf(const std::filesystem::path& file) {
  const std::string extension = file.extension().string();
  for (const ContentType& known : contentTypes) {
    if (known.extension == extension) return known.type;
  }
  return "application/octet-stream";
}

std::optional<std::string> makeSecret() {
  std::array<unsigned char, 16> bytes{};
  if (getentropy(bytes.data(), bytes.size()) != 0) return std::nullopt;
  constexpr std::string_view digits = "0123456789abcdef";
  std::string secret;
  for (const unsigned char byte : bytes) {
    secret += digits[byte >> 4U];
    secret += digits[byte & 15U];
  }
  return secret;
}

/// The file that a name from a request means. None for anything outside of the folder, also by a link, for folders,
/// and for names that begin with a dot.
std::optional<std::filesystem::path> findFile(const std::filesystem::path& folder, std::string_view name) {
  std::error_code error;
  std::filesystem::path file = std::filesystem::canonical(folder / std::filesystem::path(name).relative_path(), error);
  if (error || !std::filesystem::is_regular_file(file, error)) return std::nullopt;
  for (const auto& part : file.lexically_relative(folder)) {
    if (part.string().starts_with('.')) return std::nullopt;
  }
  return file;
}

}  // namespace

/// What the answers need; the server's handler refers to it.
struct LocalPageServer::Service {
  std::filesystem::path folder;
  std::string prefix;
  guint port = 0;
  std::unique_ptr<SoupServer, Free> server;

  ~Service() {
    if (server != nullptr) soup_server_disconnect(server.get());
  }

  static void answer(SoupServer*, SoupServerMessage* message, const char* path, GHashTable*, gpointer data) noexcept;
};

void LocalPageServer::Service::answer(SoupServer*, SoupServerMessage* message, const char* path, GHashTable*,
                                      gpointer data) noexcept {
  const auto& service = *static_cast<const Service*>(data);
  const std::string_view method = soup_server_message_get_method(message);
  if (method != "GET" && method != "HEAD") {
    return soup_server_message_set_status(message, SOUP_STATUS_METHOD_NOT_ALLOWED, nullptr);
  }
  // The server also hands over paths that merely begin like ours.
  const std::string_view asked = path;
  const auto file =
      asked.starts_with(service.prefix) ? findFile(service.folder, asked.substr(service.prefix.size())) : std::nullopt;
  char* contents = nullptr;
  gsize length = 0;
  if (!file || g_file_get_contents(file->c_str(), &contents, &length, nullptr) == FALSE) {
    return soup_server_message_set_status(message, SOUP_STATUS_NOT_FOUND, nullptr);
  }
  SoupMessageHeaders* headers = soup_server_message_get_response_headers(message);
  soup_message_headers_replace(headers, "X-Content-Type-Options", "nosniff");
  // Whoever works on the pages wants to see what they say now.
  soup_message_headers_replace(headers, "Cache-Control", "no-cache");
  // Versions of the server before 3.3 never notice that an idle connection has been closed by the other side.
  soup_message_headers_replace(headers, "Connection", "close");
  soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
  soup_server_message_set_response(message, contentTypeOf(*file), SOUP_MEMORY_TAKE, contents, length);
}

std::expected<std::unique_ptr<LocalPageServer>, std::string> LocalPageServer::start(
    const std::filesystem::path& folder) {
  auto service = std::make_unique<Service>();
  std::error_code missing;
  service->folder = std::filesystem::canonical(folder, missing);
  if (missing || !std::filesystem::is_directory(service->folder, missing)) {
    return std::unexpected("There is no folder " + folder.string());
  }
  const auto secret = makeSecret();
  if (!secret) return std::unexpected("The system gives no random numbers");
  service->prefix = "/" + *secret + "/";

  service->server.reset(soup_server_new(nullptr, nullptr));
  soup_server_add_handler(service->server.get(), service->prefix.c_str(), &Service::answer, service.get(), nullptr);
  GError* rawError = nullptr;
  if (soup_server_listen_local(service->server.get(), 0, SOUP_SERVER_LISTEN_IPV4_ONLY, &rawError) == FALSE) {
    const std::unique_ptr<GError, Free> error(rawError);
    return std::unexpected(std::string("The page server cannot listen: ") + error->message);
  }
  GSList* addresses = soup_server_get_uris(service->server.get());
  service->port = static_cast<guint>(g_uri_get_port(static_cast<GUri*>(addresses->data)));
  g_slist_free_full(addresses, [](gpointer address) { g_uri_unref(static_cast<GUri*>(address)); });
  return std::unique_ptr<LocalPageServer>(new LocalPageServer(std::move(service)));
}

LocalPageServer::LocalPageServer(std::unique_ptr<Service> service) : service_(std::move(service)) {}

LocalPageServer::~LocalPageServer() = default;

std::string LocalPageServer::address(std::string_view file) const {
  return "http://127.0.0.1:" + std::to_string(service_->port) + service_->prefix + std::string(file);
}

}  // namespace corvane::demo
