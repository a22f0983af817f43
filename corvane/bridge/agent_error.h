/// Why an operation of the agent view failed.
#pragma once

#include <concepts>
#include <exception>
#include <string>
#include <utility>
#include <variant>

#include "corvane/export.h"
#include "corvane/platform/foundation/match.h"

namespace corvane {

/// The one failure type of the product and cart operations.
///
/// It is handed to completions and never thrown by the framework; as an exception type it can be thrown by host apps.
/// Take it apart with `match`, one arm a case, or ask for single cases with `is` and `getIf`.
class CORVANE_EXPORT AgentError : public std::exception, public SumType<AgentError> {
 public:
  /// The page answered with an error; the text is the page's own.
  struct AgentToolError {
    std::string description;
    bool operator==(const AgentToolError&) const = default;
  };
  /// The product has no JSON form, so that nothing was sent.
  struct EncodingError {
    std::string description;
    bool operator==(const EncodingError&) const = default;
  };
  /// No call is running, so that nothing was sent.
  struct NoActiveCall {
    bool operator==(const NoActiveCall&) const = default;
  };
  /// The page did not answer within five seconds.
  struct RequestTimeout {
    bool operator==(const RequestTimeout&) const = default;
  };
  /// The cart holds nothing of the SKU that was to be decremented.
  struct SkuNotFound {
    bool operator==(const SkuNotFound&) const = default;
  };
  using Value = std::variant<AgentToolError, EncodingError, NoActiveCall, RequestTimeout, SkuNotFound>;

  /// Any of the cases converts to an error.
  template <class Case>
    requires std::constructible_from<Value, Case> && (!std::derived_from<std::remove_cvref_t<Case>, AgentError>)
  AgentError(Case&& value) : value_(std::forward<Case>(value)) {}
  AgentError(const AgentError&) = default;
  AgentError(AgentError&&) = default;
  AgentError& operator=(const AgentError&) = default;
  AgentError& operator=(AgentError&&) = default;
  ~AgentError() override;

  [[nodiscard]] const Value& value() const CORVANE_LIFETIMEBOUND { return value_; }

  /// For logs: the description of the cases that have one, the name of the others.
  [[nodiscard]] const char* what() const noexcept override;

  /// The same case with the same description, letter by letter.
  bool operator==(const AgentError& other) const { return value_ == other.value_; }

 private:
  Value value_;
};

}  // namespace corvane
