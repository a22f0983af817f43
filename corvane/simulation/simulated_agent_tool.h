/// A simulated agent tool page, for tests of host apps and of the framework without a web engine.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "corvane/bridge/call_session_status.h"
#include "corvane/export.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/headless/headless_backend.h"
#include "corvane/platform/headless/headless_web_engine.h"
#include "corvane/platform/views/ui_view.h"
#include "corvane/platform/web/web_error.h"
#include "corvane/simulation/page_trouble.h"
#include "corvane/simulation/simulated_shop.h"

namespace corvane::simulation {

/// Plays the agent tool in the web view of an agent view on the headless backend.
///
/// A load finishes on the run loop, unless `setLoadPlan` says otherwise. Without a plan, an address without a scheme,
/// which no engine loads, fails before anything arrived. Messages go the way of a real page's window
/// messages, through what the injected forwarder does. Only those from the page's own origin arrive, text is read as
/// JSON, and text that is no JSON is dropped. An address with the fragment "#tour" makes the page run through a whole
/// call by itself, one message every `tourStep`.
///
/// Actions of the host app are answered for real. The page keeps the products in the call and the cart until the next
/// load; `setTrouble` makes the answers go wrong.
///
/// Ownership: whoever made it; it refers to the view weakly. Without a view, before and after, it does nothing but tell
///            the diagnostics handler that it cannot.
/// Threads:   main thread only.
class CORVANE_EXPORT SimulatedAgentTool final : public std::enable_shared_from_this<SimulatedAgentTool> {
 public:
  struct Finishes {};
  /// The load fails when some of the page was there.
  struct Fails {
    WebError error;
  };
  /// The load fails before anything of the page was there.
  struct FailsBeforeAnythingArrived {
    WebError error;
  };
  struct NeverEnds {};
  using LoadOutcome = std::variant<Finishes, Fails, FailsBeforeAnythingArrived, NeverEnds>;
  /// Decides how the load of an address ends.
  using LoadPlan = std::function<LoadOutcome(std::string_view url)>;

  enum class Origin { ofThePage, another };

  static constexpr std::chrono::milliseconds tourStep{350};

  /// Takes over the first web view inside the view. A load that is under way, and that nobody plays, goes on with this
  /// page on the run loop's next turn.
  [[nodiscard]] static std::shared_ptr<SimulatedAgentTool> attach(const std::shared_ptr<UIView>& view);
  /// Takes over the next agent view that is made, for code that makes it and loads it in one go. Several that wait are
  /// served in the order of these calls.
  [[nodiscard]] static std::shared_ptr<SimulatedAgentTool> attachToNextView(headless::Backend& backend);

  void setLoadPlan(LoadPlan plan) { loadPlan_ = std::move(plan); }

  /// Holds until it is set again, over loads, too. Throws `std::invalid_argument` for a text that no page can have.
  void setTrouble(PageTrouble::Value trouble);
  /// The actions that the page has got since the last load, as JSON texts.
  [[nodiscard]] const std::vector<std::string>& receivedActions() const { return receivedActions_; }
  [[nodiscard]] const SimulatedShop& shop() const { return shop_; }

  /// Each of these posts one event of the page. What it tells of the cart or of the products in the call, the page
  /// itself knows from then on, too. Throws `EncodingError` for text that is not valid UTF-8.
  ///
  /// The call moves on.
  void postCallStatus(CallSessionStatus status);
  /// The call has begun, with a customer of this language and region, such as "de-CH".
  void postClientLocale(std::string_view locale);
  /// The agent wants the call to float.
  void postMinimize();
  /// The cart has this many of an article; 0 or less for none.
  void postProductUpdateInCart(std::string_view sku, std::int64_t quantity);
  void postProductRemovedFromCart(std::string_view sku);
  void postProductRemovedFromCall(std::string_view sku);
  /// The page wants a new token; the identifier is to come back with it.
  void postRefreshSsoToken(std::string_view responseId);
  /// The agent is not signed in.
  void postUnauthorized();

  /// Posts a window message whose data is a text, which is whatever you like.
  void postText(std::string_view text, Origin origin = Origin::ofThePage);
  /// Posts a window message whose data is a value, given as JSON text.
  void postValue(std::string_view jsonText, Origin origin = Origin::ofThePage);

 private:
  SimulatedAgentTool() = default;

  void play(const std::shared_ptr<headless::HeadlessWebEngine>& engine);
  [[nodiscard]] std::shared_ptr<headless::HeadlessWebEngine> engine() const { return engine_.lock(); }
  void beginLoad(std::string_view url);
  void endLoad(unsigned load, const LoadOutcome& outcome, bool isTour);
  void runTourFrom(unsigned load, std::size_t step);
  EvaluationResult evaluate(std::string_view script);
  void receiveAction(const std::string& action);
  void answer(std::string_view eventType, std::string_view id, const ActionOutcome& outcome);

  /// Lives as long as its web view.
  std::weak_ptr<headless::HeadlessWebEngine> engine_;
  LoadPlan loadPlan_;
  /// Whether the web view was set up so that a page's messages can reach its host.
  bool hasForwarder_ = false;
  /// Counts the loads, so that what belongs to an earlier one is recognised.
  unsigned load_ = 0;
  PageTrouble::Value trouble_;
  std::vector<std::string> receivedActions_;
  SimulatedShop shop_;
  /// The answer that waits to come after the next one.
  std::optional<std::string> heldAnswer_;
};

}  // namespace corvane::simulation
