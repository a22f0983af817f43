#include "corvane/agent_view/request_channel.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "corvane/agent_view/script_bridge.h"
#include "corvane/bridge/callback.h"
#include "corvane/bridge/event_message.h"
#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/foundation/while_alive.h"

namespace corvane {

namespace {

auto isAnsweredBy(std::string_view id) {
  return [id](const std::shared_ptr<Actionable>& record) { return record->callbackId() == id; };
}

}  // namespace

std::shared_ptr<RequestChannel> RequestChannel::create(std::weak_ptr<RequestChannelDelegate> delegate) {
  return std::make_shared<RequestChannel>(ConstructionKey{}, std::move(delegate));
}

RequestChannel::RequestChannel(ConstructionKey /*key*/, std::weak_ptr<RequestChannelDelegate> delegate)
    : delegate_(std::move(delegate)) {}

void RequestChannel::submit(std::shared_ptr<Actionable> record) {
  // The completion of a refused request may have ended the view, and this with it.
  if (canSend(*record)) send(std::move(record));
}

bool RequestChannel::canSend(Actionable& record) const {
  const auto delegate = delegate_.lock();
  if (record.requiresActiveCall() && (delegate == nullptr || !delegate->hasActiveCall())) {
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
  return delegate != nullptr;
}

void RequestChannel::send(std::shared_ptr<Actionable> record) {
  if (!record->callbackId()) return post(*record);
  auto queue = queue_.lock();
  if (queue == nullptr) queue_ = queue = std::make_shared<Queue>(Queue{.channel = weak_from_this()});
  queue->waiting.push_back(std::move(record));
  queue->delegate = delegate_.lock();
  if (!isSlotTaken_) scheduleNext(std::move(queue));
}

void RequestChannel::scheduleNext(std::shared_ptr<Queue> queue) {
  isSlotTaken_ = true;
  // Small enough to be stored without an allocation.
  RunLoop::main().post([queue = std::move(queue)] {
    if (const auto self = queue->channel.lock()) self->admitNext(queue);
  });
}

/// The timer of a request. It holds the queue, which nobody else does while the request is pending.
class RequestChannel::TimeLimit {
 public:
  TimeLimit(std::shared_ptr<Queue> queue, std::weak_ptr<Actionable> sent)
      : queue_(std::move(queue)), sent_(std::move(sent)) {}
  TimeLimit(TimeLimit&&) = default;
  TimeLimit& operator=(TimeLimit&&) = delete;
  /// The run loop may end first. What a completion holds, perhaps the view itself, must not be left behind then.
  ~TimeLimit() {
    const auto record = sent_.lock();
    const auto channel = record == nullptr ? nullptr : queue_->channel.lock();
    if (channel != nullptr) std::erase(channel->sentCallbackActions_, record);
  }

  void operator()() {
    const auto channel = queue_->channel.lock();
    const auto record = std::exchange(sent_, {}).lock();
    if (channel == nullptr || record == nullptr) return;
    if (channel->removeSentCallbackAction(*record->callbackId())) record->fail(AgentError::RequestTimeout{});
  }

 private:
  std::shared_ptr<Queue> queue_;
  std::weak_ptr<Actionable> sent_;
};

void RequestChannel::admitNext(const std::shared_ptr<Queue>& queue) {
  // Posting may lead anywhere.
  const auto delegate = queue->delegate;
  const auto record = std::move(queue->waiting.front());
  queue->waiting.pop_front();
  if (queue->waiting.empty()) queue->delegate.reset();
  sentCallbackActions_.push_back(record);
  RunLoop::main().schedule(answerLimit, TimeLimit(queue, record));
  post(*record);
}

void RequestChannel::post(const Actionable& record) {
  post(record, whileAlive(delegate_, [](RequestChannelDelegate& delegate, const EvaluationResult& result) {
         if (!result) delegate.scriptDidFail(result.error());
       }));
}

void RequestChannel::post(const Actionable& record, EvaluationCompletion completion) {
  std::string text = record.toJsonString().value_or("{}");
  const auto delegate = delegate_.lock();
  if (delegate != nullptr) delegate->evaluate(postActionScript(std::move(text)), std::move(completion));
}

void RequestChannel::handleCallbackEvent(JsonView data) {
  const auto callback = tryDecodeFromJsonObject<Callback>(data);
  const auto delegate = delegate_.lock();
  if (!callback) {
    diagnose(Diagnostic::Kind::messageDropped, [] { return std::string("an answer without a readable _id or error"); });
  }
  if (!callback || delegate == nullptr) return;
  const auto found = std::ranges::find_if(sentCallbackActions_, isAnsweredBy(callback->_id));
  if (found == sentCallbackActions_.end()) {
    return diagnose(Diagnostic::Kind::messageDropped, [] { return std::string("an answer to nobody's request"); });
  }
  // The completion may drop the view, and be asked to answer again.
  const auto self = shared_from_this();
  const auto record = *found;  // NOLINT(performance-unnecessary-copy-initialization): it may leave the list
  std::optional<AgentError> error;
  if (callback->error) error = AgentError::AgentToolError{*callback->error};
  record->handleCallback(data, std::move(error), delegate->cart());
  removeSentCallbackAction(callback->_id);
}

bool RequestChannel::removeSentCallbackAction(std::string_view id) {
  const auto found = std::ranges::find_if(sentCallbackActions_, isAnsweredBy(id));
  if (found == sentCallbackActions_.end()) return false;
  sentCallbackActions_.erase(found);
  isSlotTaken_ = false;
  if (auto queue = queue_.lock(); queue != nullptr && !queue->waiting.empty()) scheduleNext(std::move(queue));
  return true;
}

}  // namespace corvane
