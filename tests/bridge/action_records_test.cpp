#include "corvane/bridge/action_records.h"

#include <memory>

#include "tests/support/outcome_text.h"
#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using Json = nlohmann::json;

JsonValue parse(std::string_view text) { return JsonValue::parse(text).value(); }

/// A record of each kind whose completion notes what it is called with.
class ActionRecords : public testing::Test {
 protected:
  template <class Outcome>
  auto noting() {
    return [this](Outcome outcome) { outcomes_.push_back(outcomeText(outcome)); };
  }
  std::unique_ptr<Actionable> skuRecord(Action action, std::optional<std::int64_t> quantity = {}) {
    return std::make_unique<SkuAction>(SkuData{"id", "S", quantity}, noting<std::optional<AgentError>>(), action);
  }
  std::unique_ptr<Actionable> question() {
    return std::make_unique<SkuBoolResponseAction>(SkuData{"id", "S", {}}, noting<AgentResult<bool>>(),
                                                   Action::isProductInCart);
  }
  std::unique_ptr<Actionable> list() {
    return std::make_unique<GetProductAction>(RequestId{"id"}, noting<AgentResult<std::vector<std::string>>>(),
                                              Action::getProductsInCall);
  }
  std::unique_ptr<Actionable> cartStatus() {
    return std::make_unique<GetCartStatusAction>(RequestId{"id"}, noting<AgentResult<CartQuantities>>(),
                                                 Action::getProductsInCart);
  }
  std::string outcomeOf(std::unique_ptr<Actionable> record, std::string_view data,
                        std::optional<AgentError> error = {}) {
    outcomes_.clear();
    const JsonValue value = parse(data);
    record->handleCallback(value, error, {{"A", 2}, {"C", 1}, {"Ä", 4}});
    record->handleCallback(value, std::move(error), {});
    return outcomes_.size() == 1 ? outcomes_.front() : "not called exactly once";
  }

  std::vector<std::string> outcomes_;
};

TEST_F(ActionRecords, OnlyMaximizingAndTheTokenGoWithoutACall) {
  for (const Action action : allCases<Action>()) {
    EXPECT_EQ(VoidAction(action).requiresActiveCall(), action != Action::maximize);
    EXPECT_EQ(skuRecord(action)->requiresActiveCall(), action != Action::maximize);
    EXPECT_EQ(skuRecord(action)->action(), action);
  }
  EXPECT_FALSE(SSOAction({}).requiresActiveCall());
  EXPECT_FALSE(SSOAction({}).callbackId() || VoidAction(Action::ssoLogout).callbackId());
  EXPECT_EQ(SSOAction({.callbackId = "x"}).callbackId(), "x");
  EXPECT_EQ(list()->callbackId(), "id");
  EXPECT_FALSE(fromRawValue<Action>("sdk_internal_logout") || fromRawValue<Action>("SDK_INTERNAL_SSO_LOGOUT"));
  EXPECT_EQ(fromRawValue<Action>("SDK_INTERNAL_LOGOUT"), Action::ssoLogout);
}

TEST_F(ActionRecords, ReadTheirAnswersAndTakeNothingElseForOne) {
  for (const std::string_view data : {"{}", R"({"result":null})", R"({"result":{"0":"A"}})", R"({"result":1})",
                                      R"({"result":"true"})", R"({"result":["A",1]})", R"({"Result":true})"}) {
    EXPECT_EQ(outcomeOf(question(), data), "nothing") << data;
    EXPECT_EQ(outcomeOf(list(), data), "nothing") << data;
    EXPECT_EQ(outcomeOf(cartStatus(), data), "nothing") << data;
    EXPECT_EQ(outcomeOf(skuRecord(Action::addProductToCart), data), "success") << data;
  }
  EXPECT_EQ(outcomeOf(question(), R"({"result":true})"), "true");
  EXPECT_EQ(outcomeOf(question(), R"({"result":false})"), "false");
  EXPECT_EQ(outcomeOf(question(), R"({"result":["A"]})"), "nothing");
  EXPECT_EQ(outcomeOf(list(), R"({"result":["B","A","B"]})"), R"(["B","A","B"])");
  EXPECT_EQ(outcomeOf(list(), R"({"result":[]})"), "[]");
  EXPECT_EQ(outcomeOf(cartStatus(), R"({"result":["B","A","a"]})"), R"({"A":2})");
  EXPECT_EQ(outcomeOf(cartStatus(), "{\"result\":[\"A\u0308\"]}"), "{}") << "compared letter by letter";
  EXPECT_EQ(outcomeOf(cartStatus(), R"({"result":[]})"), "{}");
}

}  // namespace
}  // namespace corvane
