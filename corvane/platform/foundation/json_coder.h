/// How records are read from JSON and written to it. A record states its members once, as a table of fields, and both
/// directions follow that table.
#pragma once

#include <concepts>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>

#include "corvane/platform/foundation/coding_error.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/foundation/json_writer.h"
#include "corvane/platform/foundation/raw_text.h"

namespace corvane {

/// `static Type decode(JsonView)` and `static void encode(const Type&, JsonWriter&)`; specialised for each type.
template <class Type>
struct JsonCoding;

/// Specialised for each record with `static constexpr auto fields = std::tuple{required(...), ...}`.
template <class Record>
struct JsonFields;

template <class Record>
concept HasJsonFields = requires { JsonFields<Record>::fields; };

namespace json_detail {

[[nodiscard]] DecodingError typeMismatch(std::string_view typeName, JsonView found);
[[nodiscard]] DecodingError keyNotFound(std::string_view key);
[[nodiscard]] DecodingError unknownRawValue(std::string_view text);

/// An error that was found below a member, told from one level further up.
template <class Error>
[[nodiscard]] Error below(CodingKey key, const Error& error) {
  CodingPath path{std::move(key)};
  path.insert(path.end(), error.codingPath().begin(), error.codingPath().end());
  if constexpr (std::same_as<Error, DecodingError>) {
    return {error.kind(), error.typeName(), std::move(path), error.debugDescription()};
  } else {
    return {error.kind(), std::move(path), error.debugDescription()};
  }
}

template <class Record, class Fields>
void decodeFields(Record& record, const Fields& fields, JsonView object) {
  if (!object.isObject()) throw typeMismatch("Object", object);
  std::apply([&](const auto&... field) { (field.decode(record, object.find(field.key)), ...); }, fields);
}

template <class Record, class Fields>
void encodeFields(const Record& record, const Fields& fields, JsonWriter& writer) {
  writer.beginObject();
  std::apply([&](const auto&... field) { (field.encode(record, writer), ...); }, fields);
  writer.endObject();
}

/// Runs a step of coding for one member, so that its errors name the member.
template <class Step>
decltype(auto) atMember(std::string_view key, Step step) {
  try {
    return step();
  } catch (const DecodingError& error) {
    throw below(std::string(key), error);
  } catch (const EncodingError& error) {
    throw below(std::string(key), error);
  }
}

template <class Record, class Value>
struct RequiredField {
  std::string_view key;
  Value Record::* member;

  void decode(Record& record, const std::optional<JsonView>& value) const {
    if (!value) throw keyNotFound(key);
    atMember(key, [&] { record.*member = JsonCoding<Value>::decode(*value); });
  }
  void encode(const Record& record, JsonWriter& writer) const {
    writer.key(key);
    atMember(key, [&] { JsonCoding<Value>::encode(record.*member, writer); });
  }
};

template <class... Fields>
struct NestedFields {
  std::string_view key;
  std::tuple<Fields...> fields;

  template <class Record>
  void decode(Record& record, const std::optional<JsonView>& value) const {
    if (!value) throw keyNotFound(key);
    atMember(key, [&] { decodeFields(record, fields, *value); });
  }
  template <class Record>
  void encode(const Record& record, JsonWriter& writer) const {
    writer.key(key);
    atMember(key, [&] { encodeFields(record, fields, writer); });
  }
};

}  // namespace json_detail

/// A member that is always written and must be there when read.
template <class Record, class Value>
constexpr auto required(std::string_view key, Value Record::* member) {
  return json_detail::RequiredField<Record, Value>{key, member};
}

/// Members that stand one level deeper in the JSON than in the record.
template <class... Fields>
constexpr auto nested(std::string_view key, Fields... fields) {
  return json_detail::NestedFields<Fields...>{key, std::tuple{fields...}};
}

template <>
struct JsonCoding<std::string> {
  static std::string decode(JsonView value) {
    if (const auto text = value.string()) return std::string(*text);
    throw json_detail::typeMismatch("String", value);
  }
  static void encode(const std::string& text, JsonWriter& writer) { writer.text(text); }
};

template <>
struct JsonCoding<std::int64_t> {
  static std::int64_t decode(JsonView value);
  static void encode(std::int64_t number, JsonWriter& writer) { writer.integer(number); }
};

template <HasRawText Enumeration>
struct JsonCoding<Enumeration> {
  static Enumeration decode(JsonView value) {
    const auto text = value.string();
    if (!text) throw json_detail::typeMismatch("String", value);
    if (const auto enumerator = fromRawValue<Enumeration>(*text)) return *enumerator;
    throw json_detail::unknownRawValue(*text);
  }
  static void encode(Enumeration enumerator, JsonWriter& writer) { writer.text(rawValue(enumerator)); }
};

template <HasJsonFields Record>
struct JsonCoding<Record> {
  static Record decode(JsonView value) {
    Record record{};
    json_detail::decodeFields(record, JsonFields<Record>::fields, value);
    return record;
  }
  static void encode(const Record& record, JsonWriter& writer) {
    json_detail::encodeFields(record, JsonFields<Record>::fields, writer);
  }
};

}  // namespace corvane
