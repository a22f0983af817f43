#include "corvane/platform/gtk/gtk_evaluation.h"

#include <string>
#include <utility>

#include "corvane/platform/foundation/utf8.h"

namespace corvane::gtk {

namespace {

WebError processGoneError() { return {WebError::Kind::processTerminated, "The page's process has ended", {}}; }

}  // namespace

std::optional<JsonValue> jsonOf(JSCValue* value) {
  const GTextHandle text(jsc_value_to_json(value, 0));
  return jsonOf(text.get());
}

std::optional<JsonValue> jsonOf(const char* text) {
  if (text == nullptr) return std::nullopt;
  auto json = JsonValue::parse(text);
  if (!json) return std::nullopt;
  return std::move(*json);
}

/// Which completion an answer belongs to; travels through the C library.
struct Evaluations::Pending {
  std::weak_ptr<Evaluations> evaluations;
  std::uint64_t number;
};

Evaluations::Evaluations(std::shared_ptr<EngineContext> context) : context_(std::move(context)) {}

void Evaluations::run(WebKitWebView* webView, std::string_view script, EvaluationCompletion completion) {
  if (isProcessGone_) return settleLater(std::move(completion), processGoneError());
  // The C library takes no null text, not even an empty one.
  if (script.empty()) script = "";
  // The engine reads text that is not valid UTF-8 as no text at all, and reports success.
  if (!isValidUtf8(script)) {
    return settleLater(std::move(completion), {WebError::Kind::scriptFailed, "The script is not valid UTF-8", {}});
  }
  webkit_web_view_evaluate_javascript(webView, script.data(), static_cast<gssize>(script.size()), nullptr, nullptr,
                                      nullptr, &Evaluations::answer<webkit_web_view_evaluate_javascript_finish>,
                                      keep(std::move(completion)));
}

void Evaluations::awaitDocument(WebKitWebView* webView, EvaluationCompletion completion) {
  constexpr std::string_view body = R"(
    while (document.readyState !== "complete") {
      await new Promise((goOn) => document.addEventListener("readystatechange", goOn, { once: true }));
    })";
  webkit_web_view_call_async_javascript_function(
      webView, body.data(), static_cast<gssize>(body.size()), nullptr, "corvane", nullptr, nullptr,
      &Evaluations::answer<webkit_web_view_call_async_javascript_function_finish>, keep(std::move(completion)));
}

Evaluations::Pending* Evaluations::keep(EvaluationCompletion completion) {
  const std::uint64_t number = nextNumber_++;
  completions_.emplace(number, std::move(completion));
  return new Pending{weak_from_this(), number};
}

void Evaluations::settleAll(const WebError& error) {
  for (auto& [number, completion] : std::exchange(completions_, {})) settleLater(std::move(completion), error);
}

void Evaluations::settleLater(EvaluationCompletion completion, WebError error) {
  context_->runLoop->post([completion = std::move(completion), error = std::move(error)]() mutable {
    completion(std::unexpected(std::move(error)));
  });
}

template <Evaluations::Finish finishCall>
void Evaluations::answer(GObject* webView, GAsyncResult* result, gpointer data) noexcept {
  const std::unique_ptr<Pending> pending(static_cast<Pending*>(data));
  GError* rawError = nullptr;
  const auto value = GObjectHandle<JSCValue>::adopt(finishCall(objectCast<WebKitWebView>(webView), result, &rawError));
  const GErrorHandle error(rawError);
  const auto evaluations = pending->evaluations.lock();
  if (evaluations == nullptr) return;
  auto node = evaluations->completions_.extract(pending->number);
  if (node.empty()) return;
  node.mapped()(evaluations->read(value, error.get()));
}

EvaluationResult Evaluations::read(const GObjectHandle<JSCValue>& value, const GError* error) const {
  if (!value) {
    if (isProcessGone_) return std::unexpected(processGoneError());
    return std::unexpected(WebError{WebError::Kind::scriptFailed, error != nullptr ? error->message : "", {}});
  }
  if (jsc_value_is_undefined(value.get()) != FALSE) return JsonValue();
  if (auto json = jsonOf(value.get())) return std::move(*json);
  return std::unexpected(WebError{WebError::Kind::scriptFailed, "The result has no JSON form", {}});
}

}  // namespace corvane::gtk
