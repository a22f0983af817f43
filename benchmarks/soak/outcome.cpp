#include "benchmarks/soak/outcome.h"

namespace corvane::soak {

namespace {

template <class Value>
std::optional<std::string> withoutValue(const AgentResult<Value>& result) {
  if (!result) return outcomeOf(result.error());
  if (!*result) return std::string(noValue);
  return std::nullopt;
}

}  // namespace

std::string outcomeOf(const std::optional<AgentError>& error) {
  if (!error) return std::string(done);
  return error->match([](const AgentError::AgentToolError& tool) { return "error: " + tool.description; },
                      [](const AgentError::EncodingError&) { return std::string("encoding"); },
                      [](const AgentError::NoActiveCall&) { return std::string("no call"); },
                      [](const AgentError::RequestTimeout&) { return std::string("time-out"); },
                      [](const AgentError::SkuNotFound&) { return std::string("not found"); });
}

std::string outcomeOf(const AgentResult<std::vector<std::string>>& skus) {
  if (auto text = withoutValue(skus)) return *std::move(text);
  std::string text = "[";
  for (const std::string& sku : **skus) text += sku + " ";
  return text + "]";
}

std::string outcomeOf(const AgentResult<bool>& answer) {
  if (auto text = withoutValue(answer)) return *std::move(text);
  return **answer ? "true" : "false";
}

std::string outcomeOf(const AgentResult<CartQuantities>& cart) {
  if (auto text = withoutValue(cart)) return *std::move(text);
  std::string text = "{";
  for (const auto& [sku, quantity] : **cart) text += sku + ":" + std::to_string(quantity) + " ";
  return text + "}";
}

}  // namespace corvane::soak
