/// Why a page did not load or a script did not run.
#pragma once

#include <string>

#include "corvane/export.h"

namespace corvane {

/// A failed load or script: what kind of failure, and the engine's words for it.
struct WebError {
  enum class Kind {
    cannotLoad,         ///< no connection, no such host, a broken answer, an address of no use
    timedOut,           ///< nothing came for as long as the request allowed
    insecureServer,     ///< the server's certificate is not trusted
    cancelled,          ///< the load was stopped, or turned into something else than a page
    processTerminated,  ///< the engine's process for this page has ended
    scriptFailed,       ///< the script threw, did not parse, or gave a result that has no JSON form
  };

  Kind kind = Kind::cannotLoad;
  /// The engine's own words, for logs and developers.
  std::string description{};
  /// The address that failed, where there is one.
  std::string failingUrl{};

  bool operator==(const WebError&) const = default;
};

}  // namespace corvane
