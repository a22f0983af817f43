// What host apps may rely on when they ask something of the page, whichever backend carries the framework.
#include <chrono>

#include "tests/contract/contract_test.h"
#include "tests/support/product_samples.h"

namespace corvane::contract {
namespace {

using namespace std::chrono_literals;

class RequestContract : public ContractTest {
 protected:
  /// A view whose page has loaded, with a running call.
  std::shared_ptr<VelnorAgentView> makeView() {
    auto view = ContractTest::makeView(PageKind::agentTool);
    view->loadBooking("b");
    EXPECT_TRUE(platform_->runUntil([&] { return view->isLoaded(); }));
    beginCall(*view);
    events_.clear();
    return view;
  }
};

TEST_P(RequestContract, EveryOperationReachesThePageAndItsAnswerTheHost) {
  const auto view = makeView();
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
  EXPECT_EQ(events_, (Texts{update("A", 1), update("B", 1), update("A", 3), update("A", 2), update("B", 0),
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

TEST_P(RequestContract, TroublesOfThePageEndEachRequestAsTheyShould) {
  using Trouble = simulation::PageTrouble;
  struct Row {
    Trouble::Value trouble;
    std::string outcome;
    std::shared_ptr<VelnorAgentView> view{};
    Texts outcomes{};
  };
  std::vector<Row> rows{
      // Far from the limit: ten pages that start on a busy machine answer a second or two later than they mean to.
      {Trouble::AnswersLate{2s}, "true"},
      {Trouble::AnswersLate{6s}, "error requestTimeout"},
      {Trouble::NeverAnswers{}, "error requestTimeout"},
      {Trouble::AnswersTwice{}, "true"},
      {Trouble::AnswersUnknownIdentifier{}, "error requestTimeout"},
      {Trouble::AnswersWithError{"out of \"stock\""}, "error out of \"stock\""},
      {Trouble::AnswersWithWrongType{}, "nothing"},
      {Trouble::AnswersInReverseOrder{}, "error requestTimeout"},
      {Trouble::ThrowsInHandler{}, "error requestTimeout"},
      {Trouble::HasNoPostAction{}, "error requestTimeout"},
  };
  for (Row& row : rows) {
    row.view = makeView();
    EXPECT_EQ(outcomeOf([&](auto done) { row.view->addProductToCart("A", done); }), "success");
    platform_->pageHasTrouble(*row.view, row.trouble);
  }
  // All at once: most of these take as long as a request may.
  for (Row& row : rows) {
    row.view->isProductInCart("A", [&row](const auto& result) { row.outcomes.push_back(outcomeText(result)); });
  }
  ASSERT_TRUE(platform_->runUntil(
      [&] { return std::ranges::none_of(rows, [](const Row& row) { return row.outcomes.empty(); }); }));
  for (const Row& row : rows) {
    EXPECT_EQ(row.outcomes, Texts{row.outcome}) << row.trouble.index();
    EXPECT_EQ(row.view->error().has_value(), std::holds_alternative<Trouble::HasNoPostAction>(row.trouble));
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

INSTANTIATE_TEST_SUITE_P(On, RequestContract, testing::ValuesIn(platforms()), nameOf);

}  // namespace
}  // namespace corvane::contract
