// Code that must not compile, one mistake for each definition that the compiler is given.
#include "corvane/bridge/agent_event.h"
#include "corvane/platform/foundation/raw_text.h"

using namespace corvane;

enum class Fruit { apple, pear };
template <>
struct corvane::RawTextTable<Fruit> {
  static constexpr std::array rows{
      RawText{Fruit::apple, "apple"},
#ifndef FORGOTTEN_ROW
      RawText{Fruit::pear, "pear"},
#endif
  };
};
std::string_view name(Fruit fruit) { return rawValue(fruit); }

int lengthOf(const std::variant<int, std::string>& value) {
  return match(
      value,
#ifndef FORGOTTEN_ARM
      [](int number) { return number; },
#endif
      [](const std::string& text) { return static_cast<int>(text.size()); });
}
