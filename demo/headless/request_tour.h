/// Every request that a host app can make, and everything that can go wrong with it, on virtual time.
#pragma once

namespace corvane::demo {

/// Prints a transcript. Whether every request ended as it should have. No backend may be installed.
[[nodiscard]] bool tourRequests();

}  // namespace corvane::demo
