#include "corvane/agent_view/request_channel.h"

#include "corvane/bridge/action_records.h"
#include "corvane/platform/foundation/run_loop.h"
#include "tests/support/headless_test.h"
#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

/// Stands where the agent view stands: notes what is asked of it.
class FakeView final : public RequestChannelDelegate {
 public:
  explicit FakeView(Log& log) : log_(log) {}
  ~FakeView() override { log_.emplace_back("host ends"); }

  bool hasActiveCall() const override { return isCallActive; }
  const CartQuantities& cart() const override { return quantities; }
  void evaluate(std::string_view script, EvaluationCompletion completion) override {
    log_.push_back("evaluate " + std::string(script.substr(0, script.find(R"(-)"))));
    RunLoop::main().post([completion = std::move(completion)]() mutable { completion(JsonValue()); });
  }
  void scriptDidFail(const WebError& error) override { log_.push_back("script failed: " + error.description); }

  bool isCallActive = true;
  CartQuantities quantities;
  std::shared_ptr<RequestChannel> channel;

 private:
  Log& log_;
};

class RequestChannelTest : public HeadlessTest {
 protected:
  /// A request for the cart of one SKU, identified by that SKU.
  std::shared_ptr<Actionable> request(const std::string& id, std::function<void()> then = nullptr) {
    return std::make_shared<SkuAction>(
        SkuData{._id = id, .sku = id},
        [this, id, then](const std::optional<AgentError>& error) {
          const bool isOfPage = error && error->is<AgentError::AgentToolError>();
          log_.push_back(id + (isOfPage ? ": the page says " : ": ") + (error ? error->what() : "done"));
          if (then) then();
        },
        Action::addProductToCart);
  }
  void answer(const std::string& data) { channel_->handleCallbackEvent(JsonValue::parse(data).value()); }
  void answerTo(const std::string& id) { answer(R"({"_id":")" + id + "\"}"); }
  static std::string posting(const std::string& id) {
    return R"(evaluate postAction({"eventType":"SDK_INTERNAL_ADD_PRODUCT_TO_CART","data":{"_id":")" + id +
           R"(","sku":")" + id + "\"}});";
  }
  /// Nothing is under way any more.
  void expectIdle() {
    loop().advance(5s);
    EXPECT_TRUE(channel_->sentCallbackActions().empty());
  }

  std::shared_ptr<FakeView> host_ = std::make_shared<FakeView>(log_);
  std::shared_ptr<RequestChannel> channel_ = RequestChannel::create(host_);
};

TEST_F(RequestChannelTest, RefusalsComeInsideTheCallAndSendNothing) {
  const auto addition = [&](ProductFields fields) {
    return std::make_shared<AddProductAction>(
        ProductActionData{.data = Product(std::move(fields)), ._id = "p"},
        [this](const std::optional<AgentError>& error) { log_.emplace_back(error ? error->what() : "done"); },
        Action::addProductToCall);
  };
  ProductFields empty = shirtFields();
  empty.variations.clear();
  channel_->submit(addition(empty));
  EXPECT_EQ(takeLog(), Log{"Need at least one(1) variation"});
  ProductFields notUtf8 = shirtFields();
  notUtf8.description = "\xFF";
  channel_->submit(addition(notUtf8));
  EXPECT_EQ(takeLog().size(), 1U);

  host_->isCallActive = false;
  channel_->submit(addition(empty));
  channel_->submit(request("a"));
  channel_->submit(std::make_shared<VoidAction>(Action::ssoLogout));
  EXPECT_EQ(takeLog(), (Log{"noActiveCall", "a: noActiveCall"}));
  EXPECT_EQ(loop().pendingTaskCount(), 0U);
}

TEST_F(RequestChannelTest, ActionsWithoutAnAnswerGoAtOnceAndPastThoseThatWait) {
  channel_->submit(request("a"));
  host_->isCallActive = false;
  channel_->submit(std::make_shared<SSOAction>(SSOActionFields{.data = {"t", "r"}}));
  EXPECT_EQ(takeLog(), (Log{R"(evaluate postAction({"eventType":"SDK_INTERNAL_REFRESH_SSO_TOKEN","data":)"
                            R"({"idToken":"t","responseId":"r"}});)"}));
  loop().runUntilIdle();
  EXPECT_EQ(takeLog(), Log{posting("a")}) << "once admitted, the state of the call does not matter";
  answerTo("a");
  takeLog();
  host_->isCallActive = true;
  channel_->submit(request("\xFF"));
  loop().advance(5s);
  EXPECT_EQ(takeLog(), (Log{"evaluate postAction({});", "\xFF: requestTimeout"})) << "there is no JSON text of it";
}

TEST_F(RequestChannelTest, AnswersThatNameNoPendingRequestAreIgnored) {
  channel_->submit(request("a"));
  channel_->submit(request("b"));
  loop().runUntilIdle();
  for (const char* const data :
       {"{}", R"({"_id":null})", R"({"_id":["a"]})", R"({"_id":"A"})", R"({"id":"a"})", R"({"_id":"b"})",
        R"({"_id":"a","error":5})", R"({"_id":"a","result":"\udfff"})", R"({"_id":"a","_id":"b"})"}) {
    answer(data);
  }
  EXPECT_EQ(takeLog(), Log{posting("a")});
  answer(R"({"_id":"b","_id":"a","error":"","result":1e400,"more":[[[]]]})");
  EXPECT_EQ(takeLog(), Log{"a: the page says "}) << "an empty error is an error";
  answerTo("a");
  loop().runUntilIdle();
  answer(R"({"_id":"b","error":null})");
  EXPECT_EQ(takeLog(), (Log{posting("b"), "b: done"}));
  expectIdle();
}

TEST_F(RequestChannelTest, AnAnsweredRequestIsStillListedForItsCompletionATimedOutOneIsNot) {
  std::vector<std::size_t> listed;
  const auto look = [&] { listed.push_back(channel_->sentCallbackActions().size()); };
  channel_->submit(request("a", look));
  loop().runUntilIdle();
  answerTo("a");
  channel_->submit(request("b", look));
  loop().advance(5s);
  EXPECT_EQ(listed, (std::vector<std::size_t>{1, 0}));
}

TEST_F(RequestChannelTest, WaitingRequestsKeepTheirHostUntilTheLastIsPostedAndNothingElseDoes) {
  channel_->submit(request("a"));
  channel_->submit(request("b"));
  host_->channel = std::exchange(channel_, nullptr);
  const std::weak_ptr<FakeView> host = std::exchange(host_, nullptr);
  loop().advance(5s - 1ns);
  EXPECT_EQ(takeLog(), Log{posting("a")});
  EXPECT_FALSE(host.expired());
  loop().advance(1ns);
  EXPECT_EQ(takeLog(), (Log{"a: requestTimeout", posting("b"), "host ends"}));
  loop().advance(5s);
  EXPECT_TRUE(takeLog().empty());
}

TEST_F(RequestChannelTest, NothingIsLeftOfRequestsWhoseRunLoopEnds) {
  // Its completion holds the host, as that of a host app may hold the view.
  channel_->submit(request("a", [host = host_] {}));
  loop().runUntilIdle();
  channel_->submit(request("b"));
  takeLog();
  host_->channel = std::exchange(channel_, nullptr);
  host_.reset();
  EXPECT_TRUE(takeLog().empty());
  loop().dropTasks();
  EXPECT_EQ(takeLog(), Log{"host ends"});
}

}  // namespace
}  // namespace corvane
