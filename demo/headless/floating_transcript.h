/// The floating window without a screen.
#pragma once

namespace corvane::demo {

/// Has a page minimized, dragged and brought back on virtual time, and prints where it is shown on the way. Whether it
/// came to rest where it should.
[[nodiscard]] bool showFloatingWindow();

}  // namespace corvane::demo
