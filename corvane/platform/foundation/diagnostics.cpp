#include "corvane/platform/foundation/diagnostics.h"

#include <memory>
#include <utility>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

namespace diagnostics_detail {

const DiagnosticsHandler* handler = nullptr;

}  // namespace diagnostics_detail

void setDiagnosticsHandler(DiagnosticsHandler handler) {
  assertMainThread();
  static std::unique_ptr<const DiagnosticsHandler> held;
  // A handler may replace itself: the previous one ends when this returns, and must not be used after.
  const auto previous =
      std::exchange(held, handler ? std::make_unique<const DiagnosticsHandler>(std::move(handler)) : nullptr);
  diagnostics_detail::handler = held.get();
}

}  // namespace corvane
