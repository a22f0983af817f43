#include "corvane/platform/headless/headless_web_engine.h"

#include <memory>
#include <ranges>
#include <utility>

#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/match.h"
#include "corvane/platform/foundation/run_loop.h"

namespace corvane::headless {

namespace {

/// The answer to a capture request: given once, `deny` when it is dropped.
class CaptureAnswer {
 public:
  explicit CaptureAnswer(std::function<void(WKPermissionDecision)> answer) : answer_(std::move(answer)) {}
  CaptureAnswer(CaptureAnswer&& other) noexcept : answer_(std::exchange(other.answer_, nullptr)) {}
  CaptureAnswer& operator=(CaptureAnswer&&) = delete;
  ~CaptureAnswer() { (*this)(WKPermissionDecision::deny); }

  void operator()(WKPermissionDecision decision) {
    if (const auto answer = std::exchange(answer_, nullptr)) answer(decision);
  }

 private:
  std::function<void(WKPermissionDecision)> answer_;
};

}  // namespace

HeadlessWebEngine::HeadlessWebEngine(const WKWebViewConfiguration& configuration, std::weak_ptr<WebEngineClient> client)
    : client_(std::move(client)) {
  for (const auto& content : configuration.userContentController->contents()) {
    match(
        content, [&](const WKUserScript& script) { records_.emplace_back(ScriptInstalled{script}); },
        [&](const WKUserContentController::MessageChannel& channel) {
          records_.emplace_back(ChannelInstalled{channel.name});
        });
  }
}

HeadlessWebEngine::~HeadlessWebEngine() = default;

HeadlessWebEngine* HeadlessWebEngine::of(const UIView& view) {
  if (const auto* webView = dynamic_cast<const WKWebView*>(&view)) {
    return dynamic_cast<HeadlessWebEngine*>(&webView->engine());
  }
  for (const auto& subview : view.subviews()) {
    if (auto* const engine = of(*subview)) return engine;
  }
  return nullptr;
}

std::shared_ptr<HeadlessWebEngine> HeadlessWebEngine::shared() {
  // The client is the web view, which owns this engine.
  auto client = client_.lock();
  return client == nullptr ? nullptr : std::shared_ptr<HeadlessWebEngine>(std::move(client), this);
}

void HeadlessWebEngine::finishLoad() {
  isLoadUnobserved_ = false;
  if (const auto client = client_.lock()) client->engineDidFinishLoad();
}

bool HeadlessWebEngine::navigate(const WKNavigationAction& action) {
  const auto client = client_.lock();
  return client != nullptr && client->engineMayNavigate(action);
}

void HeadlessWebEngine::failLoad(const WebError& error) {
  isLoadUnobserved_ = false;
  if (const auto client = client_.lock()) client->engineDidFailLoad(LoadPhase::committed, error);
}

void HeadlessWebEngine::failProvisionalLoad(const WebError& error) {
  isLoadUnobserved_ = false;
  if (const auto client = client_.lock()) client->engineDidFailLoad(LoadPhase::provisional, error);
}

void HeadlessWebEngine::terminateProcess() {
  failLoad({.kind = WebError::Kind::processTerminated,
            .description = "The page's process has ended.",
            .failingUrl = pageUrl_});
}

void HeadlessWebEngine::postMessage(std::string_view channel, JsonValue body) {
  if (const auto client = client_.lock()) client->engineDidReceiveMessage(channel, std::move(body));
}

void HeadlessWebEngine::postMessage(std::string_view channel, std::string_view jsonText) {
  postMessage(channel, JsonValue::parse(jsonText).value_or(JsonValue()));
}

void HeadlessWebEngine::requestCapture(WKMediaCaptureType type, std::function<void(WKPermissionDecision)> answer) {
  CaptureAnswer once(std::move(answer));
  const auto client = client_.lock();
  if (client == nullptr) return;
  client->engineRequestsCapture({.type = type, .pageUrl = pageUrl_},
                                [once = std::move(once)](WKPermissionDecision decision) mutable { once(decision); });
}

CaptureState HeadlessWebEngine::captureState(AVMediaType mediaType) const {
  return mediaType == AVMediaType::video ? video_ : audio_;
}

void HeadlessWebEngine::setCapture(AVMediaType mediaType, CaptureState state) {
  if (std::exchange(mediaType == AVMediaType::video ? video_ : audio_, state) == state) return;
  if (const auto client = client_.lock()) client->engineDidChangeCapture();
}

void HeadlessWebEngine::setCaptureMuted(AVMediaType mediaType, bool isMuted) {
  if (captureState(mediaType) == CaptureState::none) return;
  setCapture(mediaType, isMuted ? CaptureState::muted : CaptureState::active);
}

void HeadlessWebEngine::setResponding(bool isResponding) {
  if (const auto client = client_.lock()) client->engineDidChangeResponsiveness(isResponding);
}

void HeadlessWebEngine::setEvaluator(Evaluator evaluator) { *evaluator_ = std::move(evaluator); }
void HeadlessWebEngine::setLoadObserver(LoadObserver observer) { loadObserver_ = std::move(observer); }

std::optional<URLRequest> HeadlessWebEngine::takeUnobservedLoad() {
  if (!std::exchange(isLoadUnobserved_, false)) return std::nullopt;
  for (const Record& record : std::views::reverse(records_)) {
    if (const auto* load = std::get_if<LoadRequested>(&record)) return load->request;
  }
  return std::nullopt;
}

void HeadlessWebEngine::load(const URLRequest& request) {
  records_.emplace_back(LoadRequested{request});
  pageUrl_ = request.url;
  isLoadUnobserved_ = !loadObserver_;
  if (const auto observer = loadObserver_) return observer(request);
  diagnose(Diagnostic::Kind::pageNeverAttached,
           [&] { return "nobody plays " + request.url + ": attach a SimulatedAgentTool to the view"; });
}

void HeadlessWebEngine::evaluate(std::string_view script, EvaluationCompletion completion) {
  records_.emplace_back(ScriptEvaluated{std::string(script)});
  RunLoop::main().post(
      [evaluator = evaluator_, script = std::string(script), completion = std::move(completion)]() mutable {
        // The evaluator may replace itself.
        const Evaluator evaluate = *evaluator;
        completion(evaluate ? evaluate(script) : EvaluationResult(JsonValue()));
      });
}

void HeadlessWebEngine::setInteractionEnabled(bool isEnabled) { records_.emplace_back(InteractionSet{isEnabled}); }
void HeadlessWebEngine::setScrollEnabled(bool isEnabled) { records_.emplace_back(ScrollSet{isEnabled}); }

}  // namespace corvane::headless
