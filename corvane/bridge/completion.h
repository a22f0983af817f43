/// How the operations of the agent view report what became of them.
#pragma once

#include <cstdint>
#include <expected>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "corvane/bridge/agent_error.h"

namespace corvane {

/// Quantities by SKU.
using CartQuantities = std::map<std::string, std::int64_t, std::less<>>;

/// What the page answered, or why there is no answer. The value is absent where the page's answer holds none of the
/// expected type.
template <class Value>
using AgentResult = std::expected<std::optional<Value>, AgentError>;

/// The value alone, for who need not know why there is none: none for an error, and where the page's answer holds none.
///
///     if (const auto cart = valueOf(result)) show(*cart);
///     button.setEnabled(valueOf(isInCart).value_or(false));
///
/// The value ends with the statement unless it is given a name, so do not loop over `*valueOf(result)`.
template <class Value>
[[nodiscard]] std::optional<Value> valueOf(AgentResult<Value> result) {
  if (!result) return std::nullopt;
  return *std::move(result);
}

/// Receives the outcome of an operation that gives nothing back: none for success. May be empty.
using AgentErrorCompletion = std::move_only_function<void(std::optional<AgentError>)>;

/// Receives the outcome of an operation that gives a value back. May be empty.
template <class Value>
using AgentResultCompletion = std::move_only_function<void(AgentResult<Value>)>;

using SkuListCompletion = AgentResultCompletion<std::vector<std::string>>;
using BooleanCompletion = AgentResultCompletion<bool>;
using CartStatusCompletion = AgentResultCompletion<CartQuantities>;

}  // namespace corvane
