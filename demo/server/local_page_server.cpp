#include "demo/server/local_page_server.h"

#include <libsoup/soup.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <optional>
#include <span>
#include <system_error>
#include <utility>

#include "demo/server/mailbox.h"

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

/// Null for what no page consists of.
const char* contentTypeOf(const std::filesystem::path& file) {
  const std::string extension = file.extension().string();
  const auto* const known = std::ranges::find(contentTypes, extension, &ContentType::extension);
  return known != contentTypes.end() ? known->type : nullptr;
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
  if (error || !std::filesystem::is_regular_file(file, error) || contentTypeOf(file) == nullptr) return std::nullopt;
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
  Mailbox mailbox;

  ~Service() {
    if (server != nullptr) soup_server_disconnect(server.get());
  }

  static void answer(SoupServer*, SoupServerMessage* message, const char* path, GHashTable* query,
                     gpointer data) noexcept;
  void sendFile(SoupServerMessage* message, std::string_view name) const;
  void useMailbox(SoupServerMessage* message, std::string_view box, GHashTable* query);
};

void LocalPageServer::Service::answer(SoupServer*, SoupServerMessage* message, const char* path, GHashTable* query,
                                      gpointer data) noexcept {
  auto& service = *static_cast<Service*>(data);
  SoupMessageHeaders* headers = soup_server_message_get_response_headers(message);
  soup_message_headers_replace(headers, "X-Content-Type-Options", "nosniff");
  // Whoever works on the pages wants to see what they say now.
  soup_message_headers_replace(headers, "Cache-Control", "no-cache");
  // Versions of the server before 3.3 never notice that an idle connection has been closed by the other side.
  soup_message_headers_replace(headers, "Connection", "close");
  std::string_view asked = path;
  // The server also hands over paths that merely begin like ours.
  if (!asked.starts_with(service.prefix)) {
    return soup_server_message_set_status(message, SOUP_STATUS_NOT_FOUND, nullptr);
  }
  asked.remove_prefix(service.prefix.size());
  constexpr std::string_view mailbox = "mailbox/";
  if (asked.starts_with(mailbox)) return service.useMailbox(message, asked.substr(mailbox.size()), query);
  service.sendFile(message, asked);
}

void LocalPageServer::Service::sendFile(SoupServerMessage* message, std::string_view name) const {
  const std::string_view method = soup_server_message_get_method(message);
  if (method != "GET" && method != "HEAD") {
    return soup_server_message_set_status(message, SOUP_STATUS_METHOD_NOT_ALLOWED, nullptr);
  }
  const auto file = findFile(folder, name);
  char* contents = nullptr;
  gsize length = 0;
  if (!file || g_file_get_contents(file->c_str(), &contents, &length, nullptr) == FALSE) {
    return soup_server_message_set_status(message, SOUP_STATUS_NOT_FOUND, nullptr);
  }
  soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
  soup_server_message_set_response(message, contentTypeOf(*file), SOUP_MEMORY_TAKE, contents, length);
}

void LocalPageServer::Service::useMailbox(SoupServerMessage* message, std::string_view box, GHashTable* query) {
  if (std::string_view(soup_server_message_get_method(message)) == "POST") {
    const SoupMessageBody* const body = soup_server_message_get_request_body(message);
    const bool isTaken = mailbox.post(box, {body->data, static_cast<std::size_t>(body->length)});
    return soup_server_message_set_status(message, isTaken ? SOUP_STATUS_NO_CONTENT : SOUP_STATUS_BAD_REQUEST, nullptr);
  }
  const auto* const after = static_cast<const char*>(query != nullptr ? g_hash_table_lookup(query, "after") : nullptr);
  std::optional<std::uint64_t> from;
  guint64 number = 0;
  if (after != nullptr && g_ascii_string_to_unsigned(after, 10, 0, G_MAXUINT64, &number, nullptr) != FALSE) {
    from = number;
  }
  const std::string answer = mailbox.read(box, from);
  soup_server_message_set_status(message, SOUP_STATUS_OK, nullptr);
  soup_server_message_set_response(message, "application/json; charset=utf-8", SOUP_MEMORY_COPY, answer.data(),
                                   answer.size());
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
