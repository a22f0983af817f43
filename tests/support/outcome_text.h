/// The outcomes of requests as texts that a test can compare.
#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "corvane/bridge/completion.h"

namespace corvane {

inline std::string outcomeText(const std::optional<AgentError>& error) {
  return error ? std::string("error ") + error->what() : "success";
}

template <class Value>
std::string outcomeText(const AgentResult<Value>& result) {
  if (!result) return outcomeText(std::optional(result.error()));
  return *result ? nlohmann::json(**result).dump() : "nothing";
}

}  // namespace corvane
