#include "corvane/platform/web/wk_web_view.h"

#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using headless::HeadlessWebEngine;

class WKWebViewTest : public HeadlessTest {
 protected:
  std::shared_ptr<WKWebView> view_ = WKWebView::create({}, {});
  HeadlessWebEngine& engine() { return *HeadlessWebEngine::of(*view_); }
};

class Decider : public WKUIDelegate {
 public:
  void webViewRequestMediaCapturePermission(WKWebView&, const WKMediaCaptureRequest& request,
                                            WKPermissionDecisionHandler handler) override {
    requests.push_back(request);
    decisionHandler = std::move(handler);
  }
  std::vector<WKMediaCaptureRequest> requests;
  WKPermissionDecisionHandler decisionHandler;
};

TEST_F(WKWebViewTest, ACaptureRequestIsAnsweredOnceAndRefusedWhenNobodyAnswers) {
  std::vector<WKPermissionDecision> answers;
  const auto ask = [&] {
    engine().requestCapture(WKMediaCaptureType::camera,
                            [&](WKPermissionDecision answer) { answers.push_back(answer); });
  };
  ask();
  EXPECT_EQ(answers, (std::vector{WKPermissionDecision::prompt})) << "without a delegate the user decides";

  const auto decider = std::make_shared<Decider>();
  view_->setUIDelegate(decider);
  ask();
  ASSERT_EQ(decider->requests.size(), 1U);
  EXPECT_EQ(answers.size(), 1U) << "the answer may come later";
  decider->decisionHandler(WKPermissionDecision::grant);
  decider->decisionHandler(WKPermissionDecision::deny);
  EXPECT_EQ(answers.back(), WKPermissionDecision::grant);
  EXPECT_EQ(answers.size(), 2U);
  ask();
  decider->decisionHandler = nullptr;
  EXPECT_EQ(answers.back(), WKPermissionDecision::deny);
}

TEST_F(WKWebViewTest, NothingIsSwitchedOffBeforeSomebodyAsks) {
  EXPECT_TRUE(view_->isScrollEnabled());
  EXPECT_FALSE(view_->configuration().allowsInlineMediaPlayback);
  EXPECT_EQ(view_->contentInsetAdjustmentBehavior(), UIScrollViewContentInsetAdjustmentBehavior::automatic);
  const WKUserScript script;
  EXPECT_TRUE(script.isForMainFrameOnly && script.injectionTime == WKUserScriptInjectionTime::atDocumentEnd);
  EXPECT_EQ(WKMediaCaptureRequest().type, WKMediaCaptureType::cameraAndMicrophone);
  EXPECT_EQ(URLRequest(), (URLRequest{.url = {},
                                      .cachePolicy = URLRequestCachePolicy::useProtocolCachePolicy,
                                      .timeoutInterval = std::chrono::minutes(1)}));
}

TEST_F(WKWebViewTest, WhatTheUserMayDoReachesTheEngine) {
  view_->setUserInteractionEnabled(false);
  view_->setScrollEnabled(false);
  view_->evaluateJavaScript("1", nullptr);
  loop().runUntilIdle();
  using Engine = HeadlessWebEngine;
  EXPECT_EQ(std::vector(engine().records().begin(), engine().records().end()),
            (std::vector<Engine::Record>{Engine::InteractionSet{false}, Engine::ScrollSet{false},
                                         Engine::ScriptEvaluated{"1"}}));
  EXPECT_FALSE(view_->isUserInteractionEnabled() || view_->isScrollEnabled());
}

}  // namespace
}  // namespace corvane
