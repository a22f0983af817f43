#include "corvane/agent_view/awaiting.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <coroutine>
#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/simulation/simulated_agent_tool.h"
#include "tests/support/headless_test.h"
#include "tests/support/outcome_text.h"
#include "tests/support/product_samples.h"

namespace corvane {
namespace {

using namespace std::chrono_literals;
using Log = std::vector<std::string>;

class AwaitingTheView : public HeadlessTest {
 protected:
  AwaitingTheView() {
    view_->loadBooking("b");
    page_->postCallStatus(CallSessionStatus::running);
    loop().runUntilIdle();
  }
  /// Lets the timers of answered requests run out.
  void TearDown() override {
    loop().advance(5s);
    HeadlessTest::TearDown();
  }

  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "o", false);
  std::shared_ptr<simulation::SimulatedAgentTool> page_ = simulation::SimulatedAgentTool::attach(view_);
  Log log_;
};

DetachedTask useEveryOperation(std::shared_ptr<VelnorAgentView> view, Log& log) {
  auto page = awaiting(*view);
  log.push_back(outcomeText(co_await page.addProductToCall(Product(shirtFields()))));
  log.push_back(outcomeText(co_await page.getProductsInCall()));
  log.push_back(outcomeText(co_await page.isProductInCall("red-S")));
  log.push_back(outcomeText(co_await page.removeProductInCall("red-S")));
  log.push_back(outcomeText(co_await page.isProductInCall("red-S")));
  log.push_back(outcomeText(co_await page.addProductToCart("T")));
  log.push_back(outcomeText(co_await page.updateProductInCart("T", 3)));
  log.push_back(outcomeText(co_await page.decrementProductInCart("T")));
  log.push_back(outcomeText(co_await page.getProductsInCart()));
  log.push_back(outcomeText(co_await page.getCartStatus()));
  log.push_back(outcomeText(co_await page.removeProductInCart("T")));
  log.push_back(outcomeText(co_await page.isProductInCart("T")));
}

TEST_F(AwaitingTheView, GivesWhatTheCompletionsOfAllOperationsWouldGet) {
  useEveryOperation(view_, log_);
  EXPECT_EQ(log_, Log{}) << "it awaits the page";
  loop().runUntilIdle();
  EXPECT_EQ(log_, (Log{"success", "[\"red-S\",\"red-M\",\"blue-S\"]", "true", "success", "false", "success", "success",
                       "success", "[\"T\"]", "{\"T\":2}", "success", "false"}));
}

DetachedTask beginTwice(std::shared_ptr<VelnorAgentView> view, Log& log) {
  auto first = awaiting(*view).addProductToCart("T");
  auto second = awaiting(*view).isProductInCart("T");
  log.push_back(outcomeText(co_await second));
  log.push_back(outcomeText(co_await first));
  try {
    log.push_back(outcomeText(co_await first));
  } catch (const std::logic_error& error) {
    log.push_back(error.what());
  }
}

TEST_F(AwaitingTheView, OperationsBeginInOrderHoweverTheyAreAwaitedAndARefusalDoesNotPause) {
  beginTwice(view_, log_);
  loop().runUntilIdle();
  EXPECT_EQ(std::exchange(log_, {}), (Log{"true", "success", "an operation is awaited once"}));
  page_->postCallStatus(CallSessionStatus::paused);
  beginTwice(view_, log_);
  EXPECT_EQ(log_, (Log{"error noActiveCall", "error noActiveCall", "an operation is awaited once"}));
}

DetachedTask noteTheEnd(AgentOperations& operations, std::shared_ptr<int> /*alive*/, Log& log) {
  auto operation = awaiting(operations).getCartStatus();
  try {
    log.push_back(outcomeText(co_await operation));
  } catch (const OperationCancelled& error) {
    log.push_back(error.what());
    throw;
  }
}

TEST_F(AwaitingTheView, WhatIsNeverCompletedEndsTheCoroutine) {
  const auto alive = std::make_shared<int>();
  noteTheEnd(MinimizedState::shared(), alive, log_);
  EXPECT_EQ(std::exchange(log_, {}), Log{"operation cancelled"}) << "no view is held";

  page_->setTrouble(simulation::PageTrouble::NeverAnswers{});
  noteTheEnd(*view_, alive, log_);
  loop().advance(1s);
  EXPECT_EQ(log_, Log{});
  view_.reset();
  EXPECT_EQ(log_, Log{"operation cancelled"}) << "the view has ended";
  EXPECT_EQ(alive.use_count(), 1) << "no coroutine is left";
}

/// A coroutine that is ended from outside.
struct OwnedTask {
  struct promise_type {
    OwnedTask get_return_object() { return {std::coroutine_handle<promise_type>::from_promise(*this)}; }
    std::suspend_never initial_suspend() noexcept { return {}; }
    std::suspend_always final_suspend() noexcept { return {}; }
    void return_void() {}
    void unhandled_exception() { std::terminate(); }
  };
  std::coroutine_handle<promise_type> handle;
};

OwnedTask awaitTheCart(VelnorAgentView& view, Log& log) {
  log.push_back(outcomeText(co_await awaiting(view).getCartStatus()));
}

TEST_F(AwaitingTheView, ACoroutineThatEndsWhileItAwaitsIsNotResumed) {
  awaitTheCart(*view_, log_).handle.destroy();
  loop().runUntilIdle();
  EXPECT_EQ(log_, Log{});
  EXPECT_THAT(page_->receivedActions(), testing::SizeIs(1)) << "the operation itself has gone on";
}

}  // namespace
}  // namespace corvane
