/// What became of a request, in words for a log.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "corvane/bridge/completion.h"

namespace corvane::demo {

[[nodiscard]] std::string valueText(bool value);
[[nodiscard]] std::string valueText(const std::vector<std::string>& skus);
[[nodiscard]] std::string valueText(const CartQuantities& cart);

/// Names the case, and quotes its description where it has one.
[[nodiscard]] std::string errorText(const AgentError& error);

/// For operations that give nothing back.
[[nodiscard]] std::string outcomeText(const std::optional<AgentError>& error);

/// For operations that give a value back. The page may answer without one.
template <class Value>
[[nodiscard]] std::string outcomeText(const AgentResult<Value>& result) {
  if (!result) return errorText(result.error());
  return *result ? valueText(**result) : "no value";
}

}  // namespace corvane::demo
