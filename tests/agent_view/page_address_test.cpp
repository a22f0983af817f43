#include "corvane/agent_view/page_address.h"

#include <gtest/gtest.h>

#include "corvane/agent_view/build_settings.h"

namespace corvane {
namespace {

std::optional<std::string> address(const Region& region, const std::string& organisationId,
                                   const std::string& connectId, bool enableSSO = false) {
  return makePageAddress(
      {.region = region, .organisationId = organisationId, .connectId = connectId, .enableSSO = enableSSO});
}

TEST(PageAddress, CarriesTheFourItemsInOrder) {
  const std::string host = "https://" + std::string(agentToolHost);
  EXPECT_EQ(address(Region::eu(), "o1", "b2"),
            host + "/eu/agent-tool/?orgId=o1&isNativeSDK=true&connectId=b2&ssoLogin=false");
  EXPECT_EQ(address(Region::global(), "o1", "b2", true),
            host + "/refresh-us/agent-tool/?orgId=o1&isNativeSDK=true&connectId=b2&ssoLogin=true");
  EXPECT_EQ(address(Region::custom("http://h:1/p?old=1&connectId=x#f"), "", ""),
            "http://h:1/p?orgId=&isNativeSDK=true&connectId=&ssoLogin=false#f");
  EXPECT_EQ(address(Region::custom("http://h"), "a&b", "+"),
            "http://h?orgId=a%26b&isNativeSDK=true&connectId=%2B&ssoLogin=false");
}

}  // namespace
}  // namespace corvane
