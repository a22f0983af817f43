/// The way of the host app's requests into the page, and of the answers back.
#pragma once

#include <chrono>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/bridge/actionable.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane {

/// What the request channel needs of the view whose requests it carries.
class RequestChannelDelegate {
 public:
  virtual ~RequestChannelDelegate() = default;
  [[nodiscard]] virtual bool hasActiveCall() const = 0;
  /// The customer's cart as it is now.
  [[nodiscard]] virtual const CartQuantities& cart() const = 0;
  /// Runs a script in the page. Without a page nothing runs and nothing is reported.
  virtual void evaluate(std::string_view script, EvaluationCompletion completion) = 0;
  /// Keeps why a script failed, and tells it.
  virtual void scriptDidFail(const WebError& error) = 0;
};

/// Carries the requests of one agent view into the page, one at a time, and completes them with the page's answers.
///
/// A request that expects an answer waits in a queue, from the run loop's next turn on. It waits until the one before
/// it has been answered or has timed out. No thread waits for it.
///
/// Ownership: owned by its view. Requests that wait keep the view alive until they are posted; timers and evaluations
///            do not. The queue itself is held by what the run loop has still to do for it. So nothing is left when
///            the run loop ends.
/// Threads:   main thread only.
/// Failure:   every failure is an `AgentError` handed to the request's completion; nothing is thrown.
class RequestChannel final : public std::enable_shared_from_this<RequestChannel> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  /// How long the page may take to answer, from the moment that the action is posted.
  static constexpr std::chrono::seconds answerLimit{5};

  [[nodiscard]] static std::shared_ptr<RequestChannel> create(std::weak_ptr<RequestChannelDelegate> delegate);
  RequestChannel(ConstructionKey key, std::weak_ptr<RequestChannelDelegate> delegate);

  /// The view whose requests these are; null once it is ending.
  [[nodiscard]] std::shared_ptr<RequestChannelDelegate> delegate() const { return delegate_.lock(); }

  /// Sends a request if it may be sent now; where it may not, completes it with the reason. Once the view is ending
  /// there is no call any more.
  void submit(std::shared_ptr<Actionable> record);
  /// Posts an action into the page at once, and completes when the page has run the script or failed to.
  void post(const Actionable& record, EvaluationCompletion completion);
  /// Completes the request that a page's answer belongs to; anything else is ignored.
  void handleCallbackEvent(JsonView data);

  /// The requests that the page has been asked and has not answered, the oldest first.
  [[nodiscard]] const std::vector<std::shared_ptr<Actionable>>& sentCallbackActions() const {
    return sentCallbackActions_;
  }

 private:
  /// The requests that wait.
  struct Queue {
    std::weak_ptr<RequestChannel> channel{};
    std::deque<std::shared_ptr<Actionable>> waiting{};
    /// Set while any request waits.
    std::shared_ptr<RequestChannelDelegate> delegate{};
  };

  class TimeLimit;

  [[nodiscard]] bool canSend(Actionable& record) const;
  void send(std::shared_ptr<Actionable> record);
  void post(const Actionable& record);
  void scheduleNext(std::shared_ptr<Queue> queue);
  void admitNext(const std::shared_ptr<Queue>& queue);
  /// Removes a request from the list and admits the next one. False when it is not there.
  bool removeSentCallbackAction(std::string_view id);

  std::weak_ptr<RequestChannelDelegate> delegate_;
  std::weak_ptr<Queue> queue_;
  bool isSlotTaken_ = false;
  std::vector<std::shared_ptr<Actionable>> sentCallbackActions_;
};

}  // namespace corvane
