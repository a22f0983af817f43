/// What all web engines of a backend share.
#pragma once

#include <webkit/webkit.h>

#include <memory>

#include "corvane/platform/gtk/glib_run_loop.h"
#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/signal_connection.h"

namespace corvane::gtk {

/// The run loop, the network session with cookies and caches, and how users are asked for permission.
///
/// Ownership: shared by the backend and its engines, so that an engine that outlives the backend finds everything.
/// Threads:   main thread only.
struct EngineContext {
  explicit EngineContext(const BackendOptions& chosen);

  BackendOptions options;
  std::shared_ptr<GlibRunLoop> runLoop;
  GObjectHandle<WebKitWebContext> webContext;
  GObjectHandle<WebKitNetworkSession> networkSession;
  SignalConnection downloads;
  /// Empty for the dialog that the backend brings.
  CapturePrompt capturePrompt;
  CaptureDialogTexts captureDialogTexts;
};

}  // namespace corvane::gtk
