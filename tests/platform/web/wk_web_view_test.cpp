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
  EXPECT_EQ(WebError().kind, WebError::Kind::cannotLoad);
  EXPECT_FALSE(WKNavigationAction().isUserInitiated);
  EXPECT_EQ(EngineCapabilities(), (EngineCapabilities{false, false, false, false}));
}

class Follower : public WKNavigationDelegate {
 public:
  void webViewDidFinish(WKWebView&) override {}
  void webViewDidFail(WKWebView&, const WebError&) override {}
  void webViewDidFailProvisionalNavigation(WKWebView&, const WebError&) override {}
};

TEST_F(WKWebViewTest, PagesGoToOtherPagesOfTheWebInTheirOwnPlaceUnlessAnybodySaysOtherwise) {
  const auto mayGo = [&](const char* url, WKNavigationTarget target) {
    return engine().navigate({.url = url, .target = target});
  };
  EXPECT_TRUE(mayGo("file:///etc", WKNavigationTarget::newWindow)) << "nobody is there to refuse it";
  const auto follower = std::make_shared<Follower>();
  view_->setNavigationDelegate(follower);
  EXPECT_TRUE(mayGo("https://a.test", WKNavigationTarget::mainFrame));
  EXPECT_TRUE(mayGo("http://a.test", WKNavigationTarget::mainFrame));
  EXPECT_TRUE(mayGo("about:blank", WKNavigationTarget::subframe));
  EXPECT_FALSE(mayGo("https://a.test", WKNavigationTarget::newWindow));
  EXPECT_FALSE(engine().navigate({.url = "file:///etc"}));
}

class Listener : public WKScriptMessageHandler {
 public:
  void userContentControllerDidReceive(WKUserContentController&, const WKScriptMessage& message) override {
    heard.emplace_back(message.name);
  }
  std::vector<std::string> heard;
};

TEST_F(WKWebViewTest, ThePageIsHeardOnEachOfItsChannelsAndTheEngineTellsWhatItCanDo) {
  const auto one = std::make_shared<Listener>();
  const auto two = std::make_shared<Listener>();
  view_->configuration().userContentController->addScriptMessageHandler(one, "one");
  view_->configuration().userContentController->addScriptMessageHandler(two, "two");
  for (const char* channel : {"two", "three", "one"}) engine().postMessage(channel, "1");
  EXPECT_EQ(one->heard, (Log{"one"}));
  EXPECT_EQ(two->heard, (Log{"two"}));

  std::optional<EngineCapabilities> found;
  backend().setCapabilities({.hasCamera = true});
  queryEngineCapabilities([&](const EngineCapabilities& capabilities) { found = capabilities; });
  loop().runUntilIdle();
  EXPECT_EQ(found, (EngineCapabilities{.hasCamera = true}));
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
