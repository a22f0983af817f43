/// The window of the platform of Qt Quick.
#pragma once

#include "tests/contract/real_engine_platform.h"

class QQuickWindow;

namespace corvane::contract {

/// Of a platform that `quickEngine` has made.
[[nodiscard]] QQuickWindow& quickWindow(RealEnginePlatform& platform);

}  // namespace corvane::contract
