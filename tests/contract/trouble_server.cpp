#include "tests/contract/trouble_server.h"

#include <gio/gio.h>
#include <libsoup/soup.h>

#include <array>
#include <string_view>

namespace corvane::contract {

namespace {

/// Long enough that the engine shows some of it before it finds out.
std::string halfAPage() {
  return "HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: 1000000\r\n\r\n"
         "<!doctype html><title>Half a page</title><body>" +
         std::string(200'000, 'x');
}

std::string loopback(unsigned port) { return "http://127.0.0.1:" + std::to_string(port) + "/"; }

/// Runs in a thread of its own for each connection, until the other side closes it.
gboolean serve(GThreadedSocketService*, GSocketConnection* connection, GObject*, gpointer) {
  auto* const stream = reinterpret_cast<GIOStream*>(connection);
  GInputStream* const input = g_io_stream_get_input_stream(stream);
  std::array<char, 4096> buffer{};
  gssize size = g_input_stream_read(input, buffer.data(), buffer.size(), nullptr, nullptr);
  // The request comes in one piece over the loopback. Browsers also open connections that they never use.
  const std::string_view request(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
  if (request.substr(0, request.find('\r')).contains("silent")) {
    while (size > 0) size = g_input_stream_read(input, buffer.data(), buffer.size(), nullptr, nullptr);
  } else if (!request.empty()) {
    const std::string page = halfAPage();
    g_output_stream_write_all(g_io_stream_get_output_stream(stream), page.data(), page.size(), nullptr, nullptr,
                              nullptr);
  }
  g_io_stream_close(stream, nullptr, nullptr);
  return TRUE;
}

}  // namespace

TroubleServer::TroubleServer()
    : service_(g_threaded_socket_service_new(16)),
      port_(g_socket_listener_add_any_inet_port(reinterpret_cast<GSocketListener*>(service_), nullptr, nullptr)) {
  g_signal_connect(service_, "run", reinterpret_cast<GCallback>(&serve), nullptr);
  g_socket_service_start(service_);
}

TroubleServer::~TroubleServer() {
  g_socket_service_stop(service_);
  g_object_unref(service_);
}

std::string TroubleServer::address(const std::string& path) const { return loopback(port_) + path; }

SelfSignedServer::SelfSignedServer(const std::string& certificateFile)
    : server_(soup_server_new("server-header", nullptr, nullptr)) {
  GTlsCertificate* const certificate = g_tls_certificate_new_from_file(certificateFile.c_str(), nullptr);
  soup_server_set_tls_certificate(server_, certificate);
  g_object_unref(certificate);
  soup_server_listen_local(
      server_, 0, static_cast<SoupServerListenOptions>(SOUP_SERVER_LISTEN_HTTPS | SOUP_SERVER_LISTEN_IPV4_ONLY),
      nullptr);
}

SelfSignedServer::~SelfSignedServer() {
  soup_server_disconnect(server_);
  g_object_unref(server_);
}

std::string SelfSignedServer::address() const {
  GSList* const uris = soup_server_get_uris(server_);
  const int port = g_uri_get_port(static_cast<GUri*>(uris->data));
  g_slist_free_full(uris, [](gpointer uri) { g_uri_unref(static_cast<GUri*>(uri)); });
  return "https://127.0.0.1:" + std::to_string(port) + "/";
}

std::string closedPortAddress() {
  GSocketListener* const listener = g_socket_listener_new();
  const guint16 port = g_socket_listener_add_any_inet_port(listener, nullptr, nullptr);
  g_socket_listener_close(listener);
  g_object_unref(listener);
  return loopback(port);
}

}  // namespace corvane::contract
