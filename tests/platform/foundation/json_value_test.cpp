#include "corvane/platform/foundation/json_value.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace corvane {
namespace {

JsonValue parse(std::string_view text) {
  auto value = JsonValue::parse(text);
  if (!value) {
    ADD_FAILURE() << text.substr(0, 80) << ": " << value.error().what();
    return {};
  }
  return *std::move(value);
}

std::vector<JsonView> elementsOf(JsonView array) {
  std::vector<JsonView> all;
  for (const JsonView element : array.elements()) all.push_back(element);
  return all;
}

std::string nestedArrays(std::size_t depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JsonValue, ReadsWholeNumbersHoweverTheyAreWritten) {
  const auto integer = [](std::string_view text) { return parse(text).integer(); };
  EXPECT_EQ(integer("3.0"), 3);
  EXPECT_EQ(integer("3e2"), 300);
  EXPECT_EQ(integer("-0"), 0);
  EXPECT_EQ(integer("9223372036854775807"), std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(integer("-9223372036854775808"), std::numeric_limits<std::int64_t>::min());
  EXPECT_EQ(integer("-9223372036854775808.0"), std::numeric_limits<std::int64_t>::min());
  for (const auto* const text :
       {"9223372036854775808", "9223372036854775808.0", "18446744073709551615", "1e300", "0.5"}) {
    EXPECT_FALSE(integer(text)) << text;
    EXPECT_TRUE(parse(text).number()) << text;
  }
}

TEST(JsonValue, IntegersBeyond64BitsDoNotLoseTheMessage) {
  const JsonValue value =
      parse(R"({"a":100000000000000000000,"b":[-9223372036854775809],"c":"100000000000000000000\"1"})");
  EXPECT_EQ(value.find("a")->number(), 1e20);
  EXPECT_EQ(elementsOf(*value.find("b"))[0].number(), -0x1p63);
  EXPECT_FALSE(elementsOf(*value.find("b"))[0].integer()) << "although its double would fit";
  EXPECT_EQ(value.find("c")->string(), "100000000000000000000\"1");
  for (const std::string& number : {"1" + std::string(400, '0'), std::string("-1.5e+999"), std::string("12E999")}) {
    const JsonValue numbers = parse("[0," + number + ",1e-999,2]");
    const double infinity = std::numeric_limits<double>::infinity();
    EXPECT_EQ(elementsOf(numbers)[1].number(), number.starts_with('-') ? -infinity : infinity) << number;
    EXPECT_FALSE(elementsOf(numbers)[1].integer());
    EXPECT_EQ(elementsOf(numbers)[2].number(), 0) << "next to nothing";
    EXPECT_EQ(elementsOf(numbers)[3].integer(), 2);
  }
}

TEST(JsonValue, HalfASurrogatePairMarksItsTextAndWhatHoldsIt) {
  const JsonValue value = parse(
      R"({"plain":"\ud83d\ude00","bad":["ok","\ud83dx\\\ude00"],"\udc00":1,"after":"\\ud800","last":{"x":"\ud800\ud83d\ude00"}})");
  EXPECT_FALSE(value.isWellFormed());
  EXPECT_TRUE(value.find("plain")->isWellFormed());
  EXPECT_EQ(value.find("plain")->string(), "😀");
  EXPECT_FALSE(value.find("bad")->isWellFormed());
  const auto elements = elementsOf(*value.find("bad"));
  EXPECT_TRUE(elements[0].isWellFormed());
  EXPECT_EQ(elements[1].string(), "\uFFFDx\\\uFFFD");
  EXPECT_EQ(value.find("\uFFFD")->integer(), 1);
  EXPECT_TRUE(value.find("after")->isWellFormed()) << "an escaped backslash before ud800";
  EXPECT_EQ(value.find("last")->find("x")->string(), "\uFFFD😀");
}

TEST(JsonValue, RefusesWhatIsNoJson) {
  for (const std::string_view text :
       {"",       " ",      "{",   "{]",       "[1,]",      "{\"a\"}",         "nul",       "'a'",
        "NaN",    "01",     "1 2", "\"\xff\"", "\"\\x\"",   "\"a\nb\"",        "\"\\ud800", "{\"a\":1}}",
        "01e999", "1.e999", "1e+", "--1e999",  "[1e999 2]", "[\"\\ud800\",01]"}) {
    const auto value = JsonValue::parse(text);
    ASSERT_FALSE(value) << text;
    EXPECT_EQ(value.error().kind(), DecodingError::Kind::dataCorrupted);
    EXPECT_TRUE(value.error().debugDescription().starts_with("The given data was not valid JSON"));
  }
}

TEST(JsonValue, DepthIsBoundedAndLargeTextsAreNot) {
  EXPECT_TRUE(JsonValue::parse(nestedArrays(JsonValue::maximumDepth)));
  EXPECT_FALSE(JsonValue::parse(nestedArrays(JsonValue::maximumDepth + 1)));
  EXPECT_FALSE(JsonValue::parse(std::string(4'000'000, '[')));
  EXPECT_EQ(parse("{\"a\":\"" + std::string(3'000'000, 'x') + "\"}").find("a")->string()->size(), 3'000'000U);
  EXPECT_EQ(parse("[1]").size(), 1U) << "the parser is fit for use after refusals";
}

TEST(JsonValue, HandlesShareADocumentAcrossThreads) {
  JsonValue value = parse(R"(["text that is long enough to live in the document"])");
  JsonValue copy = value;
  value = JsonValue();
  EXPECT_TRUE(value.isNull());
  std::thread([copy] { EXPECT_EQ(copy.size(), 1U); }).join();
  const JsonValue moved = std::move(copy);
  EXPECT_EQ(elementsOf(moved)[0].string()->size(), 48U);
}

}  // namespace
}  // namespace corvane
