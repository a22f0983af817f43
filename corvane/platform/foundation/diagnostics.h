/// Telling developers what was dropped in silence.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "corvane/export.h"

namespace corvane {

/// Something that the framework passed over because there was nothing better to do.
struct Diagnostic {
  enum class Kind : std::uint8_t {
    messageDropped,     ///< a page's message was not understood, or nobody waited for it
    addressRefused,     ///< no address could be made, or it is none that an engine loads
    scriptFailed,       ///< a script of the framework failed in the page
    pageNeverAttached,  ///< nobody plays a headless page that is to load, or a simulated page has no view
    requestDropped,     ///< nobody was there to be asked: a holder that holds no agent view
  };
  Kind kind = Kind::messageDropped;
  /// What happened and why, in words for developers. It may hold what the page sent, shortened.
  std::string text;
};

using DiagnosticsHandler = std::function<void(const Diagnostic&)>;

/// Calls the handler inside whatever drops something; an empty one, as at first, hears nothing and costs nothing. The
/// handler stays until it is replaced, over backends, too. It must not call into the framework.
///
/// Main thread only.
CORVANE_EXPORT void setDiagnosticsHandler(DiagnosticsHandler handler);

namespace diagnostics_detail {

CORVANE_EXPORT extern const DiagnosticsHandler* handler;

}  // namespace diagnostics_detail

/// For the framework's own code: `makeText` is only called for a handler.
template <class MakeText>
void diagnose(Diagnostic::Kind kind, MakeText makeText) {
  if (diagnostics_detail::handler != nullptr) (*diagnostics_detail::handler)({kind, makeText()});
}

}  // namespace corvane
