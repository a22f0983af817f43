/// What the page's events carry, besides cart lines.
#pragma once

#include <string>

#include "corvane/bridge/call_session_status.h"
#include "corvane/platform/foundation/json_coder.h"

namespace corvane {

struct CallStatus {
  CallSessionStatus status = CallSessionStatus::disconnected;
};

template <>
struct JsonFields<CallStatus> {
  static constexpr auto fields = std::tuple{required("status", &CallStatus::status)};
};

/// The customer's side of a call.
struct ClientPlatform {
  /// The customer's language and region, such as "de-CH".
  std::string locale;
};

template <>
struct JsonFields<ClientPlatform> {
  static constexpr auto fields = std::tuple{nested("language", required("locale", &ClientPlatform::locale))};
};

}  // namespace corvane
