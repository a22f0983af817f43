// What host apps may rely on when they ask something of the page, whichever backend carries the framework.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "tests/contract/contract_platform.h"
#include "tests/support/outcome_text.h"
#include "tests/support/print_events.h"
#include "tests/support/product_samples.h"

namespace corvane::contract {
namespace {

using namespace std::chrono_literals;
using Texts = std::vector<std::string>;

class RequestContract : public testing::TestWithParam<PlatformMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
  }

  /// A view whose page has loaded, with a running call.
  std::shared_ptr<VelnorAgentView> makeView() {
    auto view = VelnorAgentView::create(Region::custom(platform_->address(PageKind::agentTool)), "shop", false);
    view->setFrame({{0, 0}, {390, 844}});
    platform_->show(view);
    view->loadBooking("b");
    EXPECT_TRUE(platform_->runUntil([&] { return view->isLoaded(); }));
    beginCall(*view);
    return view;
  }
  void beginCall(VelnorAgentView& view) {
    platform_->pagePostsValue(view,
                              R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
    EXPECT_TRUE(platform_->runUntil([&] { return view.callSessionStatus() == CallSessionStatus::running; }));
  }
  /// What an operation, called with a completion, comes to.
  template <class Operation>
  std::string outcomeOf(Operation operation) {
    std::string text;
    operation([&text](const auto& outcome) { text = outcomeText(outcome); });
    EXPECT_TRUE(platform_->runUntil([&] { return !text.empty(); }));
    return text;
  }

  std::unique_ptr<ContractPlatform> platform_;
};

TEST_P(RequestContract, EveryOperationReachesThePageAndItsAnswerTheHost) {
  const auto view = makeView();
  Texts events;
  view->setEventHandler([&](const AgentEvent& event) { events.push_back(encodeJson(event)); });
  const auto add = [&](const std::string& sku) {
    return outcomeOf([&](auto done) { view->addProductToCart(sku, done); });
  };
  const auto status = [&] { return outcomeOf([&](auto done) { view->getCartStatus(done); }); };

  EXPECT_EQ(outcomeOf([&](auto done) { view->addProductToCall(Product(shirtFields()), done); }), "success");
  EXPECT_TRUE(outcomeOf([&](auto done) { view->getProductsInCall(done); }).ends_with(R"("red-S","red-M","blue-S"])"));
  EXPECT_EQ(outcomeOf([&](auto done) { view->isProductInCall("red-M", done); }), "true");
  EXPECT_EQ(outcomeOf([&](auto done) { view->removeProductInCall("red-M", done); }), "success");
  EXPECT_EQ(outcomeOf([&](auto done) { view->isProductInCall("red-M", done); }), "false");
  EXPECT_TRUE(outcomeOf([&](auto done) { view->removeProductInCall("red-M", done); }).starts_with("error "));

  EXPECT_EQ(status(), "{}");
  EXPECT_EQ(add("A"), "success");
  EXPECT_EQ(add("B"), "success");
  EXPECT_EQ(outcomeOf([&](auto done) { view->updateProductInCart("A", 3, done); }), "success");
  EXPECT_EQ(outcomeOf([&](auto done) { view->getProductsInCart(done); }), R"(["A","B"])");
  EXPECT_EQ(status(), R"({"A":3,"B":1})");
  EXPECT_EQ(outcomeOf([&](auto done) { view->decrementProductInCart("A", done); }), "success");
  EXPECT_EQ(outcomeOf([&](auto done) { view->decrementProductInCart("B", done); }), "success");
  EXPECT_EQ(outcomeOf([&](auto done) { view->decrementProductInCart("B", done); }), "error skuNotFound");
  EXPECT_EQ(status(), R"({"A":2})");
  EXPECT_EQ(outcomeOf([&](auto done) { view->isProductInCart("B", done); }), "false");
  EXPECT_EQ(outcomeOf([&](auto done) { view->removeProductInCart("A", done); }), "success");
  EXPECT_EQ(status(), "{}");

  view->refreshSsoToken("token", "response");
  view->signOut();
  view->maximizeView();
  EXPECT_EQ(outcomeOf([&](auto done) { view->isProductInCart("A", done); }), "false")
      << "and nothing stands in the way";
  const auto update = [](const std::string& sku, int quantity) {
    return R"({"productUpdateInCart":{"data":{"sku":")" + sku + R"(","quantity":)" + std::to_string(quantity) + "}}}";
  };
  EXPECT_EQ(events, (Texts{update("A", 1), update("B", 1), update("A", 3), update("A", 2), update("B", 0),
                           R"({"productRemovedFromCart":{"sku":"A"}})"}));
}

TEST_P(RequestContract, AnyTextReachesThePageAsItIs) {
  const auto view = makeView();
  const Texts skus{"",
                   "\"'\\`${alert(1)}\\u0041",
                   "</script><script>postAction=null</script><!--",
                   std::string("NUL \0 in it", 11),
                   "\n\r\t\x01\x1F\x7F",
                   "\u2028 \u2029 \u0085 \uFEFF",
                   "\U0001F600 \u00E4 a\u0308",
                   "__proto__",
                   "constructor",
                   std::string(1 << 20, '<')};
  for (const std::string& sku : skus) {
    EXPECT_EQ(outcomeOf([&](auto done) { view->addProductToCart(sku, done); }), "success");
    const nlohmann::json expected = CartQuantities{{sku, 1}};
    EXPECT_TRUE(outcomeOf([&](auto done) { view->getCartStatus(done); }) == expected.dump()) << sku.substr(0, 100);
    EXPECT_EQ(outcomeOf([&](auto done) { view->removeProductInCart(sku, done); }), "success");
  }
}

TEST_P(RequestContract, TroublesOfThePageEndEachRequestOnceAndFreeTheWay) {
  using Trouble = simulation::PageTrouble;
  struct Row {
    Trouble::Value trouble;
    std::string outcome;
    bool isScriptError = false;
  };
  const std::vector<Row> rows{
      {Trouble::AnswersLate{4s}, "true"},
      {Trouble::AnswersLate{6s}, "error requestTimeout"},
      {Trouble::NeverAnswers{}, "error requestTimeout"},
      {Trouble::AnswersTwice{}, "true"},
      {Trouble::AnswersUnknownIdentifier{}, "error requestTimeout"},
      {Trouble::AnswersWithError{"out of \"stock\""}, "error out of \"stock\""},
      {Trouble::AnswersWithWrongType{}, "nothing"},
      {Trouble::AnswersInReverseOrder{}, "error requestTimeout"},
      {Trouble::ThrowsInHandler{}, "error requestTimeout"},
      {Trouble::HasNoPostAction{}, "error requestTimeout", true},
  };
  struct Call {
    std::shared_ptr<VelnorAgentView> view;
    Texts outcomes;
    int errorEvents = 0;
  };
  // All at once: most of these take as long as a request may.
  std::vector<Call> calls(rows.size());
  for (std::size_t index = 0; index < rows.size(); ++index) {
    Call& call = calls[index];
    call.view = makeView();
    EXPECT_EQ(outcomeOf([&](auto done) { call.view->addProductToCart("A", done); }), "success");
    platform_->pageHasTrouble(*call.view, rows[index].trouble);
    call.view->setEventHandler(
        [&call](const AgentEvent& event) { call.errorEvents += event.is<AgentEvent::Error>() ? 1 : 0; });
  }
  for (Call& call : calls) {
    call.view->isProductInCart("A", [&call](const AgentResult<bool>& result) {
      call.outcomes.push_back(outcomeText(result));
      call.view->isProductInCall(
          "none", [&call](const AgentResult<bool>& second) { call.outcomes.push_back(outcomeText(second)); });
    });
  }
  ASSERT_TRUE(platform_->runUntil(
      [&] { return std::ranges::none_of(calls, [](const Call& call) { return call.outcomes.empty(); }); }));
  for (std::size_t index = 0; index < rows.size(); ++index) {
    Call& call = calls[index];
    EXPECT_EQ(call.outcomes.front(), rows[index].outcome) << index;
    EXPECT_EQ(call.errorEvents > 0, rows[index].isScriptError) << index;
    EXPECT_EQ(call.view->error().has_value(), rows[index].isScriptError) << index;
    platform_->pageHasTrouble(*call.view, Trouble::None{});
  }
  ASSERT_TRUE(platform_->runUntil(
      [&] { return std::ranges::none_of(calls, [](const Call& call) { return call.outcomes.size() < 2; }); }));
  for (std::size_t index = 0; index < rows.size(); ++index) {
    EXPECT_EQ(calls[index].outcomes.size(), 2U) << index;
    // What was late belongs to the first request, whatever the second one came to.
    EXPECT_NE(calls[index].outcomes.back(), "true") << index;
  }
}

TEST_P(RequestContract, ACompletionMayReleaseTheView) {
  auto view = makeView();
  const std::weak_ptr<VelnorAgentView> weak = view;
  view->isProductInCart("A", [&](const AgentResult<bool>&) {
    view->removeFromSuperview();
    view.reset();
  });
  EXPECT_TRUE(platform_->runUntil([&] { return weak.expired(); }));
}

INSTANTIATE_TEST_SUITE_P(On, RequestContract, testing::ValuesIn(platforms()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace corvane::contract
