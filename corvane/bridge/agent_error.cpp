#include "corvane/bridge/agent_error.h"

namespace corvane {

AgentError::~AgentError() = default;

const char* AgentError::what() const noexcept {
  return match([](const AgentToolError& error) { return error.description.c_str(); },
               [](const EncodingError& error) { return error.description.c_str(); },
               [](const NoActiveCall&) { return "noActiveCall"; },
               [](const RequestTimeout&) { return "requestTimeout"; },
               [](const SkuNotFound&) { return "skuNotFound"; });
}

}  // namespace corvane
