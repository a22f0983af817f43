/// A server that does not do what browsers hope for.
#pragma once

#include <string>

struct _GSocketService;
using GSocketService = _GSocketService;
struct _SoupServer;
using SoupServer = _SoupServer;

namespace corvane::contract {

/// Listens on a free port of 127.0.0.1: paths with "silent" get no answer, all others half a page.
class TroubleServer {
 public:
  TroubleServer();
  TroubleServer(const TroubleServer&) = delete;
  TroubleServer& operator=(const TroubleServer&) = delete;
  ~TroubleServer();

  [[nodiscard]] std::string address(const std::string& path) const;

 private:
  GSocketService* service_;
  unsigned port_;
};

/// Speaks TLS with a certificate that nobody has signed but itself.
class SelfSignedServer {
 public:
  /// The file holds a certificate and its key.
  explicit SelfSignedServer(const std::string& certificateFile);
  SelfSignedServer(const SelfSignedServer&) = delete;
  SelfSignedServer& operator=(const SelfSignedServer&) = delete;
  ~SelfSignedServer();

  [[nodiscard]] std::string address() const;

 private:
  SoupServer* server_;
};

/// The address of a port on which nobody listens.
[[nodiscard]] std::string closedPortAddress();

}  // namespace corvane::contract
