/// What a page does with a camera or a microphone.
#pragma once

#include <cstdint>

namespace corvane {

enum class CaptureState : std::uint8_t {
  none,    ///< the page has not opened it
  active,  ///< the page gets pictures or sound
  muted,   ///< the page has it open, and gets nothing
};

}  // namespace corvane
