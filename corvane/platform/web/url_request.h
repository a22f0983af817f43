/// What a web view is asked to load.
#pragma once

#include <chrono>
#include <string>

#include "corvane/export.h"

namespace corvane {

enum class URLRequestCachePolicy {
  useProtocolCachePolicy,        ///< caches as the server's answer allows
  reloadIgnoringLocalCacheData,  ///< asks the server again
};

/// An address, and how it is to be loaded.
struct URLRequest {
  /// An address as text, normally absolute. One that the engine cannot load fails the load, not the request.
  std::string url;
  URLRequestCachePolicy cachePolicy = URLRequestCachePolicy::useProtocolCachePolicy;
  /// How long the load may go without any progress before it fails.
  std::chrono::nanoseconds timeoutInterval = std::chrono::seconds(60);

  bool operator==(const URLRequest&) const = default;
};

}  // namespace corvane
