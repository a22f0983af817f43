/// What two pages have to say to each other before they are connected.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace corvane::demo {

/// Keeps the newest messages for each box until they are fetched, as JSON texts that it does not look into.
///
/// Nothing that is sent makes it grow without bound: the boxes that have been used longest ago, and the oldest messages
/// of a box, go first.
///
/// Ownership: a value. Threads: one at a time. Failure: `post` refuses what is no JSON or too long.
class Mailbox {
 public:
  static constexpr std::size_t longestMessage = std::size_t{64} * 1024;

  [[nodiscard]] bool post(std::string_view box, std::string_view message);
  /// An object with the `messages` from this number on, none without one, and the number that is `next`.
  [[nodiscard]] std::string read(std::string_view box, std::optional<std::uint64_t> from);

 private:
  struct Box {
    std::deque<std::string> messages{};
    std::uint64_t next = 0;
    std::uint64_t lastUse = 0;
  };

  Box& use(std::string_view name);

  std::map<std::string, Box, std::less<>> boxes_;
  std::uint64_t uses_ = 0;
};

}  // namespace corvane::demo
