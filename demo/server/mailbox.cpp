#include "demo/server/mailbox.h"

#include <algorithm>

#include "corvane/platform/foundation/json_value.h"

namespace corvane::demo {

namespace {

constexpr std::size_t mostBoxes = 16;
constexpr std::size_t mostMessages = 64;

}  // namespace

bool Mailbox::post(std::string_view box, std::string_view message) {
  if (message.size() > longestMessage || !JsonValue::parse(message)) return false;
  Box& used = use(box);
  used.messages.emplace_back(message);
  ++used.next;
  if (used.messages.size() > mostMessages) used.messages.pop_front();
  return true;
}

std::string Mailbox::read(std::string_view box, std::optional<std::uint64_t> from) {
  const Box& used = use(box);
  const std::uint64_t first = used.next - used.messages.size();
  std::string text = R"({"messages":[)";
  for (std::uint64_t number = std::max(first, from.value_or(used.next)); number < used.next; ++number) {
    if (text.back() != '[') text += ',';
    text += used.messages[number - first];
  }
  return text + R"(],"next":)" + std::to_string(used.next) + '}';
}

Mailbox::Box& Mailbox::use(std::string_view name) {
  if (!boxes_.contains(name) && boxes_.size() == mostBoxes) {
    boxes_.erase(std::ranges::min_element(boxes_, {}, [](const auto& box) { return box.second.lastUse; }));
  }
  Box& box = boxes_.try_emplace(std::string(name)).first->second;
  box.lastUse = ++uses_;
  return box;
}

}  // namespace corvane::demo
