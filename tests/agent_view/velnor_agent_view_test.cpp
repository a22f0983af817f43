#include "corvane/agent_view/velnor_agent_view.h"

#include "corvane/agent_view/agent_view_parts.h"
#include "corvane/agent_view/script_bridge.h"
#include "tests/support/headless_test.h"

namespace corvane {
namespace {

using Engine = headless::HeadlessWebEngine;
using Log = std::vector<std::string>;

class VelnorAgentViewTest : public HeadlessTest {
 protected:
  VelnorAgentViewTest() {
    parts().setInternalEventHandler(
        [this](const AgentEvent& event) { log_.push_back("internal " + encodeJson(event)); });
    view_->setEventHandler([this](const AgentEvent& event) { log_.push_back("host " + encodeJson(event)); });
  }

  AgentViewAccess::Parts& parts() { return AgentViewAccess::parts(*view_); }
  /// A running call with a customer, a cart and a failure.
  void makeBusy() {
    post(*view_, callIsRunning);
    post(*view_, R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":{"locale":"de"}}}})");
    post(*view_, R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":1}})");
    engine().failLoad({.description = "gone"});
    takeLog();
  }
  void setCaptureAuthorization(AVAuthorizationStatus video, AVAuthorizationStatus audio) {
    backend().setCaptureAuthorization(AVMediaType::video, video);
    backend().setCaptureAuthorization(AVMediaType::audio, audio);
  }
  Engine& engine() { return *Engine::of(*view_); }

  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::custom("http://h/p"), "o1", false);
};

TEST_F(VelnorAgentViewTest, ConstructionInstallsTheBridgeInOrderAndLoadsNothing) {
  const std::vector<Engine::Record> expected{
      Engine::ScriptInstalled{{messageForwarderScript(), WKUserScriptInjectionTime::atDocumentEnd, false}},
      Engine::ChannelInstalled{"agentEventHandler"},
      Engine::ScriptInstalled{{actionPosterScript(), WKUserScriptInjectionTime::atDocumentEnd, false}},
      Engine::ScrollSet{false},
  };
  EXPECT_TRUE(std::ranges::equal(engine().records(), expected));
  const auto& webView = *parts().webView;
  EXPECT_TRUE(webView.configuration().allowsInlineMediaPlayback);
  EXPECT_EQ(webView.contentInsetAdjustmentBehavior(), UIScrollViewContentInsetAdjustmentBehavior::never);
  EXPECT_EQ(view_->frame(), CGRect{});
  view_->setFrame({{0, 0}, {390, 844}});
  EXPECT_EQ(webView.frame(), (CGRect{{0, 0}, {390, 844}})) << "the page fills the view";
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::disconnected);
  EXPECT_FALSE(view_->isLoaded() || view_->connectId() || view_->error() || view_->clientLocale());
}

TEST_F(VelnorAgentViewTest, LoadingABookingResetsErrorAndStatusBeforeTheLoadAndNothingElse) {
  makeBusy();
  std::string seen;
  engine().setLoadObserver([&](const URLRequest&) {
    seen = std::string(rawValue(view_->callSessionStatus())) + (view_->error() ? " error" : "");
  });
  view_->loadBooking("b2");
  EXPECT_EQ(seen, "CALL_SESSION_STATUS_DISCONNECTED");
  EXPECT_EQ(view_->connectId(), "b2");
  EXPECT_EQ(view_->clientLocale(), "de");
  EXPECT_EQ(parts().callState.cart.size(), 1U);
  EXPECT_TRUE(takeLog().empty());
  const auto loads = engine().recordsOf<Engine::LoadRequested>();
  ASSERT_EQ(loads.size(), 1U);
  EXPECT_EQ(loads[0].request, (URLRequest{.url = "http://h/p?orgId=o1&isNativeSDK=true&connectId=b2&ssoLogin=false",
                                          .cachePolicy = URLRequestCachePolicy::useProtocolCachePolicy,
                                          .timeoutInterval = std::chrono::seconds(60)}));
}

TEST_F(VelnorAgentViewTest, WhereNoAddressCanBeMadeOnlyTheBookingChanges) {
  makeBusy();
  parts().callUrl = "http://h/earlier";
  view_->loadBooking("\xff");
  EXPECT_EQ(view_->connectId(), "\xff");
  EXPECT_EQ(parts().callUrl, std::nullopt);
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::running);
  EXPECT_EQ(view_->error()->description, "gone");
  EXPECT_TRUE(engine().recordsOf<Engine::LoadRequested>().empty());
  EXPECT_TRUE(takeLog().empty());

  view_ = VelnorAgentView::create(Region::custom("not a url"), "o1", false);
  view_->loadBooking("b1");
  EXPECT_TRUE(engine().recordsOf<Engine::LoadRequested>().empty());
}

TEST_F(VelnorAgentViewTest, OutcomesAreStoredBeforeTheyAreTold) {
  const auto note = [this](const AgentEvent& event) {
    log_.push_back(encodeJson(event) + (view_->isLoaded() ? " loaded " : " - ") +
                   (view_->error() ? view_->error()->description : "-"));
  };
  parts().setInternalEventHandler(nullptr);
  view_->setEventHandler(note);
  makeBusy();
  view_->loadBooking("b1");
  engine().failProvisionalLoad({.kind = WebError::Kind::timedOut, .description = "slow"});
  engine().finishLoad();
  engine().finishLoad();
  engine().failLoad({.description = "broken"});
  view_->loadBooking("b2");
  engine().finishLoad();
  EXPECT_EQ(takeLog(),
            (Log{R"({"error":{}} - slow)", R"({"didLoad":{}} loaded slow)", R"({"error":{}} loaded broken)"}));
  post(*view_, callIsRunning);
  engine().terminateProcess();
  EXPECT_EQ(view_->error()->kind, WebError::Kind::processTerminated);
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::running) << "a failure says nothing about the call";
  EXPECT_EQ(parts().callState.cart.size(), 1U);
}

TEST_F(VelnorAgentViewTest, HandlersSeeTheNewStateInOrderAndAreReadWhenTheyAreCalled) {
  parts().setInternalEventHandler([this](const AgentEvent&) {
    log_.emplace_back("internal " + std::string(rawValue(view_->callSessionStatus())));
    view_->setEventHandler([this](const AgentEvent&) { log_.emplace_back("replaced"); });
  });
  post(*view_, callIsRunning);
  EXPECT_EQ(takeLog(), (Log{"internal CALL_SESSION_STATUS_RUNNING", "replaced"}));

  parts().setInternalEventHandler(nullptr);
  view_->setEventHandler([this, big = std::string(100, 'x')](const AgentEvent&) {
    view_->setEventHandler(nullptr);
    log_.push_back(big.substr(0, 1));
  });
  post(*view_, callIsRunning);
  EXPECT_EQ(takeLog(), Log{"x"}) << "a handler may remove itself";
  EXPECT_FALSE(view_->eventHandler());
  post(*view_, R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_PAUSED"}})");
  EXPECT_EQ(view_->callSessionStatus(), CallSessionStatus::paused) << "the state follows without any handler";
}

TEST_F(VelnorAgentViewTest, TheHostHearsOfCaptureAndOfItsPagesProcess) {
  view_->setCaptureHandler([this] {
    log_.push_back("camera " + std::to_string(static_cast<int>(view_->captureState(AVMediaType::video))));
  });
  view_->setCaptureMuted(AVMediaType::video, true);
  engine().setCapture(AVMediaType::video, CaptureState::active);
  view_->setCaptureMuted(AVMediaType::video, true);
  EXPECT_EQ(takeLog(), (Log{"camera 1", "camera 2"}));

  view_->setEventHandler(nullptr);
  parts().setInternalEventHandler(nullptr);
  view_->setPageIncidentHandler(
      [this](PageIncident incident) { log_.push_back(std::to_string(static_cast<int>(incident))); });
  view_->loadBooking("b1");
  engine().setResponding(false);
  engine().setResponding(true);
  engine().terminateProcess();
  loop().runUntilIdle();
  EXPECT_EQ(takeLog(), (Log{"0", "1", "2"}));
  view_->setReloadsLostPage(true);
  for (int minute = 0; minute < 2; ++minute) {
    engine().terminateProcess();
    engine().terminateProcess();
    loop().advance(std::chrono::minutes(1));
  }
  EXPECT_EQ(takeLog(), (Log{"2", "2", "3", "2", "2", "3"})) << "once a minute";
  EXPECT_EQ(engine().recordsOf<Engine::LoadRequested>().size(), 3U);
  view_->setEventHandler([this](const AgentEvent&) { view_->loadBooking("b2"); });
  engine().terminateProcess();
  loop().runUntilIdle();
  EXPECT_EQ(engine().recordsOf<Engine::LoadRequested>().size(), 4U) << "the host has loaded something itself";
}

TEST_F(VelnorAgentViewTest, NothingOfTheWebViewKeepsTheViewAlive) {
  const auto webView = parts().webView;
  view_.reset();
  Engine::of(*webView)->postMessage(agentEventChannel, callIsRunning);
  Engine::of(*webView)->finishLoad();
  EXPECT_EQ(takeLog(), Log{});
}

TEST_F(VelnorAgentViewTest, CaptureNeedsBothAuthorisationsWhateverIsAskedFor) {
  using enum AVAuthorizationStatus;
  const Log told{R"(internal {"previewStarted":{}})", R"(host {"previewStarted":{}})"};
  for (const auto video : {authorized, notDetermined, denied, restricted}) {
    for (const auto audio : {authorized, notDetermined, denied, restricted}) {
      const bool isGranted = video == authorized && audio == authorized;
      setCaptureAuthorization(video, audio);
      for (const auto type : {WKMediaCaptureType::camera, WKMediaCaptureType::microphone}) {
        engine().requestCapture(type, [&](WKPermissionDecision decision) {
          EXPECT_EQ(decision, isGranted ? WKPermissionDecision::grant : WKPermissionDecision::prompt);
          EXPECT_TRUE(log_.empty()) << "the answer comes first";
        });
        EXPECT_EQ(takeLog(), isGranted ? told : Log{});
      }
    }
  }
}

}  // namespace
}  // namespace corvane
