/// The agent in QML: `import Corvane`.
#pragma once

#include "corvane/export.h"

namespace corvane::quick {

/// Registers the QML module `Corvane`: the item `VelnorAgent`, the attached properties of `AgentScreen`, and the
/// singletons `AgentContext` and `MinimizedState`. Call it once, before any QML is loaded; further calls change
/// nothing. A `qt::Backend` must be installed before an item of it is made. Main thread only.
CORVANE_EXPORT void registerQmlModule();

}  // namespace corvane::quick
