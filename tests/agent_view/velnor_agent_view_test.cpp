#include "corvane/agent_view/velnor_agent_view.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/minimized/minimized_store.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using headless::HeadlessWebEngine;
using Engine = HeadlessWebEngine;

constexpr std::string_view runningMessage =
    R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})";

class VelnorAgentViewTest : public HeadlessTest {
 protected:
  VelnorAgentViewTest() {
    AgentViewAccess::parts(*view_).setInternalEventHandler([this](const AgentEvent& event) {
      log_.push_back("internal " + encodeJson(event));
    });
    view_->setEventHandler([this](const AgentEvent& event) { log_.push_back("host " + encodeJson(event)); });
  }

  HeadlessWebEngine& engine() { return *HeadlessWebEngine::of(*view_); }
  std::vector<std::string> takeLog() { return std::exchange(log_, {}); }
  static std::vector<std::string> both(const std::string& event) { return {"internal " + event, "host " + event}; }

  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::custom("http://h/p"), "o1", false);
  std::vector<std::string> log_;
};

TEST_F(VelnorAgentViewTest, ConstructionInstallsTheBridgeInOrderAndLoadsNothing) {
  const std::vector<Engine::Record> expected{
      Engine::ScriptInstalled{{messageForwarderScript(), WKUserScriptInjectionTime::atDocumentEnd, false}},
      Engine::ChannelInstalled{"agentEventHandler"},
      Engine::ScriptInstalled{{actionPosterScript(), WKUserScriptInjectionTime::atDocumentEnd, false}},
      Engine::ScrollSet{false},
  };
  EXPECT_TRUE(std::ranges::equal(engine().records(), expected));
  const auto& webView = *AgentViewAccess::parts(*view_).webView;
  EXPECT_TRUE(webView.configuration().allowsInlineMediaPlayback);
  EXPECT_EQ(webView.contentInsetAdjustmentBehavior(), UIScrollViewContentInsetAdjustmentBehavior::never);
  EXPECT_EQ(view_->frame(), CGRect{});
  view_->setFrame({{0, 0}, {390, 844}});
  EXPECT_EQ(webView.frame(), (CGRect{{0, 0}, {390, 844}})) << "the page fills the view";
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::disconnected);
  EXPECT_FALSE(view_->isLoaded() || view_->connectId() || view_->error() || view_->clientLocale());
}

TEST_F(VelnorAgentViewTest, LoadingABookingStartsAFreshCall) {
  engine().postMessage(agentEventChannel, runningMessage);
  engine().failLoad({.description = "gone"});
  takeLog();
  view_->loadBooking("b2");
  EXPECT_EQ(view_->connectId(), "b2");
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::disconnected);
  EXPECT_FALSE(view_->error());
  EXPECT_TRUE(takeLog().empty());
  const auto loads = engine().recordsOf<Engine::LoadRequested>();
  ASSERT_EQ(loads.size(), 1U);
  EXPECT_EQ(loads[0].request, (URLRequest{.url = "http://h/p?orgId=o1&isNativeSDK=true&connectId=b2&ssoLogin=false",
                                          .cachePolicy = URLRequestCachePolicy::useProtocolCachePolicy,
                                          .timeoutInterval = std::chrono::seconds(60)}));
}

TEST_F(VelnorAgentViewTest, ABaseAddressThatIsNoneChangesNothingButTheBooking) {
  view_ = VelnorAgentView::create(Region::custom("not a url"), "o1", false);
  view_->setEventHandler([this](const AgentEvent& event) { log_.push_back(encodeJson(event)); });
  engine().postMessage(agentEventChannel, runningMessage);
  engine().failLoad({.description = "gone"});
  takeLog();
  view_->loadBooking("b2");
  EXPECT_EQ(view_->connectId(), "b2");
  EXPECT_EQ(AgentViewAccess::parts(*view_).callUrl, std::nullopt);
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::running);
  EXPECT_EQ(view_->error()->description, "gone");
  EXPECT_TRUE(engine().recordsOf<Engine::LoadRequested>().empty());
  EXPECT_TRUE(takeLog().empty());
}

TEST_F(VelnorAgentViewTest, DidLoadIsRaisedOnceAndFailuresEachTime) {
  view_->loadBooking("b1");
  engine().failProvisionalLoad({.kind = WebError::Kind::timedOut, .description = "slow"});
  EXPECT_EQ(takeLog(), both(R"({"error":{}})"));
  EXPECT_EQ(view_->error(), (WebError{.kind = WebError::Kind::timedOut, .description = "slow"}));
  EXPECT_FALSE(view_->isLoaded());

  view_->loadBooking("b1");
  engine().finishLoad();
  EXPECT_TRUE(view_->isLoaded());
  EXPECT_EQ(takeLog(), both(R"({"didLoad":{}})"));
  view_->loadBooking("b2");
  engine().finishLoad();
  EXPECT_TRUE(takeLog().empty());
  engine().postMessage(agentEventChannel, runningMessage);
  takeLog();
  engine().terminateProcess();
  EXPECT_EQ(takeLog(), both(R"({"error":{}})"));
  EXPECT_EQ(view_->error()->kind, WebError::Kind::processTerminated);
  EXPECT_TRUE(view_->isLoaded());
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::running) << "a failure says nothing about the call";
}

TEST_F(VelnorAgentViewTest, HandlersSeeTheNewStateInOrderAndAreReadWhenTheyAreCalled) {
  AgentViewAccess::parts(*view_).setInternalEventHandler([this](const AgentEvent&) {
    log_.emplace_back("internal " + std::string(rawValue(view_->callSessionStatus())));
    view_->setEventHandler([this](const AgentEvent&) { log_.emplace_back("replaced"); });
  });
  engine().postMessage(agentEventChannel, runningMessage);
  EXPECT_EQ(takeLog(), (std::vector<std::string>{"internal CALL_SESSION_STATUS_RUNNING", "replaced"}));

  AgentViewAccess::parts(*view_).setInternalEventHandler(nullptr);
  view_->setEventHandler([this, big = std::string(100, 'x')](const AgentEvent&) {
    view_->setEventHandler(nullptr);
    log_.push_back(big.substr(0, 1));
  });
  engine().postMessage(agentEventChannel, runningMessage);
  EXPECT_EQ(takeLog(), std::vector<std::string>{"x"}) << "a handler may remove itself";
  EXPECT_FALSE(view_->eventHandler());
  engine().postMessage(agentEventChannel, R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_PAUSED"}})");
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::paused) << "the state follows without any handler";
}

TEST_F(VelnorAgentViewTest, AHandlerMayDropTheViewAndTheOtherStillGetsTheEvent) {
  const std::weak_ptr<VelnorAgentView> weak = view_;
  AgentViewAccess::parts(*view_).setInternalEventHandler([this](const AgentEvent&) { view_.reset(); });
  const auto drop = [&](auto event) {
    event();
    EXPECT_TRUE(weak.expired());
    EXPECT_EQ(takeLog().size(), 1U);
  };
  drop([&] { engine().postMessage(agentEventChannel, runningMessage); });
}

TEST_F(VelnorAgentViewTest, AHandlerMayDropTheViewFromLoadAndCaptureOutcomes) {
  for (int outcome = 0; outcome < 4; ++outcome) {
    view_ = VelnorAgentView::create(Region::eu(), "o", false);
    const std::weak_ptr<VelnorAgentView> weak = view_;
    view_->setEventHandler([this](const AgentEvent&) { view_.reset(); });
    backend().setCaptureAuthorization(AVMediaType::video, AVAuthorizationStatus::authorized);
    backend().setCaptureAuthorization(AVMediaType::audio, AVAuthorizationStatus::authorized);
    if (outcome == 0) engine().finishLoad();
    if (outcome == 1) engine().failLoad({});
    if (outcome == 2) engine().failProvisionalLoad({});
    if (outcome == 3) engine().requestCapture(WKMediaCaptureType::microphone, [](WKPermissionDecision) {});
    EXPECT_TRUE(weak.expired()) << outcome;
  }
}

TEST_F(VelnorAgentViewTest, NothingOfTheWebViewKeepsTheViewAlive) {
  const auto webView = AgentViewAccess::parts(*view_).webView;
  auto& orphan = *HeadlessWebEngine::of(*webView);
  const std::weak_ptr<VelnorAgentView> weak = view_;
  view_.reset();
  EXPECT_TRUE(weak.expired());
  orphan.postMessage(agentEventChannel, runningMessage);
  orphan.finishLoad();
  EXPECT_TRUE(takeLog().empty());
}

TEST_F(VelnorAgentViewTest, CaptureNeedsBothAuthorisationsWhateverIsAskedFor) {
  struct Row {
    AVAuthorizationStatus video;
    AVAuthorizationStatus audio;
    WKPermissionDecision expected;
  };
  using enum AVAuthorizationStatus;
  for (const Row& row : {Row{authorized, authorized, WKPermissionDecision::grant},
                         Row{authorized, notDetermined, WKPermissionDecision::prompt},
                         Row{denied, authorized, WKPermissionDecision::prompt},
                         Row{restricted, restricted, WKPermissionDecision::prompt}}) {
    for (const auto type : {WKMediaCaptureType::camera, WKMediaCaptureType::microphone}) {
      backend().setCaptureAuthorization(AVMediaType::video, row.video);
      backend().setCaptureAuthorization(AVMediaType::audio, row.audio);
      engine().requestCapture(type, [&](WKPermissionDecision decision) {
        EXPECT_EQ(decision, row.expected);
        log_.emplace_back("decided");
      });
      const bool isGranted = row.expected == WKPermissionDecision::grant;
      EXPECT_EQ(takeLog(), isGranted ? (std::vector<std::string>{"decided", R"(internal {"previewStarted":{}})",
                                                                 R"(host {"previewStarted":{}})"})
                                     : std::vector<std::string>{"decided"});
    }
  }
}

TEST_F(VelnorAgentViewTest, ConstructingAViewLetsGoOfAHeldOne) {
  MinimizedStore::shared().setAgentView(view_);
  const auto second = VelnorAgentView::create(Region::eu(), "o", false);
  EXPECT_EQ(MinimizedStore::shared().agentView(), nullptr);
}

TEST_F(VelnorAgentViewTest, AMinimizeRequestThatCannotBeMetRaisesNothing) {
  engine().postMessage(agentEventChannel, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
  EXPECT_TRUE(takeLog().empty());
}

}  // namespace
}  // namespace corvane
