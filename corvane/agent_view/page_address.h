/// The address of the agent tool page.
#pragma once

#include <optional>
#include <string>

#include "corvane/agent_view/region.h"

namespace corvane {

/// Tells the page that an app of ours is around it.
inline constexpr bool isNativeSDK = true;

struct PageAddressParameters {
  const Region& region;
  const std::string& organisationId;
  const std::string& connectId;
  bool enableSSO;
};

/// The address to load for a booking; none when the region's base address is no address, or when an identifier is
/// not valid UTF-8.
[[nodiscard]] std::optional<std::string> makePageAddress(const PageAddressParameters& parameters);

}  // namespace corvane
