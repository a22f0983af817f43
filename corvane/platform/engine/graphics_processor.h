/// Whether drawing is better left to the processor.
#pragma once

namespace corvane::engine {

/// Says no in case of doubt: drawing without a graphics processor works everywhere, emulating one is slow.
[[nodiscard]] bool hasGraphicsProcessor();

}  // namespace corvane::engine
