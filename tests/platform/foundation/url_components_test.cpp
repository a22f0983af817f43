#include "corvane/platform/foundation/url_components.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace corvane {
namespace {

std::string withQuery(std::string_view address, std::string value) {
  auto components = URLComponents::parse(address);
  if (!components) return "no address";
  const std::array items{URLQueryItem{"k", std::move(value)}};
  if (!components->setQueryItems(items)) return "refused";
  return components->url();
}

TEST(URLComponents, ReplacingTheQueryLeavesEverythingElse) {
  EXPECT_EQ(withQuery("https://shop.example/a/b?x=1&y=2#frag?ment", "v"), "https://shop.example/a/b?k=v#frag?ment");
  EXPECT_EQ(withQuery("http://user@[2001:db8::1]:8080", "v"), "http://user@[2001:db8::1]:8080?k=v");
  EXPECT_EQ(withQuery("HTTPS://Shop.Example/%7Ea/../b", "v"), "HTTPS://Shop.Example/%7Ea/../b?k=v");
  EXPECT_EQ(withQuery("../page", "v"), "../page?k=v");
  EXPECT_EQ(withQuery("", "v"), "?k=v");
}

TEST(URLComponents, RefusesWhatIsNoAddress) {
  for (const std::string_view text : {"not a url", "https://shop.example/ä", "https://[::1", "https://a:port/",
                                      "http://a/%zz", "http://a/\n", "https://a/{b}", "http://a/\\"}) {
    EXPECT_FALSE(URLComponents::parse(text)) << text;
  }
  EXPECT_FALSE(URLComponents::parse("https://a/" + std::string(5'000'000, 'b'))) << "must not exhaust the stack";
  EXPECT_TRUE(URLComponents::parse("https://a/" + std::string(60'000, 'b')));
}

TEST(URLComponents, QueryItemsAreReadTheSameByEveryDecoder) {
  EXPECT_EQ(withQuery("h:", "a b&c=d+e#f%g"), "h:?k=a%20b%26c%3Dd%2Be%23f%25g");
  EXPECT_EQ(withQuery("h:", "-._~!$'()*,;:@/?"), "h:?k=-._~!$'()*,;:@/?");
  EXPECT_EQ(withQuery("h:", "ä\"<>\n"), "h:?k=%C3%A4%22%3C%3E%0A");
  EXPECT_EQ(withQuery("h:", ""), "h:?k=");
  EXPECT_EQ(withQuery("h:", "\xff"), "refused");
}

}  // namespace
}  // namespace corvane
