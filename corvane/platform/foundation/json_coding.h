/// JSON text of the framework's public records, and back.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The JSON text of a record. Offered for the types whose documentation says so.
///
/// Throws `EncodingError` for text that is not valid UTF-8, for numbers that are not finite, and where the type's own
/// documentation says so.
template <class Record>
[[nodiscard]] std::string encodeJson(const Record& record);

/// The record that a JSON text (UTF-8) describes. Offered for the types whose documentation says so. Members that the
/// record does not know are ignored; of a member that occurs twice the last one counts.
///
/// Throws `DecodingError`, and for products `ProductSpecError` where variations or attributes are too few. Both are an
/// `InvalidDataError`.
template <class Record>
[[nodiscard]] Record decodeJson(std::string_view text);

}  // namespace corvane
