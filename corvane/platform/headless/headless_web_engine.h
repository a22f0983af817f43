/// A web engine without a page: it records what it is asked and does what it is told.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/web/web_engine.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::headless {

/// The engine behind the web views of the headless backend. A test, or a simulated page, plays the page.
///
/// Ownership: owned by its web view; find it with `HeadlessWebEngine::of`.
/// Threads:   main thread only.
class CORVANE_EXPORT HeadlessWebEngine final : public WebEngine {
 public:
  /// A script of the configuration, installed when the engine was made.
  struct ScriptInstalled {
    WKUserScript script;
    bool operator==(const ScriptInstalled&) const = default;
  };
  /// A message channel of the configuration, likewise.
  struct ChannelInstalled {
    std::string name;
    bool operator==(const ChannelInstalled&) const = default;
  };
  /// A load that was asked for.
  struct LoadRequested {
    URLRequest request;
    bool operator==(const LoadRequested&) const = default;
  };
  /// A script that was handed over to be run.
  struct ScriptEvaluated {
    std::string script;
    bool operator==(const ScriptEvaluated&) const = default;
  };
  /// Whether the page is to take touches.
  struct InteractionSet {
    bool isEnabled;
    bool operator==(const InteractionSet&) const = default;
  };
  /// Whether the user is to scroll the page.
  struct ScrollSet {
    bool isEnabled;
    bool operator==(const ScrollSet&) const = default;
  };
  using Record =
      std::variant<ScriptInstalled, ChannelInstalled, LoadRequested, ScriptEvaluated, InteractionSet, ScrollSet>;

  /// Answers what a script evaluates to.
  using Evaluator = std::function<EvaluationResult(std::string_view script)>;
  /// Told of each load before anything else happens with it.
  using LoadObserver = std::function<void(const URLRequest& request)>;

  HeadlessWebEngine(const WKWebViewConfiguration& configuration, std::weak_ptr<WebEngineClient> client);
  ~HeadlessWebEngine() override;

  /// The engine of a web view, or of the first web view inside a view such as an agent view; null where there is
  /// none.
  [[nodiscard]] static HeadlessWebEngine* of(const UIView& view);

  /// A pointer that keeps the web view, and so its engine; null while the web view ends.
  [[nodiscard]] std::shared_ptr<HeadlessWebEngine> shared();

  /// Everything that the engine was asked, in order.
  [[nodiscard]] std::span<const Record> records() const { return records_; }
  /// The records of one kind, in order.
  template <class Kind>
  [[nodiscard]] std::vector<Kind> recordsOf() const {
    std::vector<Kind> found;
    for (const Record& record : records_) {
      if (const auto* match = std::get_if<Kind>(&record)) found.push_back(*match);
    }
    return found;
  }

  /// The page plays. Each of these calls its receivers before it returns, and may end this engine.
  ///
  /// What posts is the page that was asked for last; a previous one is gone as soon as that is.
  void finishLoad();
  /// The page wants to go somewhere by itself; whether it may.
  bool navigate(const WKNavigationAction& action);
  void failLoad(const WebError& error);
  void failProvisionalLoad(const WebError& error);
  void terminateProcess();
  void postMessage(std::string_view channel, JsonValue body);
  /// As above, with the body as JSON text; a text that is no JSON arrives as null.
  void postMessage(std::string_view channel, std::string_view jsonText);
  /// Asks for capture. The answer comes to the handler, `deny` if nobody gives one.
  void requestCapture(WKMediaCaptureType type, std::function<void(WKPermissionDecision)> answer);

  /// The page opens or closes the camera or the microphone.
  void setCapture(AVMediaType mediaType, CaptureState state);
  /// The page's process hangs, or goes on.
  void setResponding(bool isResponding);

  /// By default every script evaluates to null. The evaluator runs, and the completion is called, when the run loop
  /// comes to it, in the order of the calls.
  void setEvaluator(Evaluator evaluator);
  void setLoadObserver(LoadObserver observer);
  /// The load that is under way while there was nobody to observe it, for whoever plays it from now on. Given out once,
  /// and not after the load was brought to an end by hand.
  [[nodiscard]] std::optional<URLRequest> takeUnobservedLoad();

  void load(const URLRequest& request) override;
  void evaluate(std::string_view script, EvaluationCompletion completion) override;
  void setInteractionEnabled(bool isEnabled) override;
  void setScrollEnabled(bool isEnabled) override;
  [[nodiscard]] CaptureState captureState(AVMediaType mediaType) const override;
  void setCaptureMuted(AVMediaType mediaType, bool isMuted) override;

 private:
  std::weak_ptr<WebEngineClient> client_;
  std::vector<Record> records_;
  std::string pageUrl_;
  /// Shared with the evaluations that wait for the run loop; they outlive the engine.
  std::shared_ptr<Evaluator> evaluator_ = std::make_shared<Evaluator>();
  LoadObserver loadObserver_;
  CaptureState video_ = CaptureState::none;
  CaptureState audio_ = CaptureState::none;
  bool isLoadUnobserved_ = false;
};

}  // namespace corvane::headless
