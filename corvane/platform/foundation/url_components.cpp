#include "corvane/platform/foundation/url_components.h"

#include <uriparser/Uri.h>

#include <memory>

#include "corvane/platform/foundation/utf8.h"

namespace corvane {

namespace {

// The parser descends once for each character of a path, so an endless address could exhaust the stack. No server
// takes addresses anywhere near this long.
constexpr std::size_t longestAddress = std::size_t{64} * 1024;

bool isUriReference(std::string_view text) {
  if (text.size() > longestAddress) return false;
  UriUriA uri{};
  const char* errorPosition = nullptr;
  const int result = uriParseSingleUriExA(&uri, text.data(), text.data() + text.size(), &errorPosition);
  if (result != URI_SUCCESS) return false;  // the parser has already freed what it took
  uriFreeUriMembersA(&uri);
  return true;
}

bool isUnescaped(char character) {
  constexpr std::string_view punctuation = "-._~!$'()*,;:@/?";
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || punctuation.contains(character);
}

void appendEncoded(std::string& text, std::string_view value) {
  constexpr std::string_view hex = "0123456789ABCDEF";
  for (const char character : value) {
    if (isUnescaped(character)) {
      text += character;
    } else {
      const auto byte = static_cast<unsigned char>(character);
      text += {'%', hex[byte >> 4U], hex[byte & 0xFU]};
    }
  }
}

}  // namespace

bool hasScheme(std::string_view url) {
  const auto isDigit = [](char character) { return character >= '0' && character <= '9'; };
  const auto end = url.find_first_of(":/?#");
  if (end == std::string_view::npos || end == 0 || url[end] != ':') return false;
  // By the grammar alone, the host before a port would be a scheme.
  return end + 1 < url.size() && !isDigit(url[end + 1]);
}

std::optional<URLComponents> URLComponents::parse(std::string_view text) {
  if (!isUriReference(text)) return std::nullopt;
  URLComponents components;
  if (const auto hash = text.find('#'); hash != std::string_view::npos) {
    components.fragment_ = text.substr(hash + 1);
    text = text.substr(0, hash);
  }
  if (const auto mark = text.find('?'); mark != std::string_view::npos) {
    components.query_ = text.substr(mark + 1);
    text = text.substr(0, mark);
  }
  components.beforeQuery_ = text;
  return components;
}

bool URLComponents::setQueryItems(std::span<const URLQueryItem> items) {
  std::string query;
  for (const URLQueryItem& item : items) {
    if (!isValidUtf8(item.name) || !isValidUtf8(item.value)) return false;
    if (!query.empty()) query += '&';
    appendEncoded(query, item.name);
    query += '=';
    appendEncoded(query, item.value);
  }
  query_ = std::move(query);
  return true;
}

std::string URLComponents::url() const {
  std::string text = beforeQuery_;
  if (query_) text.append("?").append(*query_);
  if (fragment_) text.append("#").append(*fragment_);
  return text;
}

}  // namespace corvane
