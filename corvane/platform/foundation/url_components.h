/// The parts of an address.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corvane {

struct URLQueryItem {
  std::string name;
  std::string value;
};

/// An address taken apart where its query stands, so that the query can be replaced and everything else stays.
class URLComponents {
 public:
  /// Reads an address by the rules of RFC 3986, relative references included. None for anything else: spaces, letters
  /// outside of ASCII, a broken percent escape, a port that is no number.
  [[nodiscard]] static std::optional<URLComponents> parse(std::string_view text);

  /// Replaces the query. Names and values are percent-encoded; a plus sign is, too, because readers of form data take
  /// it for a space. False, and nothing changed, when an item is not valid UTF-8.
  [[nodiscard]] bool setQueryItems(std::span<const URLQueryItem> items);

  /// The address as text.
  [[nodiscard]] std::string url() const;

 private:
  URLComponents() = default;

  std::string beforeQuery_;
  std::optional<std::string> query_;
  std::optional<std::string> fragment_;
};

/// Whether an address says how to get what it leads to, as "https://..." does. A host alone, with its port or without,
/// is none that an engine loads.
[[nodiscard]] bool hasScheme(std::string_view url);

}  // namespace corvane
