/// Messages that a page posts to its host.
#pragma once

#include <string_view>

#include "corvane/export.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane {

class WKUserContentController;

/// One message, and the channel on which it came.
struct WKScriptMessage {
  /// The channel; a view that lives for the length of the delivery.
  std::string_view name;
  /// What was posted. Values that have no JSON form arrive as null.
  JsonValue body;
};

/// Receives the messages of a channel, on the main thread.
class CORVANE_EXPORT WKScriptMessageHandler {
 public:
  virtual ~WKScriptMessageHandler();
  virtual void userContentControllerDidReceive(WKUserContentController& controller, const WKScriptMessage& message) = 0;
};

}  // namespace corvane
