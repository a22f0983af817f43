#include "corvane/agent_view/page_address.h"

#include <array>

#include "corvane/agent_view/build_settings.h"
#include "corvane/platform/foundation/url_components.h"

namespace corvane {

namespace {

std::string baseAddress(const Region& region) {
  const std::string host = "https://" + std::string(agentToolHost);
  return region.match([](const Region::Custom& custom) { return custom.url; },
                      [&](const Region::Eu&) { return host + "/eu/agent-tool/"; },
                      [&](const Region::Global&) { return host + "/refresh-us/agent-tool/"; });
}

std::string asText(bool value) { return value ? "true" : "false"; }

}  // namespace

std::optional<std::string> makePageAddress(const PageAddressParameters& parameters) {
  auto components = URLComponents::parse(baseAddress(parameters.region));
  if (!components) return std::nullopt;
  const std::array items{
      URLQueryItem{"orgId", parameters.organisationId},
      URLQueryItem{"isNativeSDK", asText(isNativeSDK)},
      URLQueryItem{"connectId", parameters.connectId},
      URLQueryItem{"ssoLogin", asText(parameters.enableSSO)},
  };
  if (!components->setQueryItems(items)) return std::nullopt;
  return components->url();
}

}  // namespace corvane
