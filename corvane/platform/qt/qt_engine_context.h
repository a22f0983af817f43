/// What all web engines of a backend share.
#pragma once

#include <QtWebEngineCore/QWebEngineProfile>
#include <memory>

#include "corvane/platform/qt/qt_backend.h"
#include "corvane/platform/qt/qt_run_loop.h"

namespace corvane::qt {

/// The run loop, the profile with cookies and caches, and how users are asked for permission.
///
/// Ownership: shared by the backend and its engines, so that an engine that outlives the backend finds everything. The
///            profile ends after the last page.
/// Threads:   main thread only.
struct EngineContext {
  explicit EngineContext(const BackendOptions& chosen);

  BackendOptions options;
  std::shared_ptr<QtRunLoop> runLoop;
  std::unique_ptr<QWebEngineProfile> profile;
  /// Empty for the dialog that the backend brings.
  CapturePrompt capturePrompt;
  CaptureDialogTexts captureDialogTexts;
};

}  // namespace corvane::qt
