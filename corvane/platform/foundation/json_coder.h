/// How records are read from JSON and written to it. A record states its members once, as a table of fields, and both
/// directions follow that table.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/foundation/json_writer.h"
#include "corvane/platform/foundation/raw_text.h"

namespace corvane {

/// `static Type decode(Source)` and `static void encode(const Type&, JsonWriter&)`; specialised for each type. A source
/// is a JsonView, or whatever else offers its reading operations.
///
/// A type that reads differently inside of another takes that one's context: `decode(Source, Context)`. Records,
/// optional members and lists hand a context on to whatever takes it.
template <class Type>
struct JsonCoding;

/// Specialised for each record with `static constexpr auto fields = std::tuple{required(...), ...}`, and for records
/// that cannot be made from nothing with `static Record blank()`.
template <class Record>
struct JsonFields;

template <class Record>
concept HasJsonFields = requires { JsonFields<Record>::fields; };

namespace json_detail {

[[nodiscard]] DecodingError typeMismatch(std::string_view typeName, JsonKind found);
[[nodiscard]] DecodingError keyNotFound(std::string_view key);
[[nodiscard]] DecodingError unknownRawValue(std::string_view text);
[[nodiscard]] DecodingError doesNotFit(std::string_view typeName);

/// The 32-bit float that a decimal stood for, as far as its 64-bit reading tells; infinite beyond their range.
[[nodiscard]] float nearestFloat(double number);

[[nodiscard]] DecodingError hasNoUtf8Form();

/// The text of a value that must be one.
template <class Source>
[[nodiscard]] std::string_view textOf(Source value) {
  const auto text = value.string();
  if (!text) throw typeMismatch("String", value.kind());
  // Not every source lets halves of surrogate pairs through.
  if constexpr (requires { value.isWellFormed(); }) {
    if (!value.isWellFormed()) throw hasNoUtf8Form();
  }
  return *text;
}

/// Decodes a value in a context, which most types do not care about.
template <class Value, class Source, class... Context>
[[nodiscard]] Value decodeIn(Source source, Context... context) {
  if constexpr (requires { JsonCoding<Value>::decode(source, context...); }) {
    return JsonCoding<Value>::decode(source, context...);
  } else {
    return JsonCoding<Value>::decode(source);
  }
}

/// An error that was found below a member or an element, told from one level further up.
[[nodiscard]] DecodingError below(CodingKey key, const DecodingError& error);

/// Runs a step of decoding for one member or element, so that its errors name it.
template <class Key, class Step>
decltype(auto) at(const Key& key, Step step) {
  const auto codingKey = [&] {
    if constexpr (std::is_integral_v<Key>) {
      return CodingKey(std::size_t{key});
    } else {
      return CodingKey(std::string(key));
    }
  };
  try {
    return step();
  } catch (const DecodingError& error) {
    throw below(codingKey(), error);
  }
}

/// Finds the members of an object for a table of fields in one pass; of a member that occurs twice the last counts.
/// Members mostly come in the order of the table, so the search for each begins behind the one before.
template <class Source, class... Fields>
[[nodiscard]] auto findMembers(const std::tuple<Fields...>& fields, Source object) {
  constexpr std::size_t count = sizeof...(Fields);
  std::array<std::optional<Source>, count> found{};
  const auto keys =
      std::apply([](const auto&... field) { return std::array<std::string_view, count>{field.key...}; }, fields);
  std::size_t next = 0;
  for (const auto member : object.members()) {
    for (std::size_t tried = 0; tried < count; ++tried) {
      const std::size_t index = next + tried < count ? next + tried : next + tried - count;
      if (keys[index] != member.key) continue;
      found[index] = member.value;
      next = index + 1 < count ? index + 1 : 0;
      break;
    }
  }
  return found;
}

template <class Record, class Fields, class Source, class... Context>
void decodeFields(Record& record, const Fields& fields, Source object, Context... context) {
  if (!object.isObject()) throw typeMismatch("Object", object.kind());
  const auto found = findMembers(fields, object);
  std::size_t index = 0;
  std::apply([&](const auto&... field) { (field.decode(record, found[index++], context...), ...); }, fields);
}

template <class Record, class Fields>
void encodeMembers(const Record& record, const Fields& fields, JsonWriter& writer) {
  std::apply([&](const auto&... field) { (field.encode(record, writer), ...); }, fields);
}

template <class Record, class Fields>
void encodeFields(const Record& record, const Fields& fields, JsonWriter& writer) {
  writer.beginObject();
  encodeMembers(record, fields, writer);
  writer.endObject();
}

/// Inline for the sake of the key; see there.
template <class Value>
[[gnu::always_inline]] inline void encodeMember(std::string_view key, const Value& value, JsonWriter& writer) {
  writer.key(key);
  JsonCoding<Value>::encode(value, writer);
}

template <class Record, class Value>
struct RequiredField {
  std::string_view key;
  Value Record::* member;

  template <class Source, class... Context>
  void decode(Record& record, const std::optional<Source>& value, Context... context) const {
    if (!value) throw keyNotFound(key);
    at(key, [&] { record.*member = decodeIn<Value>(*value, context...); });
  }
  void encode(const Record& record, JsonWriter& writer) const { encodeMember(key, record.*member, writer); }
};

enum class WhenUnreadable { fails, countsAsAbsent };

template <class Record, class Value, WhenUnreadable whenUnreadable>
struct OptionalField {
  std::string_view key;
  std::optional<Value> Record::* member;

  template <class Source, class... Context>
  void decode(Record& record, const std::optional<Source>& value, Context... context) const {
    (record.*member).reset();
    if (!value || value->isNull()) return;
    if constexpr (whenUnreadable == WhenUnreadable::fails) {
      at(key, [&] { record.*member = decodeIn<Value>(*value, context...); });
    } else {
      try {
        record.*member = decodeIn<Value>(*value, context...);
      } catch (const DecodingError&) {
        (record.*member).reset();
      }
    }
  }
  void encode(const Record& record, JsonWriter& writer) const {
    if (record.*member) encodeMember(key, *(record.*member), writer);
  }
};

template <class... Fields>
struct NestedFields {
  std::string_view key;
  std::tuple<Fields...> fields;

  template <class Record, class Source, class... Context>
  void decode(Record& record, const std::optional<Source>& value, Context... context) const {
    if (!value) throw keyNotFound(key);
    at(key, [&] { decodeFields(record, fields, *value, context...); });
  }
  template <class Record>
  void encode(const Record& record, JsonWriter& writer) const {
    writer.key(key);
    encodeFields(record, fields, writer);
  }
};

}  // namespace json_detail

/// A member that is always written and must be there when read.
template <class Record, class Value>
constexpr auto required(std::string_view key, Value Record::* member) {
  return json_detail::RequiredField<Record, Value>{key, member};
}

/// A member that is left out when there is no value. Read, an absent one or a null gives none, and a value of another
/// type fails.
template <class Record, class Value>
constexpr auto optional(std::string_view key, std::optional<Value> Record::* member) {
  return json_detail::OptionalField<Record, Value, json_detail::WhenUnreadable::fails>{key, member};
}

/// As `optional`, but whatever cannot be read gives none.
template <class Record, class Value>
constexpr auto lenient(std::string_view key, std::optional<Value> Record::* member) {
  return json_detail::OptionalField<Record, Value, json_detail::WhenUnreadable::countsAsAbsent>{key, member};
}

/// Members that stand one level deeper in the JSON than in the record.
template <class... Fields>
constexpr auto nested(std::string_view key, Fields... fields) {
  return json_detail::NestedFields<Fields...>{key, std::tuple{fields...}};
}

template <>
struct JsonCoding<std::string> {
  template <class Source>
  static std::string decode(Source value) {
    return std::string(json_detail::textOf(value));
  }
  static void encode(const std::string& text, JsonWriter& writer) { writer.text(text); }
};

template <>
struct JsonCoding<bool> {
  template <class Source>
  static bool decode(Source value) {
    if (const auto boolean = value.boolean()) return *boolean;
    throw json_detail::typeMismatch("Bool", value.kind());
  }
  static void encode(bool boolean, JsonWriter& writer) { writer.boolean(boolean); }
};

template <>
struct JsonCoding<std::int64_t> {
  template <class Source>
  static std::int64_t decode(Source value) {
    if (const auto number = value.integer()) return *number;
    if (value.kind() != JsonKind::number) throw json_detail::typeMismatch("Int", value.kind());
    throw json_detail::doesNotFit("Int");
  }
  static void encode(std::int64_t number, JsonWriter& writer) { writer.integer(number); }
};

template <>
struct JsonCoding<float> {
  template <class Source>
  static float decode(Source value) {
    const auto number = value.number();
    if (!number) throw json_detail::typeMismatch("Float", value.kind());
    const float nearest = json_detail::nearestFloat(*number);
    if (!std::isfinite(nearest)) throw json_detail::doesNotFit("Float");
    return nearest;
  }
  static void encode(float number, JsonWriter& writer) { writer.real(number); }
};

template <class Element>
struct JsonCoding<std::vector<Element>> {
  template <class Source, class... Context>
  static std::vector<Element> decode(Source value, Context... context) {
    if (!value.isArray()) throw json_detail::typeMismatch("Array", value.kind());
    std::vector<Element> elements;
    elements.reserve(value.size());
    for (const Source element : value.elements()) {
      json_detail::at(elements.size(),
                      [&] { elements.push_back(json_detail::decodeIn<Element>(element, context...)); });
    }
    return elements;
  }
  static void encode(const std::vector<Element>& elements, JsonWriter& writer) {
    writer.beginArray();
    for (const Element& element : elements) JsonCoding<Element>::encode(element, writer);
    writer.endArray();
  }
};

template <HasRawText Enumeration>
struct JsonCoding<Enumeration> {
  template <class Source>
  static Enumeration decode(Source value) {
    const std::string_view text = json_detail::textOf(value);
    if (const auto enumerator = fromRawValue<Enumeration>(text)) return *enumerator;
    throw json_detail::unknownRawValue(text);
  }
  static void encode(Enumeration enumerator, JsonWriter& writer) { writer.text(rawValue(enumerator)); }
};

template <HasJsonFields Record>
struct JsonCoding<Record> {
  template <class Source, class... Context>
  static Record decode(Source value, Context... context) {
    auto record = [] {
      if constexpr (requires { JsonFields<Record>::blank(); }) {
        return JsonFields<Record>::blank();
      } else {
        return Record{};
      }
    }();
    json_detail::decodeFields(record, JsonFields<Record>::fields, value, context...);
    return record;
  }
  static void encode(const Record& record, JsonWriter& writer) {
    json_detail::encodeFields(record, JsonFields<Record>::fields, writer);
  }
};

}  // namespace corvane
