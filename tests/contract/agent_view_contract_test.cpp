// What host apps may rely on, whichever backend carries the framework.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "tests/contract/contract_platform.h"
#include "tests/support/print_events.h"

namespace corvane::contract {
namespace {

std::string token(std::string_view id) { return R"({"refreshSsoToken":{"responseId":")" + std::string(id) + "\"}}"; }
std::string tokenMessage(std::string_view id) {
  return R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":")" + std::string(id) + "\"}}";
}
std::string statusMessage(std::string_view status) {
  return R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_)" + std::string(status) + "\"}}";
}

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

class AgentViewContract : public testing::TestWithParam<PlatformMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
  }
  void TearDown() override { view_.reset(); }

  void makeView(PageKind kind = PageKind::plain) {
    view_ = VelnorAgentView::create(Region::custom(platform_->address(kind)), "shop 42+", true);
    view_->setFrame({{0, 0}, {390, 844}});
    view_->setEventHandler([this](const AgentEvent& event) { events_.push_back(encodeJson(event)); });
    spy_ = std::make_shared<NavigationSpy>(view_);
    findWebView(*view_)->setNavigationDelegate(spy_);
    platform_->show(view_);
  }
  void loadPage(const std::string& booking = "b1") {
    view_->loadBooking(booking);
    ASSERT_TRUE(platform_->runUntil([&] { return view_->isLoaded() && hasEvent(token(booking)); }));
  }
  void makeLoadedView() {
    makeView();
    ASSERT_NO_FATAL_FAILURE(loadPage());
    events_.clear();
  }
  bool hasEvent(const std::string& event) const { return std::ranges::count(events_, event) > 0; }
  /// Everything that the page posted before has arrived once this has.
  void waitForMarker(const std::string& name = "marker") {
    platform_->pagePostsValue(*view_, tokenMessage(name));
    ASSERT_TRUE(platform_->runUntil([&] { return hasEvent(token(name)); }));
  }

  std::unique_ptr<ContractPlatform> platform_;
  std::shared_ptr<VelnorAgentView> view_;
  std::shared_ptr<NavigationSpy> spy_;
  std::vector<std::string> events_;
};

using Events = std::vector<std::string>;

TEST_P(AgentViewContract, ThePageGetsItsAddressAsItWasMeant) {
  makeView();
  loadPage("b 1&x=+ü%/?#'");
}

TEST_P(AgentViewContract, OnlyOwnMessagesThatAreOrHoldJsonReachTheHost) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  platform_->pagePostsText(*view_, tokenMessage("text"));
  platform_->pagePostsValue(*view_, tokenMessage("object"));
  platform_->pagePostsValue(*view_, "[" + tokenMessage("array") + "]");
  platform_->pagePostsText(*view_, "{" + tokenMessage("not JSON"));
  platform_->pagePostsText(*view_,
                           "\""
                           "SDK_UNAUTHORIZED"
                           "\"");
  for (const std::string_view value : {"null", "true", "17", "{}", "{\"eventType\":3}"}) {
    platform_->pagePostsValue(*view_, value);
  }
  platform_->pageGetsMessageFromAnotherOrigin(*view_, tokenMessage("foreign"));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(events_, (Events{token("text"), token("object"), token("marker")}));
}

TEST_P(AgentViewContract, EventsComeInOrderWithTheStateUpdated) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  std::vector<std::string> log;
  view_->setEventHandler([&](const AgentEvent& event) {
    events_.push_back(encodeJson(event));
    log.push_back(std::string(rawValue(view_->callSessionStatus())).substr(20) + " " +
                  view_->clientLocale().value_or("-"));
  });
  platform_->pagePostsValue(*view_, statusMessage("CONNECTING"));
  platform_->pagePostsValue(
      *view_, R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":{"locale":"de-CH"}}}})");
  platform_->pagePostsText(*view_, statusMessage("RUNNING"));
  platform_->pagePostsValue(*view_, R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":2}})");
  platform_->pagePostsValue(*view_, statusMessage("FOWARDING"));
  platform_->pagePostsValue(*view_, statusMessage("FORWARDING"));
  platform_->pagePostsValue(*view_, statusMessage("DISCONNECTING"));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(log, (std::vector<std::string>{"CONNECTING -", "CONNECTING de-CH", "RUNNING de-CH", "RUNNING de-CH",
                                           "FOWARDING de-CH", "DISCONNECTING -", "DISCONNECTING -"}));
  view_->loadBooking("b2");
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::disconnected);
  view_->setEventHandler(nullptr);
}

TEST_P(AgentViewContract, DidLoadIsRaisedOnceOverTwoLoads) {
  makeView();
  ASSERT_NO_FATAL_FAILURE(loadPage("b1"));
  ASSERT_NO_FATAL_FAILURE(loadPage("b2"));
  ASSERT_TRUE(platform_->runUntil([&] { return spy_->outcomes.size() == 2; }));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(spy_->outcomes, (std::vector<std::string>{"finished", "finished"}));
  EXPECT_EQ(std::ranges::count(events_, R"({"didLoad":{}})"), 1);
}

TEST_P(AgentViewContract, ALoadThatANewerOneReplacesIsNotReported) {
  makeView();
  view_->loadBooking("b1");
  view_->loadBooking("b2");
  ASSERT_TRUE(platform_->runUntil([&] { return view_->isLoaded() && hasEvent(token("b2")); }))
      << testing::PrintToString(events_) << testing::PrintToString(spy_->outcomes);
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(spy_->outcomes, (std::vector<std::string>{"finished"}));
  EXPECT_FALSE(view_->error());
}

TEST_P(AgentViewContract, LoadsThatFailAreToldAndMayBeTriedAgain) {
  struct Row {
    PageKind kind;
    std::string outcome;
  };
  for (const Row& row : {Row{PageKind::closedPort, "failed provisionally"}, Row{PageKind::breaksOff, "failed"}}) {
    events_.clear();
    makeView(row.kind);
    view_->loadBooking("b1");
    EXPECT_FALSE(view_->error());
    ASSERT_TRUE(platform_->runUntil([&] { return hasEvent(R"({"error":{}})"); })) << row.outcome;
    EXPECT_EQ(spy_->outcomes, (std::vector<std::string>{row.outcome}));
    ASSERT_TRUE(view_->error());
    EXPECT_EQ(view_->error()->kind, WebError::Kind::cannotLoad);
    EXPECT_FALSE(view_->isLoaded());
    view_->loadBooking("b2");
    EXPECT_FALSE(view_->error()) << "cleared before the next try";
    ASSERT_TRUE(platform_->runUntil([&] { return spy_->outcomes.size() == 2; }));
    EXPECT_EQ(events_, (Events{R"({"error":{}})", R"({"error":{}})"})) << "one event for each failure";
  }
}

TEST_P(AgentViewContract, AServerThatSaysNothingIsGivenUpAfterTheRequestsTime) {
  makeView(PageKind::silent);
  findWebView(*view_)->load(
      {.url = platform_->address(PageKind::silent), .timeoutInterval = std::chrono::milliseconds(50)});
  ASSERT_TRUE(platform_->runUntil([&] { return !events_.empty(); }));
  EXPECT_EQ(spy_->outcomes, (std::vector<std::string>{"failed provisionally"}));
  EXPECT_EQ(view_->error()->kind, WebError::Kind::timedOut);
}

TEST_P(AgentViewContract, CaptureIsGrantedWhenTheAppMayAndAskedForWhenItMayNot) {
  platform_->setCaptureAuthorization(AVMediaType::video, AVAuthorizationStatus::authorized);
  platform_->setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::authorized);
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  EXPECT_TRUE(platform_->pageCaptures(*view_));
  EXPECT_EQ(events_, Events{R"({"previewStarted":{}})"});
  EXPECT_EQ(platform_->promptCount(), 0);

  platform_->setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::notDetermined);
  for (const bool isAllowed : {false, true}) {
    platform_->setPromptAnswer(isAllowed);
    ASSERT_NO_FATAL_FAILURE(makeLoadedView());  // engines remember answers for the page
    const int before = platform_->promptCount();
    EXPECT_EQ(platform_->pageCaptures(*view_), isAllowed);
    EXPECT_EQ(platform_->promptCount(), before + 1);
    EXPECT_EQ(events_, Events{});
  }
}

TEST_P(AgentViewContract, APageThatLosesItsProcessFailsOnceAndTheNextLoadWorks) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  platform_->pageLosesItsProcess(*view_);
  ASSERT_TRUE(platform_->runUntil([&] { return !events_.empty(); }));
  EXPECT_EQ(view_->error()->kind, WebError::Kind::processTerminated);
  ASSERT_NO_FATAL_FAILURE(loadPage("b2"));
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(events_, (Events{R"({"error":{}})", token("b2"), token("marker")}));
  EXPECT_EQ(spy_->outcomes, (std::vector<std::string>{"finished", "failed", "finished"}));
}

TEST_P(AgentViewContract, AViewMayBeReleasedWhenItsPageLosesItsProcess) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  const std::weak_ptr<VelnorAgentView> weak = view_;
  view_->setEventHandler([&](const AgentEvent&) {
    view_->removeFromSuperview();
    view_.reset();
  });
  platform_->pageLosesItsProcess(*view_);
  EXPECT_TRUE(platform_->runUntil([&] { return weak.expired(); }));
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
}

TEST_P(AgentViewContract, AViewMayBeReleasedWhileItsPageKeepsPosting) {
  for (const bool isInsideHandler : {true, false}) {
    ASSERT_NO_FATAL_FAILURE(makeLoadedView());
    const std::weak_ptr<VelnorAgentView> weak = view_;
    int count = 0;
    view_->setEventHandler([&](const AgentEvent&) {
      ++count;
      if (isInsideHandler && count == 100) {
        view_->removeFromSuperview();
        view_.reset();
      }
    });
    platform_->pageFloods(*view_, tokenMessage("flood"));
    ASSERT_TRUE(platform_->runUntil([&] { return count >= 100; }));
    if (!isInsideHandler) {
      view_->removeFromSuperview();
      view_.reset();
    }
    EXPECT_TRUE(weak.expired());
    const int countAtEnd = count;
    ASSERT_NO_FATAL_FAILURE(makeLoadedView()) << "life goes on";
    EXPECT_EQ(count, countAtEnd);
    view_->removeFromSuperview();
  }
}

TEST_P(AgentViewContract, HandlersMayReleaseTheViewFromEveryOutcome) {
  for (const PageKind kind : {PageKind::plain, PageKind::closedPort, PageKind::breaksOff}) {
    makeView(kind);
    const std::weak_ptr<VelnorAgentView> weak = view_;
    view_->setEventHandler([&](const AgentEvent& event) {
      if (!event.is<AgentEvent::DidLoad>() && !event.is<AgentEvent::Error>()) return;
      view_->removeFromSuperview();
      view_.reset();
    });
    view_->loadBooking("b1");
    ASSERT_TRUE(platform_->runUntil([&] { return weak.expired(); })) << static_cast<int>(kind);
  }
}

TEST_P(AgentViewContract, AbsurdMessagesAreDroppedAndDoNoHarm) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  const std::string nested = std::string(3000, '[') + std::string(3000, ']');
  platform_->pagePostsValue(*view_, R"({"eventType":"SDK_UNAUTHORIZED","more":)" + nested + "}");
  platform_->pagePostsText(*view_, std::string(100'000, '['));
  platform_->pagePostsValue(*view_, R"({"eventType":")" + std::string(3'000'000, 'S') + "\"}");
  platform_->pagePostsValue(*view_, R"({"eventType":"SDK_UNAUTHORIZED","more":[1e20,100000000000000000000,"\ud800"]})");
  ASSERT_NO_FATAL_FAILURE(waitForMarker());
  EXPECT_EQ(events_, (Events{R"({"unauthorized":{}})", token("marker")}));
}

TEST_P(AgentViewContract, EvaluationsCompleteOnceAlsoWhenTheViewIsReleased) {
  ASSERT_NO_FATAL_FAILURE(makeLoadedView());
  int completions = 0;
  findWebView(*view_)->evaluateJavaScript("1 + 1", [&](const EvaluationResult&) { ++completions; });
  EXPECT_EQ(completions, 0) << "later, never inside the call";
  findWebView(*view_)->evaluateJavaScript("2 + 2", [&](const EvaluationResult&) { ++completions; });
  view_->removeFromSuperview();
  view_.reset();
  EXPECT_TRUE(platform_->runUntil([&] { return completions == 2; }));
}

INSTANTIATE_TEST_SUITE_P(On, AgentViewContract, testing::ValuesIn(platforms()),
                         [](const auto& parameter) { return parameter.param.name; });

}  // namespace
}  // namespace corvane::contract
