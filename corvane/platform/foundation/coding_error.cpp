#include "corvane/platform/foundation/coding_error.h"

#include <utility>

namespace corvane {

namespace {

std::string describe(const CodingPath& path, const std::string& description) {
  return path.empty() ? description : toText(path) + ": " + description;
}

}  // namespace

std::string toText(const CodingPath& path) {
  std::string text;
  for (const CodingKey& key : path) {
    if (const auto* index = std::get_if<std::size_t>(&key)) {
      text += '[' + std::to_string(*index) + ']';
    } else {
      if (!text.empty()) text += '.';
      text += std::get<std::string>(key);
    }
  }
  return text;
}

InvalidDataError::~InvalidDataError() = default;

DecodingError::DecodingError(Kind kind, std::string typeName, CodingPath codingPath, std::string debugDescription)
    : kind_(kind),
      typeName_(std::move(typeName)),
      codingPath_(std::move(codingPath)),
      debugDescription_(std::move(debugDescription)),
      what_(describe(codingPath_, debugDescription_)) {}

EncodingError::EncodingError(Kind kind, CodingPath codingPath, std::string debugDescription)
    : kind_(kind),
      codingPath_(std::move(codingPath)),
      debugDescription_(std::move(debugDescription)),
      what_(describe(codingPath_, debugDescription_)) {}

}  // namespace corvane
