/// The outcome of a request in words, so that any two can be compared and printed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "corvane/bridge/completion.h"

namespace corvane::soak {

inline constexpr std::string_view done = "done";
inline constexpr std::string_view noValue = "no value";

[[nodiscard]] std::string outcomeOf(const std::optional<AgentError>& error);
[[nodiscard]] std::string outcomeOf(const AgentResult<std::vector<std::string>>& skus);
[[nodiscard]] std::string outcomeOf(const AgentResult<bool>& answer);
[[nodiscard]] std::string outcomeOf(const AgentResult<CartQuantities>& cart);

}  // namespace corvane::soak
