/// The states of a call.
#pragma once

#include <array>
#include <cstdint>

#include "corvane/platform/foundation/json_coding.h"
#include "corvane/platform/foundation/raw_text.h"

namespace corvane {

/// What a call is doing, as the page reports it. Only `running` counts as an active call.
///
/// `rawValue(status)` and `fromRawValue<CallSessionStatus>(text)` translate to and from the page's texts,
/// `allCases<CallSessionStatus>()` lists all states, and `encodeJson` and `decodeJson` take single states.
enum class CallSessionStatus : std::uint8_t {
  starting,
  ready,
  waiting,
  connecting,
  running,
  reconnecting,
  disconnecting,
  disconnected,
  paused,
  waitingButLostRemote,
  forwarding,
};

template <>
struct RawTextTable<CallSessionStatus> {
  using enum CallSessionStatus;
  static constexpr std::array rows{
      RawText{starting, "CALL_SESSION_STATUS_STARTING"},
      RawText{ready, "CALL_SESSION_STATUS_READY"},
      RawText{waiting, "CALL_SESSION_STATUS_WAITING"},
      RawText{connecting, "CALL_SESSION_STATUS_CONNECTING"},
      RawText{running, "CALL_SESSION_STATUS_RUNNING"},
      RawText{reconnecting, "CALL_SESSION_STATUS_RECONNECTING"},
      RawText{disconnecting, "CALL_SESSION_STATUS_DISCONNECTING"},
      RawText{disconnected, "CALL_SESSION_STATUS_DISCONNECTED"},
      RawText{paused, "CALL_SESSION_STATUS_PAUSED"},
      RawText{waitingButLostRemote, "CALL_SESSION_STATUS_WAITING_BUT_LOST_REMOTE"},
      // The page itself writes the word without its first R.
      RawText{forwarding, "CALL_SESSION_STATUS_FOWARDING"},
  };
};

}  // namespace corvane
