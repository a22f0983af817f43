/// What happens in and around the agent tool, as the host app is told.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

#include "corvane/bridge/call_session_status.h"
#include "corvane/bridge/product_cart_status.h"
#include "corvane/export.h"
#include "corvane/platform/foundation/json_coding.h"
#include "corvane/platform/foundation/match.h"

namespace corvane {

/// One event, with what belongs to it.
///
/// Take it apart with `match`, one arm a case, or ask for single cases with `getIf`:
///
///     event.match([](const AgentEvent::DidLoad&) { ... }, [](const AgentEvent::CallStatusUpdate& e) { ... }, ...);
///     if (const auto* update = event.getIf<AgentEvent::CallStatusUpdate>()) show(update->status);
///
/// `encodeJson` and `decodeJson` take it: an object with one member, named as the case, that holds the case's values,
/// for example {"callStatusUpdate":{"status":"CALL_SESSION_STATUS_RUNNING"}} or {"didLoad":{}}. An object that names no
/// case, or several, fails with a type mismatch. The name stands beside each case, and the member beside its value.
class AgentEvent : public SumType<AgentEvent> {
 public:
  /// Never raised by the framework; part of the vocabulary.
  struct Unknown {
    static constexpr std::string_view name = "unknown";
    bool operator==(const Unknown&) const = default;
  };
  /// The call has changed its state.
  struct CallStatusUpdate {
    static constexpr std::string_view name = "callStatusUpdate";
    CallSessionStatus status = CallSessionStatus::disconnected;
    static constexpr std::pair member{std::string_view("status"), &CallStatusUpdate::status};
    bool operator==(const CallStatusUpdate&) const = default;
  };
  /// A call has begun; the customer uses this language and region.
  struct ClientLocale {
    static constexpr std::string_view name = "clientLocale";
    std::string locale;
    static constexpr std::pair member{std::string_view("locale"), &ClientLocale::locale};
    bool operator==(const ClientLocale&) const = default;
  };
  /// The page did not load, or an action could not be posted into it; the view's `error` tells why.
  struct Error {
    static constexpr std::string_view name = "error";
    bool operator==(const Error&) const = default;
  };
  /// The page has loaded for the first time.
  struct DidLoad {
    static constexpr std::string_view name = "didLoad";
    bool operator==(const DidLoad&) const = default;
  };
  /// The view is about to shrink; nothing has changed yet.
  struct WillMinimize {
    static constexpr std::string_view name = "willMinimize";
    bool operator==(const WillMinimize&) const = default;
  };
  /// The view has shrunk and can be dragged.
  struct DidMinimize {
    static constexpr std::string_view name = "didMinimize";
    bool operator==(const DidMinimize&) const = default;
  };
  /// The view is about to grow back; nothing has changed yet.
  struct WillMaximize {
    static constexpr std::string_view name = "willMaximize";
    bool operator==(const WillMaximize&) const = default;
  };
  /// The view has grown back, and the page has been told.
  struct DidMaximize {
    static constexpr std::string_view name = "didMaximize";
    bool operator==(const DidMaximize&) const = default;
  };
  /// The page may use the camera and the microphone.
  struct PreviewStarted {
    static constexpr std::string_view name = "previewStarted";
    bool operator==(const PreviewStarted&) const = default;
  };
  /// The customer's cart holds this line now; a quantity below 1 means that it is gone.
  struct ProductUpdateInCart {
    static constexpr std::string_view name = "productUpdateInCart";
    ProductCartStatus data;
    static constexpr std::pair member{std::string_view("data"), &ProductUpdateInCart::data};
    bool operator==(const ProductUpdateInCart&) const = default;
  };
  /// The call no longer shows this product.
  struct ProductRemovedFromCall {
    static constexpr std::string_view name = "productRemovedFromCall";
    std::string sku;
    static constexpr std::pair member{std::string_view("sku"), &ProductRemovedFromCall::sku};
    bool operator==(const ProductRemovedFromCall&) const = default;
  };
  /// The cart no longer holds this product.
  struct ProductRemovedFromCart {
    static constexpr std::string_view name = "productRemovedFromCart";
    std::string sku;
    static constexpr std::pair member{std::string_view("sku"), &ProductRemovedFromCart::sku};
    bool operator==(const ProductRemovedFromCart&) const = default;
  };
  /// The page wants a new single sign-on token, handed over with this response identifier.
  struct RefreshSsoToken {
    static constexpr std::string_view name = "refreshSsoToken";
    std::string responseId;
    static constexpr std::pair member{std::string_view("responseId"), &RefreshSsoToken::responseId};
    bool operator==(const RefreshSsoToken&) const = default;
  };
  /// The page is not, or no longer, signed in.
  struct Unauthorized {
    static constexpr std::string_view name = "unauthorized";
    bool operator==(const Unauthorized&) const = default;
  };

  using Value = std::variant<Unknown, CallStatusUpdate, ClientLocale, Error, DidLoad, WillMinimize, DidMinimize,
                             WillMaximize, DidMaximize, PreviewStarted, ProductUpdateInCart, ProductRemovedFromCall,
                             ProductRemovedFromCart, RefreshSsoToken, Unauthorized>;

  /// Any of the cases converts to an event.
  AgentEvent(Value value) : value_(std::move(value)) {}
  template <class Case>
    requires std::constructible_from<Value, Case> && (!std::same_as<std::remove_cvref_t<Case>, AgentEvent>) &&
             (!std::same_as<std::remove_cvref_t<Case>, Value>)
  AgentEvent(Case&& value) : value_(std::forward<Case>(value)) {}

  [[nodiscard]] const Value& value() const CORVANE_LIFETIMEBOUND { return value_; }

  bool operator==(const AgentEvent&) const = default;

 private:
  Value value_;
};

/// Receives events on the main thread. It may do anything, dropping the view that called it included.
using AgentEventHandler = std::function<void(const AgentEvent&)>;

}  // namespace corvane
