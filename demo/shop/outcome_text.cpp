#include "demo/shop/outcome_text.h"

namespace corvane::demo {

std::string valueText(bool value) { return value ? "true" : "false"; }

std::string valueText(const std::vector<std::string>& skus) {
  std::string text;
  for (const std::string& sku : skus) text.append(text.empty() ? "" : ", ").append(sku);
  return "[" + text + "]";
}

std::string valueText(const CartQuantities& cart) {
  std::string text;
  for (const auto& [sku, quantity] : cart) {
    text.append(text.empty() ? "" : ", ").append(sku).append(": ").append(std::to_string(quantity));
  }
  return "{" + text + "}";
}

std::string errorText(const AgentError& error) {
  return error.match([](const AgentError::AgentToolError& tool) { return "AgentToolError: " + tool.description; },
                     [](const AgentError::EncodingError& encoding) { return "EncodingError: " + encoding.description; },
                     [](const AgentError::NoActiveCall&) { return std::string("NoActiveCall"); },
                     [](const AgentError::RequestTimeout&) { return std::string("RequestTimeout"); },
                     [](const AgentError::SkuNotFound&) { return std::string("SkuNotFound"); });
}

std::string outcomeText(const std::optional<AgentError>& error) { return error ? errorText(*error) : "success"; }

}  // namespace corvane::demo
