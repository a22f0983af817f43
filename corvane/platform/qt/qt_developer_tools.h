/// The engine's tools for looking into a page, for the app's developers.
#pragma once

#include "corvane/export.h"

namespace corvane {
class UIView;
}  // namespace corvane

namespace corvane::qt {

/// Opens the engine's developer tools for the page that a view shows, such as an agent view, in a window of their own.
/// They end with the page. Decide who may: whoever has the tools can read and change everything in the page. False
/// where the view has no page of this backend. Main thread only.
CORVANE_EXPORT bool showDeveloperTools(const UIView& view);

}  // namespace corvane::qt
