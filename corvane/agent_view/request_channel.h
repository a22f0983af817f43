/// The way of the host app's requests into the page, and of the answers back.
#pragma once

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/bridge/actionable.h"
#include "corvane/bridge/agent_event.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane {

/// What the request channel needs of the view whose requests it carries.
class RequestChannelHost {
 public:
  virtual ~RequestChannelHost() = default;
  [[nodiscard]] virtual bool hasActiveCall() const = 0;
  /// The customer's cart as it is now.
  [[nodiscard]] virtual const CartQuantities& cart() const = 0;
  /// Runs a script in the page. Without a page nothing runs and nothing is reported.
  virtual void evaluate(std::string_view script, EvaluationCompletion completion) = 0;
  /// Keeps why a script failed, and tells it.
  virtual void scriptDidFail(const WebError& error) = 0;
  /// Grows the view back to its full size and calls the completion when that is done.
  virtual void maximize(std::function<void()> completion) = 0;
  virtual void emitEvent(const AgentEvent& event) = 0;
};

/// Carries the requests of one agent view into the page, one at a time, and completes them with the page's answers.
///
/// A request that expects an answer waits in line, from the run loop's next turn on, until the one before it has been
/// answered or has timed out. No thread waits for it.
///
/// Ownership: owned by its view. Requests that wait keep the view alive until they are posted; timers and evaluations
///            do not. The line itself is held by what the run loop has still to do for it, so that nothing is left
///            when the run loop ends.
/// Threads:   main thread only.
/// Failure:   every failure is an `AgentError` handed to the request's completion; nothing is thrown.
class RequestChannel final : public std::enable_shared_from_this<RequestChannel> {
  struct ConstructionKey {
    explicit ConstructionKey() = default;
  };

 public:
  /// How long the page may take to answer, from the moment that the action is posted.
  static constexpr std::chrono::seconds answerLimit{5};

  [[nodiscard]] static std::shared_ptr<RequestChannel> create(std::weak_ptr<RequestChannelHost> host);
  RequestChannel(ConstructionKey key, std::weak_ptr<RequestChannelHost> host);

  /// Sends a request if it may be sent now.
  void submit(std::shared_ptr<Actionable> record);
  /// Whether a request may be sent now; where it may not, the request has been completed with the reason. Once the view
  /// is ending there is no call any more.
  [[nodiscard]] bool canSend(Actionable& record) const;
  /// Sends a request that may be sent.
  void send(std::shared_ptr<Actionable> record);
  /// Completes the request that a page's answer belongs to; anything else is ignored.
  void handleCallbackEvent(JsonView data);

  /// The requests that the page has been asked and has not answered, the oldest first.
  [[nodiscard]] const std::vector<std::shared_ptr<Actionable>>& sentCallbackActions() const {
    return sentCallbackActions_;
  }

 private:
  /// Those who wait.
  struct Line {
    std::weak_ptr<RequestChannel> channel{};
    std::deque<std::shared_ptr<Actionable>> waiting{};
    /// Set while anybody waits.
    std::shared_ptr<RequestChannelHost> host{};
  };

  class TimeLimit;

  void takeSlot(std::shared_ptr<Line> line);
  void admitNext(const std::shared_ptr<Line>& line);
  void postOrMaximize(RequestChannelHost& host, std::shared_ptr<Actionable> record);
  void post(const Actionable& record);
  void didEvaluate(Action action, const EvaluationResult& result);
  /// Takes a request off the list and lets the next one in. False when it is not there.
  bool removeSentCallbackAction(std::string_view id);

  std::weak_ptr<RequestChannelHost> host_;
  std::weak_ptr<Line> line_;
  bool isSlotTaken_ = false;
  std::vector<std::shared_ptr<Actionable>> sentCallbackActions_;
};

}  // namespace corvane
