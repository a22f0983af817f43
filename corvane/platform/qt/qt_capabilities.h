/// Finds out what the engine can do on this machine.
#pragma once

#include <functional>
#include <memory>

#include "corvane/platform/qt/qt_engine_context.h"
#include "corvane/platform/web/engine_capabilities.h"

namespace corvane::qt {

/// Asks a hidden page, as no setting tells. The completion is called later, once; the backend's end drops it.
void findCapabilities(const std::shared_ptr<EngineContext>& context,
                      std::move_only_function<void(const EngineCapabilities&)> completion);

}  // namespace corvane::qt
