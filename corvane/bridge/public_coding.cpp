// The records whose JSON form host apps may use on their own.
#include "corvane/bridge/agent_event_coding.h"
#include "corvane/bridge/product_cart_status_coding.h"
#include "corvane/export.h"
#include "corvane/platform/foundation/json_text.h"

namespace corvane {

template CORVANE_EXPORT std::string encodeJson(const AgentEvent& record);
template CORVANE_EXPORT AgentEvent decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const CallSessionStatus& record);
template CORVANE_EXPORT CallSessionStatus decodeJson(std::string_view text);
template CORVANE_EXPORT std::string encodeJson(const ProductCartStatus& record);
template CORVANE_EXPORT ProductCartStatus decodeJson(std::string_view text);

}  // namespace corvane
