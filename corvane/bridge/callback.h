/// The header of an answer from the page.
#pragma once

#include <optional>
#include <string>

#include "corvane/platform/foundation/json_coder.h"

namespace corvane {

struct Callback {
  /// Which request is answered.
  std::string _id{};
  /// What went wrong, in the page's words; none for success.
  std::optional<std::string> error{};

  bool operator==(const Callback&) const = default;
};

template <>
struct JsonFields<Callback> {
  static constexpr auto fields = std::tuple{required("_id", &Callback::_id), optional("error", &Callback::error)};
};

}  // namespace corvane
