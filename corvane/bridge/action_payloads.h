/// What the actions carry, and the JSON members of each.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "corvane/platform/foundation/json_coder.h"
#include "corvane/product/product.h"

namespace corvane {

struct RequestId {
  std::string _id{};
};

template <>
struct JsonFields<RequestId> {
  static constexpr auto fields = std::tuple{required("_id", &RequestId::_id)};
};

struct SkuData {
  std::string _id{};
  std::string sku{};
  std::optional<std::int64_t> quantity{};
};

template <>
struct JsonFields<SkuData> {
  static constexpr auto fields = std::tuple{required("_id", &SkuData::_id), required("sku", &SkuData::sku),
                                            optional("quantity", &SkuData::quantity)};
};

struct ProductActionData {
  Product data;
  std::string _id{};
};

template <>
struct JsonFields<ProductActionData> {
  static constexpr auto fields =
      std::tuple{required("data", &ProductActionData::data), required("_id", &ProductActionData::_id)};
};

struct SSOActionData {
  std::string idToken{};
  std::string responseId{};
};

template <>
struct JsonFields<SSOActionData> {
  static constexpr auto fields =
      std::tuple{required("idToken", &SSOActionData::idToken), required("responseId", &SSOActionData::responseId)};
};

}  // namespace corvane
