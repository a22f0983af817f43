/// Scripts that the host runs in a page, until each has given its answer.
#pragma once

#include <webkit/webkit.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string_view>

#include "corvane/platform/gtk/gobject_handle.h"
#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::gtk {

/// Hands scripts to a web view and completes each exactly once, later. That is with the page's answer, or with an error
/// when the page's process or the engine ends first. A page that never comes back to its scripts therefore keeps nobody
/// waiting longer than the engine lives.
///
/// Ownership: shared with its own pending answers only for the length of a call; owned by the engine, which calls
///            `settleAll` at its end. Completions are held until they are called.
/// Threads:   main thread only.
/// Failure:   through the completions.
class Evaluations : public std::enable_shared_from_this<Evaluations> {
 public:
  explicit Evaluations(std::shared_ptr<EngineContext> context);

  void run(WebKitWebView* webView, std::string_view script, EvaluationCompletion completion);
  /// Completes once the page's document is there in full, with an error when it will never be. The page's own scripts
  /// can neither see nor spoil the wait.
  void awaitDocument(WebKitWebView* webView, EvaluationCompletion completion);
  /// Completes everything that is pending with this error, later.
  void settleAll(const WebError& error);
  /// Whether the page has a process. Without one the engine answers every script with a misleading error.
  void setProcessGone(bool isGone) { isProcessGone_ = isGone; }

 private:
  struct Pending;
  using Finish = JSCValue*(WebKitWebView*, GAsyncResult*, GError**);
  template <Finish finishCall>
  static void answer(GObject* webView, GAsyncResult* result, gpointer data) noexcept;

  /// Keeps a completion until its answer comes; the result travels through the C library.
  [[nodiscard]] Pending* keep(EvaluationCompletion completion);
  void settleLater(EvaluationCompletion completion, WebError error);
  [[nodiscard]] EvaluationResult read(const GObjectHandle<JSCValue>& value, const GError* error) const;

  std::shared_ptr<EngineContext> context_;
  std::map<std::uint64_t, EvaluationCompletion> completions_;
  std::uint64_t nextNumber_ = 0;
  bool isProcessGone_ = false;
};

/// The value as our own JSON; none where it has no JSON form.
[[nodiscard]] std::optional<JsonValue> jsonOf(JSCValue* value);
/// The same of the engine's text of it, which may be null.
[[nodiscard]] std::optional<JsonValue> jsonOf(const char* text);

}  // namespace corvane::gtk
