#include "corvane/simulation/simulated_agent_tool.h"

#include <array>
#include <stdexcept>
#include <utility>

#include "corvane/agent_view/script_bridge.h"
#include "corvane/bridge/page_event_records.h"
#include "corvane/bridge/product_cart_status_coding.h"
#include "corvane/bridge/web_agent_event_type.h"
#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/json_writer.h"
#include "corvane/platform/foundation/match.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/url_components.h"
#include "corvane/platform/foundation/utf8.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/simulation/page_message.h"

namespace corvane::simulation {

namespace {

// One whole call, as the stand-in page of the demo plays it.
constexpr std::array<std::string_view, 17> tour{
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_STARTING"}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_READY"}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_WAITING"}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_CONNECTING"}})",
    R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":{"locale":"de-CH"}}}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})",
    R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"SHIRT-OXFORD-M-BLUE","quantity":1}})",
    R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"JEANS-SLIM-32-INDIGO","quantity":1}})",
    R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"SHIRT-OXFORD-M-BLUE","quantity":2}})",
    R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CART","data":{"sku":"JEANS-SLIM-32-INDIGO","quantity":0}})",
    R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CALL","data":{"sku":"SCARF-MERINO-GREY","quantity":1}})",
    R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":"response-1"}})",
    R"({"eventType":"SDK_UNAUTHORIZED"})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RECONNECTING"}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_DISCONNECTING"}})",
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_DISCONNECTED"}})",
};
/// The page opens the camera once the call runs.
constexpr std::size_t previewStep = 6;

bool hasForwarder(const headless::HeadlessWebEngine& engine) {
  using Engine = headless::HeadlessWebEngine;
  bool hasScript = false;
  bool hasChannel = false;
  for (const Engine::Record& record : engine.records()) {
    if (const auto* installed = std::get_if<Engine::ScriptInstalled>(&record)) {
      hasScript = hasScript || installed->script.source == messageForwarderScript();
    } else if (const auto* channel = std::get_if<Engine::ChannelInstalled>(&record)) {
      hasChannel = hasChannel || channel->name == agentEventChannel;
    }
  }
  return hasScript && hasChannel;
}

/// How an engine ends the load of a page that is there.
SimulatedAgentTool::LoadOutcome likeAnEngine(std::string_view url) {
  if (hasScheme(url)) return SimulatedAgentTool::Finishes{};
  return SimulatedAgentTool::FailsBeforeAnythingArrived{{.kind = WebError::Kind::cannotLoad,
                                                         .description = "This is not an address of a page",
                                                         .failingUrl = std::string(url)}};
}

std::string answerText(std::string_view eventType, std::string_view id, const ActionOutcome& outcome) {
  JsonWriter writer;
  writer.beginObject();
  writer.key("_id");
  writer.text(id);
  if (outcome.error) {
    writer.key("error");
    writer.text(*outcome.error);
  }
  writer.endObject();
  std::string data = writer.take();
  if (outcome.result) data.replace(data.size() - 1, 1, ",\"result\":" + *outcome.result + "}");
  return R"({"eventType":")" + std::string(eventType) + std::string(answerSuffix) + R"(","data":)" + data + "}";
}

}  // namespace

std::shared_ptr<SimulatedAgentTool> SimulatedAgentTool::attach(const std::shared_ptr<UIView>& view) {
  assertMainThread();
  std::shared_ptr<SimulatedAgentTool> page(new SimulatedAgentTool);
  auto* const found = view == nullptr ? nullptr : headless::HeadlessWebEngine::of(*view);
  if (const auto engine = found == nullptr ? nullptr : found->shared()) {
    page->play(engine);
  } else {
    diagnose(Diagnostic::Kind::pageNeverAttached,
             [] { return std::string("SimulatedAgentTool::attach: there is no headless web view inside the view"); });
  }
  return page;
}

std::shared_ptr<SimulatedAgentTool> SimulatedAgentTool::attachToNextView(headless::Backend& backend) {
  assertMainThread();
  std::shared_ptr<SimulatedAgentTool> page(new SimulatedAgentTool);
  backend.addEngineTaker([weak = std::weak_ptr(page)](const std::shared_ptr<headless::HeadlessWebEngine>& engine) {
    const auto alive = weak.lock();
    // The app may have web views of its own.
    if (alive == nullptr || !hasForwarder(*engine)) return false;
    alive->play(engine);
    return true;
  });
  return page;
}

void SimulatedAgentTool::play(const std::shared_ptr<headless::HeadlessWebEngine>& engine) {
  engine_ = engine;
  hasForwarder_ = hasForwarder(*engine);
  const auto self = weak_from_this();
  engine->setLoadObserver([self](const URLRequest& request) {
    if (const auto alive = self.lock()) return alive->beginLoad(request.url);
    diagnose(Diagnostic::Kind::pageNeverAttached,
             [&] { return "nobody plays " + request.url + " any more: keep what SimulatedAgentTool gives you"; });
  });
  engine->setEvaluator([self](std::string_view script) -> EvaluationResult {
    const auto alive = self.lock();
    return alive == nullptr ? EvaluationResult(JsonValue()) : alive->evaluate(script);
  });
  if (const auto load = engine->takeUnobservedLoad()) {
    // Later, so that a plan can still be set.
    RunLoop::main().post(whileAlive(self, [url = load->url](SimulatedAgentTool& alive) {
      if (alive.load_ == 0) alive.beginLoad(url);
    }));
  }
}

void SimulatedAgentTool::setTrouble(PageTrouble::Value trouble) {
  if (const auto* error = std::get_if<PageTrouble::AnswersWithError>(&trouble)) {
    if (!isValidUtf8(error->text)) throw std::invalid_argument("an error text must be valid UTF-8");
  }
  trouble_ = std::move(trouble);
}

void SimulatedAgentTool::beginLoad(std::string_view url) {
  const unsigned load = ++load_;
  receivedActions_.clear();
  shop_ = {};
  heldAnswer_.reset();
  const bool isTour = url.ends_with("#tour");
  // The plan may replace itself, and even load something else.
  const LoadPlan plan = loadPlan_ ? loadPlan_ : &likeAnEngine;
  RunLoop::main().post(whileAlive(weak_from_this(), [load, isTour, outcome = plan(url)](SimulatedAgentTool& self) {
    self.endLoad(load, outcome, isTour);
  }));
}

void SimulatedAgentTool::endLoad(unsigned load, const LoadOutcome& outcome, bool isTour) {
  const auto engine = this->engine();
  if (engine == nullptr || load != load_) return;
  match(
      outcome,
      [&](const Finishes&) {
        engine->finishLoad();
        if (isTour) runTourFrom(load, 0);
      },
      [&](const Fails& failure) { engine->failLoad(failure.error); },
      [&](const FailsBeforeAnythingArrived& failure) { engine->failProvisionalLoad(failure.error); },
      [](const NeverEnds&) {});
}

void SimulatedAgentTool::runTourFrom(unsigned load, std::size_t step) {
  if (load != load_ || step == tour.size()) return;
  RunLoop::main().schedule(tourStep, whileAlive(weak_from_this(), [load, step](SimulatedAgentTool& self) {
                             const auto engine = self.engine();
                             if (engine == nullptr || load != self.load_) return;
                             if (step == previewStep)
                               engine->requestCapture(WKMediaCaptureType::cameraAndMicrophone,
                                                      [](WKPermissionDecision) {});
                             self.postText(tour[step]);
                             self.runTourFrom(load, step + 1);
                           }));
}

EvaluationResult SimulatedAgentTool::evaluate(std::string_view script) {
  constexpr std::string_view before = "postAction(";
  constexpr std::string_view after = ");";
  if (!script.starts_with(before) || !script.ends_with(after)) return JsonValue();
  if (std::holds_alternative<PageTrouble::HasNoPostAction>(trouble_)) {
    return std::unexpected(WebError{.kind = WebError::Kind::scriptFailed,
                                    .description = "TypeError: postAction is not a function",
                                    .failingUrl = {}});
  }
  script.remove_prefix(before.size());
  script.remove_suffix(after.size());
  // As a window message, an action arrives after the script that posted it.
  RunLoop::main().post(
      whileAlive(weak_from_this(), [load = load_, action = std::string(script)](SimulatedAgentTool& self) {
        if (load == self.load_) self.receiveAction(action);
      }));
  return JsonValue();
}

void SimulatedAgentTool::receiveAction(const std::string& action) {
  receivedActions_.push_back(action);
  if (std::holds_alternative<PageTrouble::ThrowsInHandler>(trouble_)) return;
  const auto message = JsonValue::parse(action);
  if (!message) return;
  const std::string_view eventType = message->findString("eventType").value_or("");
  const JsonView data = message->find("data").value_or(JsonView());
  const auto outcome = shop_.perform(eventType, data);
  if (!outcome) return;
  const auto self = shared_from_this();  // whoever gets an event may drop this page
  for (const std::string& event : outcome->events) postText(event);
  answer(eventType, data.findString("_id").value_or(""), *outcome);
}

void SimulatedAgentTool::answer(std::string_view eventType, std::string_view id, const ActionOutcome& outcome) {
  using Trouble = PageTrouble;
  // Handlers that are called on the way may choose another trouble.
  const Trouble::Value trouble = trouble_;
  match(
      trouble, [&](const Trouble::None&) { postText(answerText(eventType, id, outcome)); },
      [&](const Trouble::AnswersLate& late) {
        RunLoop::main().schedule(
            late.delay, whileAlive(weak_from_this(),
                                   [load = load_, text = answerText(eventType, id, outcome)](SimulatedAgentTool& self) {
                                     if (load == self.load_) self.postText(text);
                                   }));
      },
      [](const Trouble::NeverAnswers&) {},
      [&](const Trouble::AnswersTwice&) {
        const std::string text = answerText(eventType, id, outcome);
        postText(text);
        postText(text);
      },
      [&](const Trouble::AnswersUnknownIdentifier&) {
        postText(answerText(eventType, "00000000-0000-4000-8000-000000000000", outcome));
      },
      [&](const Trouble::AnswersWithError& failure) {
        postText(answerText(eventType, id, {.events = {}, .error = failure.text, .result = {}}));
      },
      [&](const Trouble::AnswersWithWrongType&) {
        postText(answerText(eventType, id, {.events = {}, .error = {}, .result = R"({"is":["something else"]})"}));
      },
      [&](const Trouble::AnswersInReverseOrder&) {
        std::string text = answerText(eventType, id, outcome);
        if (!heldAnswer_) {
          heldAnswer_ = std::move(text);
          return;
        }
        const std::string held = *std::exchange(heldAnswer_, std::nullopt);
        postText(text);
        postText(held);
      },
      [](const Trouble::ThrowsInHandler&) {}, [](const Trouble::HasNoPostAction&) {});
}

void SimulatedAgentTool::postCallStatus(CallSessionStatus status) {
  postText(pageMessage(WebAgentEventType::callStatus, CallStatus{status}));
}

void SimulatedAgentTool::postClientLocale(std::string_view locale) {
  postText(pageMessage(WebAgentEventType::callStarted, [&](JsonWriter& writer) {
    writer.beginObject();
    json_detail::encodeMember("clientPlatform", ClientPlatform{std::string(locale)}, writer);
    writer.endObject();
  }));
}

void SimulatedAgentTool::postMinimize() { postText(pageMessage(WebAgentEventType::minimizeAgentTool)); }
void SimulatedAgentTool::postUnauthorized() { postText(pageMessage(WebAgentEventType::unauthorized)); }

void SimulatedAgentTool::postProductUpdateInCart(std::string_view sku, std::int64_t quantity) {
  const auto self = shared_from_this();  // whoever gets an event may drop this page
  for (const std::string& event : shop_.setQuantity(sku, quantity).events) postText(event);
}

void SimulatedAgentTool::postProductRemovedFromCart(std::string_view sku) {
  const std::string message =
      pageMessage(WebAgentEventType::productRemovedFromCart, ProductCartStatus{std::string(sku), 0});
  shop_.removeFromCart(sku);
  postText(message);
}

void SimulatedAgentTool::postProductRemovedFromCall(std::string_view sku) {
  const std::string message =
      pageMessage(WebAgentEventType::productRemovedFromCall, ProductCartStatus{std::string(sku), 0});
  shop_.removeFromCall(sku);
  postText(message);
}

void SimulatedAgentTool::postRefreshSsoToken(std::string_view responseId) {
  postText(pageMessage(WebAgentEventType::refreshSsoToken, [&](JsonWriter& writer) {
    writer.beginObject();
    writer.key("responseId");
    writer.text(responseId);
    writer.endObject();
  }));
}

void SimulatedAgentTool::postText(std::string_view text, Origin origin) {
  if (JsonValue::parse(text)) return postValue(text, origin);
  diagnose(Diagnostic::Kind::messageDropped,
           [] { return std::string("the simulated page posted a text that is no JSON"); });
}

void SimulatedAgentTool::postValue(std::string_view jsonText, Origin origin) {
  const auto engine = this->engine();
  if (engine != nullptr && hasForwarder_) {
    if (origin == Origin::ofThePage) engine->postMessage(agentEventChannel, jsonText);
    return;
  }
  diagnose(Diagnostic::Kind::pageNeverAttached, [] {
    return std::string("a simulated page posted, and has no agent view: none was made yet, or it has ended");
  });
}

}  // namespace corvane::simulation
