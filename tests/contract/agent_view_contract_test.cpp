// What host apps may rely on, whichever backend carries the framework.
#include <chrono>

#include "tests/contract/contract_test.h"

namespace corvane::contract {
namespace {

std::string token(std::string_view id) { return R"({"refreshSsoToken":{"responseId":")" + std::string(id) + "\"}}"; }
std::string tokenMessage(std::string_view id) {
  return R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":")" + std::string(id) + "\"}}";
}
const std::string failure = R"({"error":{}})";

/// Notes the outcomes of loads before the agent view hears of them.
class NavigationSpy : public WKNavigationDelegate {
 public:
  explicit NavigationSpy(std::weak_ptr<VelnorAgentView> view) : view_(std::move(view)) {}
  void webViewDidFinish(WKWebView& webView) override {
    outcomes.emplace_back("finished");
    if (const auto view = view_.lock()) view->webViewDidFinish(webView);
  }
  void webViewDidFail(WKWebView& webView, const WebError& error) override {
    outcomes.emplace_back("failed");
    if (const auto view = view_.lock()) view->webViewDidFail(webView, error);
  }
  void webViewDidFailProvisionalNavigation(WKWebView& webView, const WebError& error) override {
    outcomes.emplace_back("failed provisionally");
    if (const auto view = view_.lock()) view->webViewDidFailProvisionalNavigation(webView, error);
  }
  std::vector<std::string> outcomes;

 private:
  std::weak_ptr<VelnorAgentView> view_;
};

class AgentViewContract : public ContractTest {
 protected:
  void makeView(PageKind kind = PageKind::plain) {
    view_ = ContractTest::makeView(kind);
    spy_ = std::make_shared<NavigationSpy>(view_);
    findWebView(*view_)->setNavigationDelegate(spy_);
  }
  void loadPage(const std::string& booking) {
    view_->loadBooking(booking);
    ASSERT_TRUE(platform_->runUntil([&] { return view_->isLoaded() && hasEvent(token(booking)); }))
        << testing::PrintToString(events_) << testing::PrintToString(spy_->outcomes);
  }
  void makeLoadedView() {
    makeView();
    ASSERT_NO_FATAL_FAILURE(loadPage("b1"));
    events_.clear();
  }
  void releaseView() {
    view_->removeFromSuperview();
    view_.reset();
  }
  /// Everything that the page posted before has arrived once this has.
  void waitForMarker() {
    platform_->pagePostsValue(*view_, tokenMessage("marker"));
    ASSERT_TRUE(waitFor(token("marker")));
  }

  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<NavigationSpy> spy_;
};

TEST_P(AgentViewContract, OnlyOwnMessagesThatAreOrHoldJsonReachTheHostInOrder) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  platform_->pagePostsText(*view_, tokenMessage("text"));
  platform_->pagePostsValue(*view_, tokenMessage("object"));
  platform_->pagePostsValue(*view_, "[" + tokenMessage("array") + "]");
  platform_->pagePostsText(*view_, "{" + tokenMessage("not JSON"));
  for (const std::string_view value : {"\"SDK_UNAUTHORIZED\"", "null", "true", "17", "{}", "{\"eventType\":3}"}) {
    platform_->pagePostsValue(*view_, value);
  }
  platform_->pageGetsMessageFromAnotherOrigin(*view_, tokenMessage("foreign"));

  const std::string nested = std::string(3000, '[') + std::string(3000, ']');
  platform_->pagePostsValue(*view_, R"({"eventType":"SDK_UNAUTHORIZED","more":)" + nested + "}");
  platform_->pagePostsText(*view_, std::string(100'000, '['));
  platform_->pagePostsValue(*view_, R"({"eventType":")" + std::string(3'000'000, 'S') + "\"}");
  platform_->pagePostsValue(*view_, R"({"eventType":"SDK_UNAUTHORIZED","more":[1e20,100000000000000000000,"\ud800"]})");
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(events_, (Texts{token("text"), token("object"), R"({"unauthorized":{}})", token("marker")}));
}

TEST_P(AgentViewContract, DidLoadIsRaisedOnceOverTwoLoads) {
  makeView();
  ASSERT_NO_FATAL_FAILURE(loadPage("b 1&x=+ü%/?#'")) << "the page gets its address as it was meant";
  ASSERT_NO_FATAL_FAILURE(loadPage("b2"));
  ASSERT_TRUE(platform_->runUntil([&] { return spy_->outcomes.size() == 2; }));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(spy_->outcomes, (Texts{"finished", "finished"}));
  EXPECT_EQ(std::ranges::count(events_, R"({"didLoad":{}})"), 1);
}

TEST_P(AgentViewContract, ALoadThatANewerOneReplacesIsNotReported) {
  makeView();
  view_->loadBooking("b1");
  ASSERT_NO_FATAL_FAILURE(loadPage("b2"));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(spy_->outcomes, Texts{"finished"});
  EXPECT_FALSE(view_->error());
}

TEST_P(AgentViewContract, NothingThatThePreviousPagePostsIsHeardOnceAnotherIsAskedFor) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  platform_->pageFloods(*view_, R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
  ASSERT_TRUE(platform_->runUntil([&] { return view_->callSessionStatus() == CallSessionStatus::running; }));
  ASSERT_NO_FATAL_FAILURE(loadPage("b2"));
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::disconnected);
}

TEST_P(AgentViewContract, LoadsThatFailAreToldAndMayBeTriedAgain) {
  for (const auto& [kind, outcome] : {std::pair(PageKind::closedPort, std::string("failed provisionally")),
                                      std::pair(PageKind::breaksOff, std::string("failed"))}) {
    makeView(kind);
    view_->loadBooking("b1");
    ASSERT_TRUE(waitFor(failure)) << outcome;
    EXPECT_EQ(view_->error()->kind, WebError::Kind::cannotLoad);
    EXPECT_FALSE(view_->isLoaded());
    view_->loadBooking("b2");
    ASSERT_TRUE(platform_->runUntil([&] { return spy_->outcomes.size() == 2; }));
    EXPECT_EQ(spy_->outcomes, Texts(2, outcome));
    EXPECT_EQ(takeEvents(), Texts(2, failure)) << "one event for each failure";
  }
  makeView(PageKind::silent);
  findWebView(*view_)->load(
      {.url = platform_->address(PageKind::silent), .timeoutInterval = std::chrono::milliseconds(50)});
  ASSERT_TRUE(waitFor(failure));
  EXPECT_EQ(spy_->outcomes, Texts{"failed provisionally"});
  EXPECT_EQ(view_->error()->kind, WebError::Kind::timedOut);
}

TEST_P(AgentViewContract, CaptureIsGrantedWhenTheAppMayAndAskedForWhenItMayNot) {
  platform_->setCaptureAuthorization(AVMediaType::video, AVAuthorizationStatus::authorized);
  platform_->setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::authorized);
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  EXPECT_TRUE(platform_->pageCaptures(*view_));
  EXPECT_EQ(events_, Texts{R"({"previewStarted":{}})"});
  EXPECT_EQ(platform_->promptCount(), 0);

  platform_->setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::notDetermined);
  for (const bool isAllowed : {false, true}) {
    platform_->setPromptAnswer(isAllowed);
    ASSERT_NO_FATAL_FAILURE(makeLoadedView());  // engines remember answers for the page
    const int before = platform_->promptCount();
    EXPECT_EQ(platform_->pageCaptures(*view_), isAllowed);
    EXPECT_EQ(platform_->promptCount(), before + 1);
    EXPECT_EQ(events_, Texts{});
  }
}

TEST_P(AgentViewContract, APageThatLosesItsProcessFailsOnceAndTheNextLoadWorks) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  platform_->pageLosesItsProcess(*view_);
  ASSERT_TRUE(waitFor(failure));
  EXPECT_EQ(view_->error()->kind, WebError::Kind::processTerminated);
  ASSERT_NO_FATAL_FAILURE(loadPage("b2"));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(events_, (Texts{failure, token("b2"), token("marker")}));
  EXPECT_EQ(spy_->outcomes, (Texts{"finished", "failed", "finished"}));
}

TEST_P(AgentViewContract, HandlersMayReleaseTheViewFromEveryOutcome) {
  const auto expectRelease = [this](auto cause) {
    const std::weak_ptr<VelnorAgentView> weak = view_;
    view_->setEventHandler([&](const AgentEvent& event) {
      if (event.is<AgentEvent::DidLoad>() || event.is<AgentEvent::Error>()) releaseView();
    });
    cause();
    EXPECT_TRUE(platform_->runUntil([&] { return weak.expired(); }));
  };
  for (const PageKind kind : {PageKind::plain, PageKind::closedPort, PageKind::breaksOff}) {
    makeView(kind);
    expectRelease([&] { view_->loadBooking("b1"); });
  }
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  expectRelease([&] { platform_->pageLosesItsProcess(*view_); });
  ASSERT_NO_FATAL_FAILURE(makeLoadedView()) << "life goes on";
}

TEST_P(AgentViewContract, AViewMayBeReleasedWhileItsPageKeepsPosting) {
  for (const bool isInsideHandler : {true, false}) {
    ASSERT_NO_FATAL_FAILURE(makeLoadedView());
    const std::weak_ptr<VelnorAgentView> weak = view_;
    int count = 0;
    view_->setEventHandler([&](const AgentEvent&) {
      if (++count == 100 && isInsideHandler) releaseView();
    });
    platform_->pageFloods(*view_, tokenMessage("flood"));
    ASSERT_TRUE(platform_->runUntil([&] { return count >= 100; }));
    if (!isInsideHandler) releaseView();
    EXPECT_TRUE(weak.expired());
    const int countAtEnd = count;
    ASSERT_NO_FATAL_FAILURE(makeLoadedView());
    EXPECT_EQ(count, countAtEnd);
    releaseView();
  }
}

TEST_P(AgentViewContract, EvaluationsCompleteOnceAlsoWhenTheViewIsReleased) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  Texts results;
  for (const std::string_view script : {"1 + 1", "2 + 2"}) {
    findWebView(*view_)->evaluateJavaScript(script,
                                            [&, script](const EvaluationResult&) { results.emplace_back(script); });
  }
  EXPECT_EQ(results, Texts{}) << "later, never inside the call";
  releaseView();
  EXPECT_TRUE(platform_->runUntil([&] { return results.size() == 2; }));
}

INSTANTIATE_TEST_SUITE_P(On, AgentViewContract, testing::ValuesIn(platforms()), nameOf);

}  // namespace
}  // namespace corvane::contract
