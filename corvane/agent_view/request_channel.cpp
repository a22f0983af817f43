#include "corvane/agent_view/request_channel.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "corvane/agent_view/script_bridge.h"
#include "corvane/bridge/callback.h"
#include "corvane/bridge/event_message.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane {

namespace {

auto isAnsweredBy(std::string_view id) {
  return [id](const std::shared_ptr<Actionable>& record) { return record->callbackId() == id; };
}

}  // namespace

std::shared_ptr<RequestChannel> RequestChannel::create(std::weak_ptr<RequestChannelHost> host) {
  return std::make_shared<RequestChannel>(ConstructionKey{}, std::move(host));
}

RequestChannel::RequestChannel(ConstructionKey /*key*/, std::weak_ptr<RequestChannelHost> host)
    : host_(std::move(host)) {}

void RequestChannel::submit(std::shared_ptr<Actionable> record) {
  if (canSend(*record)) send(std::move(record));
}

bool RequestChannel::canSend(Actionable& record) const {
  const auto host = host_.lock();
  if (record.requiresActiveCall() && (host == nullptr || !host->hasActiveCall())) {
    record.fail(AgentError::NoActiveCall{});
    return false;
  }
  // Only a product may be in a state that has no JSON form.
  if (record.action() == Action::addProductToCall) {
    try {
      record.tryToEncode();
    } catch (const EncodingError& error) {
      record.fail(AgentError::EncodingError{error.debugDescription()});
      return false;
    } catch (const std::exception& error) {
      record.fail(AgentError::EncodingError{error.what()});
      return false;
    }
  }
  return host != nullptr;
}

void RequestChannel::send(std::shared_ptr<Actionable> record) {
  auto host = host_.lock();
  if (host == nullptr) return;
  if (!record->callbackId()) return postOrMaximize(*host, std::move(record));
  auto line = line_.lock();
  if (line == nullptr) line_ = line = std::make_shared<Line>(Line{.channel = weak_from_this()});
  line->waiting.push_back(std::move(record));
  line->host = std::move(host);
  if (!isSlotTaken_) takeSlot(std::move(line));
}

void RequestChannel::takeSlot(std::shared_ptr<Line> line) {
  isSlotTaken_ = true;
  // Small enough to be stored without an allocation.
  RunLoop::main().post([line = std::move(line)] {
    if (const auto self = line->channel.lock()) self->admitNext(line);
  });
}

/// The timer of a request. It holds the line, which nobody else does while the request is pending.
class RequestChannel::TimeLimit {
 public:
  TimeLimit(std::shared_ptr<Line> line, std::weak_ptr<Actionable> sent)
      : line_(std::move(line)), sent_(std::move(sent)) {}
  TimeLimit(TimeLimit&&) = default;
  TimeLimit& operator=(TimeLimit&&) = delete;
  /// The run loop may end first. What a completion holds, perhaps the view itself, must not be left behind then.
  ~TimeLimit() {
    const auto record = sent_.lock();
    const auto channel = record == nullptr ? nullptr : line_->channel.lock();
    if (channel != nullptr) std::erase(channel->sentCallbackActions_, record);
  }

  void operator()() {
    const auto channel = line_->channel.lock();
    const auto record = std::exchange(sent_, {}).lock();
    if (channel == nullptr || record == nullptr) return;
    if (channel->removeSentCallbackAction(*record->callbackId())) record->fail(AgentError::RequestTimeout{});
  }

 private:
  std::shared_ptr<Line> line_;
  std::weak_ptr<Actionable> sent_;
};

void RequestChannel::admitNext(const std::shared_ptr<Line>& line) {
  const auto host = line->host;
  const auto record = std::move(line->waiting.front());
  line->waiting.pop_front();
  if (line->waiting.empty()) line->host.reset();
  sentCallbackActions_.push_back(record);
  RunLoop::main().schedule(answerLimit, TimeLimit(line, record));
  postOrMaximize(*host, record);
}

void RequestChannel::postOrMaximize(RequestChannelHost& host, std::shared_ptr<Actionable> record) {
  if (record->action() != Action::maximize) return post(*record);
  // A window that grows back does so before the page hears of it.
  host.maximize(
      whileAlive(weak_from_this(), [record = std::move(record)](RequestChannel& self) { self.post(*record); }));
}

void RequestChannel::post(const Actionable& record) {
  const std::string text = record.toJsonString().value_or("{}");
  if (const auto host = host_.lock()) {
    host->evaluate(
        postActionScript(text),
        whileAlive(weak_from_this(), [action = record.action()](RequestChannel& self, const EvaluationResult& result) {
          self.didEvaluate(action, result);
        }));
  }
}

void RequestChannel::didEvaluate(Action action, const EvaluationResult& result) {
  const auto host = host_.lock();
  if (host == nullptr) return;
  if (!result) return host->scriptDidFail(result.error());
  if (action == Action::maximize) host->emitEvent(AgentEvent::DidMaximize{});
}

void RequestChannel::handleCallbackEvent(JsonView data) {
  const auto callback = tryDecodeFromJsonObject<Callback>(data);
  const auto host = host_.lock();
  if (!callback || host == nullptr) return;
  const auto found = std::ranges::find_if(sentCallbackActions_, isAnsweredBy(callback->_id));
  if (found == sentCallbackActions_.end()) return;
  // The completion may drop the view, and be asked to answer again.
  const auto self = shared_from_this();
  const auto record = *found;  // NOLINT(performance-unnecessary-copy-initialization): it may leave the list
  std::optional<AgentError> error;
  if (callback->error) error = AgentError::AgentToolError{*callback->error};
  record->handleCallback(data, std::move(error), host->cart());
  removeSentCallbackAction(callback->_id);
}

bool RequestChannel::removeSentCallbackAction(std::string_view id) {
  const auto found = std::ranges::find_if(sentCallbackActions_, isAnsweredBy(id));
  if (found == sentCallbackActions_.end()) return false;
  sentCallbackActions_.erase(found);
  isSlotTaken_ = false;
  if (auto line = line_.lock(); line != nullptr && !line->waiting.empty()) takeSlot(std::move(line));
  return true;
}

}  // namespace corvane
