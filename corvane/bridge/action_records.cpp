#include "corvane/bridge/action_records.h"

#include <unordered_set>
#include <vector>

#include "corvane/platform/foundation/json_coder.h"
#include "corvane/product/product_coding.h"

namespace corvane {

namespace {

constexpr std::string_view resultKey = "result";

template <class... Data>
std::string actionText(Action action, const Data&... data) {
  JsonWriter writer;
  writer.beginObject();
  json_detail::encodeMember("eventType", action, writer);
  (json_detail::encodeMember("data", data, writer), ...);
  writer.endObject();
  return writer.take();
}

/// The texts of an answer's list; none where there is no list or something else than texts in it.
std::optional<std::vector<std::string_view>> listedTexts(JsonView data) {
  const auto result = data.find(resultKey);
  if (!result || !result->isArray()) return std::nullopt;
  std::vector<std::string_view> texts;
  texts.reserve(result->size());
  for (const JsonView element : result->elements()) {
    const auto text = element.string();
    if (!text) return std::nullopt;
    texts.push_back(*text);
  }
  return texts;
}

}  // namespace

std::optional<std::string> JsonStringEncodable::toJsonString() const {
  try {
    return encode();
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

std::string VoidAction::encode() const { return actionText(_action); }

std::string SSOAction::encode() const { return actionText(fields_.action, fields_.data); }

template <class Data, class Completion>
std::string AnsweredAction<Data, Completion>::encode() const {
  return actionText(_action, data_);
}

template class AnsweredAction<RequestId, SkuListCompletion>;
template class AnsweredAction<RequestId, CartStatusCompletion>;
template class AnsweredAction<SkuData, AgentErrorCompletion>;
template class AnsweredAction<SkuData, BooleanCompletion>;
template class AnsweredAction<ProductActionData, AgentErrorCompletion>;

std::string AddProductAction::encode() const {
  return text_.empty() ? AnsweredAction::encode() : std::exchange(text_, {});
}

void AddProductAction::handleCallback(JsonView /*data*/, std::optional<AgentError> error,
                                      const CartQuantities& /*cart*/) {
  complete(std::move(error));
}

void SkuAction::handleCallback(JsonView /*data*/, std::optional<AgentError> error, const CartQuantities& /*cart*/) {
  complete(std::move(error));
}

void SkuBoolResponseAction::handleCallback(JsonView data, std::optional<AgentError> error,
                                           const CartQuantities& /*cart*/) {
  if (error) return complete(std::unexpected(std::move(*error)));
  const auto result = data.find(resultKey);
  complete(result ? result->boolean() : std::nullopt);
}

void GetProductAction::handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& /*cart*/) {
  if (error) return complete(std::unexpected(std::move(*error)));
  const auto skus = listedTexts(data);
  if (!skus) return complete(std::nullopt);
  complete(std::vector<std::string>(skus->begin(), skus->end()));
}

void GetCartStatusAction::handleCallback(JsonView data, std::optional<AgentError> error, const CartQuantities& cart) {
  if (error) return complete(std::unexpected(std::move(*error)));
  const auto skus = listedTexts(data);
  if (!skus) return complete(std::nullopt);
  const std::unordered_set<std::string_view> listed(skus->begin(), skus->end());
  CartQuantities status;
  for (const auto& item : cart) {
    if (listed.contains(item.first)) status.insert(status.end(), item);
  }
  complete(std::move(status));
}

}  // namespace corvane
