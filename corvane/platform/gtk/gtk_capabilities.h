/// Finds out what the engine that is installed here can do.
#pragma once

#include <memory>

#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/web/engine_capabilities.h"

namespace corvane::gtk {

/// Asks a page of its own that nobody sees: engines are built without peer connections, and no setting tells.
void findCapabilities(const std::shared_ptr<EngineContext>& context, bool hasHardwareDrawing,
                      std::move_only_function<void(const EngineCapabilities&)> completion);

}  // namespace corvane::gtk
