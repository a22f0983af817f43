/// What every action record can do.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "corvane/bridge/action.h"
#include "corvane/bridge/agent_error.h"
#include "corvane/bridge/completion.h"
#include "corvane/platform/foundation/json_value.h"

namespace corvane {

/// A record with a JSON text.
class JsonStringEncodable {
 public:
  virtual ~JsonStringEncodable() = default;

  /// The record's JSON text. Throws `EncodingError`.
  [[nodiscard]] virtual std::string encode() const = 0;
  /// The record's JSON text, or none where it has none.
  [[nodiscard]] std::optional<std::string> toJsonString() const;
};

/// A record that is posted into the page, and completed with the page's answer where it expects one.
class Actionable : public JsonStringEncodable {
 public:
  [[nodiscard]] virtual Action action() const = 0;
  /// By which the page's answer is matched to the record; none for records that are never answered. It lives as long
  /// as the record.
  [[nodiscard]] virtual std::optional<std::string_view> callbackId() const = 0;
  /// Whether the record may only be sent while a call is running.
  [[nodiscard]] virtual bool requiresActiveCall() const = 0;
  /// Finds out whether the record has a JSON text. Throws `EncodingError`.
  virtual void tryToEncode() { static_cast<void>(encode()); }
  /// Completes the host app's request, the first time that it is called. The cart is the customer's at this moment.
  virtual void handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) = 0;

  /// Completes the request with an error of our own.
  void fail(AgentError error) { handleCallback(JsonView::emptyObject(), std::move(error), {}); }
};

}  // namespace corvane
