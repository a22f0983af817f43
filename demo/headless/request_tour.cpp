#include "demo/headless/request_tour.h"

#include <chrono>
#include <cstdio>
#include <string>

#include "corvane/product/variation_factory.h"
#include "demo/headless/request_stage.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;
using simulation::PageTrouble;

constexpr const char* noCall = "NoActiveCall";
constexpr const char* timeOut = "RequestTimeout";

Product shirt() {
  VariationFactory article;
  article.name = "Oxford shirt";
  article.price = Price("EUR", 59.95F, std::nullopt);
  article.imageUrls = {"https://shop.example.com/images/shirt-oxford.jpg"};
  return Product({.attributes = {AttributeDefinition("size", "Size", {{"S", "Small"}, {"M", "Medium"}})},
                  .currency = "EUR",
                  .description = "A shirt that goes to the office and stays for dinner.",
                  .locale = "en-GB",
                  .name = "Oxford shirt",
                  .variations = {article.createVariation("SHIRT-S", {{"size", "S"}}),
                                 article.createVariation("SHIRT-M", {{"size", "M"}})}});
}

Product productWithoutVariations() { return Product({.currency = "EUR", .locale = "en-GB", .name = "Gift card"}); }

void theCall(RequestStage& stage) {
  VelnorAgentView& view = stage.view();
  view.addProductToCall(shirt(), stage.expect("addProductToCall(shirt)", "success"));
  view.getProductsInCall(stage.expect("getProductsInCall()", "[SHIRT-S, SHIRT-M]"));
  view.isProductInCall("SHIRT-M", stage.expect(R"(isProductInCall("SHIRT-M"))", "true"));
  view.removeProductInCall("SHIRT-M", stage.expect(R"(removeProductInCall("SHIRT-M"))", "success"));
  view.isProductInCall("SHIRT-M", stage.expect(R"(isProductInCall("SHIRT-M"))", "false"));
  view.removeProductInCall("SHIRT-M", stage.expect(R"(removeProductInCall("SHIRT-M"))",
                                                   R"(AgentToolError: The call has no product "SHIRT-M")"));
}

void theCart(RequestStage& stage) {
  VelnorAgentView& view = stage.view();
  view.addProductToCart("SHIRT-S", stage.expect(R"(addProductToCart("SHIRT-S"))", "success"));
  view.addProductToCart("SHIRT-M", stage.expect(R"(addProductToCart("SHIRT-M"))", "success"));
  view.updateProductInCart("SHIRT-M", 3, stage.expect(R"(updateProductInCart("SHIRT-M", 3))", "success"));
  view.getProductsInCart(stage.expect("getProductsInCart()", "[SHIRT-M, SHIRT-S]"));
  view.getCartStatus(stage.expect("getCartStatus()", "{SHIRT-M: 3, SHIRT-S: 1}"));
  view.isProductInCart("SHIRT-M", stage.expect(R"(isProductInCart("SHIRT-M"))", "true"));
  view.removeProductInCart("SHIRT-M", stage.expect(R"(removeProductInCart("SHIRT-M"))", "success"));
  view.removeProductInCart("SHIRT-M", stage.expect(R"(removeProductInCart("SHIRT-M"))",
                                                   R"(AgentToolError: The cart has no product "SHIRT-M")"));
}

void decrementing(RequestStage& stage) {
  VelnorAgentView& view = stage.view();
  const char* const request = R"(decrementProductInCart("SHIRT-S"))";
  view.updateProductInCart("SHIRT-S", 2, stage.expect(R"(updateProductInCart("SHIRT-S", 2))", "success"));
  for (const char* const outcome : {"success", "success", "SkuNotFound"}) {
    stage.settle();
    view.decrementProductInCart("SHIRT-S", stage.expect(request, outcome));
  }
}

void decrementingAmongOthers(RequestStage& stage) {
  VelnorAgentView& view = stage.view();
  view.updateProductInCart("SHIRT-S", 2, stage.expect(R"(updateProductInCart("SHIRT-S", 2))", "success", 1s));
  stage.page().setTrouble(PageTrouble::AnswersLate{1s});
  view.decrementProductInCart("SHIRT-S", stage.expect(R"(decrementProductInCart("SHIRT-S"))", "success", 4s));
  view.isProductInCart("SHIRT-S", stage.expect(R"(isProductInCart("SHIRT-S"))", "true", 3s));
}

void signingIn(RequestStage& stage) {
  stage.view().refreshSsoToken("a-new-token", "response-1");
  stage.view().signOut();
  stage.settle();
  stage.check(stage.page().receivedActions().size() == 2, "refreshSsoToken(...) and signOut() have reached the page");
}

void askEverything(RequestStage& stage, const std::string& outcome) {
  VelnorAgentView& view = stage.view();
  view.addProductToCall(shirt(), stage.expect("addProductToCall(shirt)", outcome));
  view.getProductsInCall(stage.expect("getProductsInCall()", outcome));
  view.isProductInCall("SHIRT-M", stage.expect(R"(isProductInCall("SHIRT-M"))", outcome));
  view.removeProductInCall("SHIRT-M", stage.expect(R"(removeProductInCall("SHIRT-M"))", outcome));
  view.addProductToCart("SHIRT-M", stage.expect(R"(addProductToCart("SHIRT-M"))", outcome));
  view.updateProductInCart("SHIRT-M", 3, stage.expect(R"(updateProductInCart("SHIRT-M", 3))", outcome));
  view.getProductsInCart(stage.expect("getProductsInCart()", outcome));
  view.getCartStatus(stage.expect("getCartStatus()", outcome));
  view.isProductInCart("SHIRT-M", stage.expect(R"(isProductInCart("SHIRT-M"))", outcome));
  view.removeProductInCart("SHIRT-M", stage.expect(R"(removeProductInCart("SHIRT-M"))", outcome));
  view.decrementProductInCart("SHIRT-M", stage.expect(R"(decrementProductInCart("SHIRT-M"))", outcome));
}

void withoutACall(RequestStage& stage) {
  stage.page().postCallStatus(CallSessionStatus::paused);
  askEverything(stage, noCall);
  stage.check(stage.areAllComplete(), "the calls have returned, and all is over");
  stage.view().signOut();
  stage.settle();
  stage.check(stage.page().receivedActions().empty(), "signOut() does nothing");
  stage.view().refreshSsoToken("a-new-token", "response-1");
  stage.settle();
  stage.check(stage.page().receivedActions().size() == 1, "refreshSsoToken(...) is sent all the same");
}

void productThatCannotBeSent(RequestStage& stage) {
  stage.view().addProductToCall(
      productWithoutVariations(),
      stage.expect("addProductToCall(a product without variations)", "EncodingError: Need at least one(1) variation"));
  stage.settle();
  stage.check(stage.page().receivedActions().empty(), "the page was not asked");
}

void inTime(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersLate{4900ms});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "false", 4900ms));
}

void tooLate(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersLate{5100ms});
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", timeOut, 5s));
  stage.advance(6s);
  stage.page().setTrouble(PageTrouble::None{});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "true"));
}

void never(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::NeverAnswers{});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", timeOut, 5s));
  stage.view().getProductsInCart(stage.expect("getProductsInCart()", timeOut, 10s));
}

void oneAtATime(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersLate{2s});
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", "success", 2s));
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "true", 4s));
  stage.view().getProductsInCart(stage.expect("getProductsInCart()", "[A]", 6s));
  stage.settle();
  stage.check(stage.page().receivedActions().size() == 1, "the page has been asked the first only");
}

void twice(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersTwice{});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "false"));
}

void unknownIdentifier(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersUnknownIdentifier{});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", timeOut, 5s));
}

void errorOfThePage(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersWithError{"The cart is being paid for"});
  const char* const outcome = "AgentToolError: The cart is being paid for";
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", outcome));
  stage.view().getCartStatus(stage.expect("getCartStatus()", outcome));
  // It fails with the question that comes first.
  stage.view().decrementProductInCart("A", stage.expect(R"(decrementProductInCart("A"))", outcome));
}

void wrongType(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersWithWrongType{});
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", "success"));
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "no value"));
  stage.view().getProductsInCart(stage.expect("getProductsInCart()", "no value"));
  stage.view().getCartStatus(stage.expect("getCartStatus()", "no value"));
  stage.view().decrementProductInCart("A", stage.expect(R"(decrementProductInCart("A"))", "SkuNotFound"));
}

void reverseOrder(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersInReverseOrder{});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", timeOut, 5s));
  stage.view().getProductsInCart(stage.expect("getProductsInCart()", "[]", 5s));
}

void throwingHandler(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::ThrowsInHandler{});
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", timeOut, 5s));
  stage.advance(5s);
  stage.page().setTrouble(PageTrouble::None{});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "false"));
}

void missingPostAction(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::HasNoPostAction{});
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", timeOut, 5s));
}

void callEndsMeanwhile(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersLate{2s});
  stage.view().addProductToCart("A", stage.expect(R"(addProductToCart("A"))", "success", 2s));
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", "true", 4s));
  stage.advance(1s);
  stage.page().postCallStatus(CallSessionStatus::disconnecting);
  stage.view().getProductsInCart(stage.expect("getProductsInCart()", noCall));
}

void anotherBooking(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersLate{2s});
  stage.view().isProductInCart("A", stage.expect(R"(isProductInCart("A"))", timeOut, 5s));
  stage.advance(1s);
  stage.say(R"(loadBooking("booking-8"))");
  stage.view().loadBooking("booking-8");
}

void viewEnds(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::AnswersLate{2s});
  stage.view().isProductInCart("A", stage.expectNothing(R"(isProductInCart("A"))"));
  stage.advance(1s);
  stage.say("the last holder drops the view");
  stage.dropView();
}

void viewEndsWhileDecrementing(RequestStage& stage) {
  stage.page().setTrouble(PageTrouble::NeverAnswers{});
  stage.view().decrementProductInCart("A", stage.expect(R"(decrementProductInCart("A"))", timeOut, 5s));
  stage.advance(1s);
  stage.say("the last holder drops the view");
  stage.dropView();
}

struct Scene {
  const char* title;
  void (*play)(RequestStage&);
};

constexpr Scene scenes[] = {
    {"The products in the call. A product is added with all its variations.", theCall},
    {"The cart. Where the page tells of a change, its event comes before the answer.", theCart},
    {"Decrementing asks for the quantity, then sets it. At 0 the item is gone.", decrementing},
    {"It is two requests: what was asked in between goes before the second.", decrementingAmongOthers},
    {"Signing in and out have no completions.", signingIn},
    {"Unless a call is running, everything is refused inside the call. A pause counts as no call.", withoutACall},
    {"A product without variations has no JSON form, so nothing is sent.", productThatCannotBeSent},
    {"An answer after 4.9 s is in time.", inTime},
    {"An answer after 5.1 s is not, and is ignored. What was asked may have been done all the same.", tooLate},
    {"A page that never answers. The second request has its five seconds once the first is over.", never},
    {"The page is asked one at a time, in the order of the calls.", oneAtATime},
    {"A page that answers twice. The first answer counts.", twice},
    {"An answer to a request that nobody made is ignored.", unknownIdentifier},
    {"An error of the page comes with the page's text.", errorOfThePage},
    {"A result of another type counts as none. That is no error.", wrongType},
    {"A page that holds an answer back until the next one. It is asked one at a time, so the first is late.",
     reverseOrder},
    {"The page's code for actions throws. To the host that is a page that does not answer.", throwingHandler},
    {"The page has lost the function that takes the actions. That is told by an event at once.", missingPostAction},
    {"The call ends meanwhile. What has been asked, or waits, still goes its way.", callEndsMeanwhile},
    {"Another booking is loaded meanwhile. The new page knows of no request.", anotherBooking},
    {"The view ends meanwhile. Nobody is told.", viewEnds},
    {"Decrementing keeps the view until it knows the quantity, or that nobody tells.", viewEndsWhileDecrementing},
};

}  // namespace

bool tourRequests() {
  bool isAsExpected = true;
  for (const Scene& scene : scenes) {
    std::printf("\n%s\n", scene.title);
    const auto stage = RequestStage::create();
    scene.play(*stage);
    isAsExpected = stage->finish() && isAsExpected;
  }
  return isAsExpected;
}

}  // namespace corvane::demo
