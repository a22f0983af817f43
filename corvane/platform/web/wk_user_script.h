/// A script that the engine runs in the pages it loads.
#pragma once

#include <string>

#include "corvane/export.h"

namespace corvane {

enum class WKUserScriptInjectionTime { atDocumentStart, atDocumentEnd };

/// A script, and where and when it runs.
struct WKUserScript {
  std::string source;
  WKUserScriptInjectionTime injectionTime = WKUserScriptInjectionTime::atDocumentEnd;
  bool isForMainFrameOnly = true;

  bool operator==(const WKUserScript&) const = default;
};

}  // namespace corvane
