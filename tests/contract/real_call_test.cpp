// Two pages that see and hear each other, where the engine can do that. Nothing is made up but the devices.
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/web/engine_capabilities.h"
#include "corvane/platform/web/wk_web_view.h"
#include "tests/contract/real_engine_platform.h"

namespace corvane::contract {
namespace {

/// One side of a call. What it has to tell the other is in `call.words` once it is complete.
constexpr std::string_view callScript = R"((() => {
  const call = (window.call = { words: "", frames: 0, state: "" });
  const video = document.createElement("video");
  Object.assign(video, { autoplay: true, playsInline: true });
  video.style.cssText = "position: fixed; inset: 0; width: 100%; height: 100%; object-fit: fill";
  document.body.append(video);
  const peer = (call.peer = new RTCPeerConnection());
  peer.ontrack = (event) => { video.srcObject = event.streams[0]; };
  peer.onicegatheringstatechange = () => {
    if (peer.iceGatheringState === "complete") call.words = JSON.stringify(peer.localDescription);
  };
  setInterval(async () => {
    call.state = peer.connectionState;
    const reports = [...(await peer.getStats()).values()];
    call.frames = reports.find((report) => report.kind === "video" && report.framesDecoded)?.framesDecoded ?? 0;
    call.sounds = reports.find((report) => report.kind === "audio" && report.packetsReceived)?.packetsReceived ?? 0;
  }, 100);
  const capture = async () => {
    call.stream = await navigator.mediaDevices.getUserMedia({ video: true, audio: true });
    for (const track of call.stream.getTracks()) peer.addTrack(track, call.stream);
  };
  call.offer = async () => { await capture(); await peer.setLocalDescription(); };
  call.hear = async (words) => {
    await peer.setRemoteDescription(words);
    if (words.type !== "offer") return;
    await capture();
    await peer.setLocalDescription();
  };
  call.end = () => { for (const track of call.stream.getTracks()) track.stop(); peer.close(); };
})())";

class RealCall : public testing::TestWithParam<RealEngineMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
    platform_->setPromptAnswer(true);
    bool canHoldCalls = false;
    bool isKnown = false;
    WebEngineFactory::current().queryCapabilities([&](const EngineCapabilities& found) {
      isKnown = true;
      canHoldCalls = found.hasPeerConnections;
    });
    ASSERT_TRUE(platform_->runUntil([&] { return isKnown; }));
    if (!canHoldCalls) GTEST_SKIP() << "the engine has no peer connections";
    for (const auto& side : {agent_, customer_}) platform_->show(side);
  }

  void loadPage(const std::shared_ptr<UIView>& side, const std::string& address) {
    const auto page = WKWebView::create(side->bounds(), {});
    side->addSubview(page);
    page->load({.url = address});
  }

  bool holds(const std::shared_ptr<UIView>& side, std::string_view condition) {
    const auto value = platform_->evaluate(*side, condition);
    return value && value->boolean().value_or(false);
  }
  bool waitFor(const std::shared_ptr<UIView>& side, std::string_view condition) {
    return platform_->runUntil([&] { return holds(side, condition); });
  }
  /// Whether a number of a side grows from now on.
  bool grows(const std::shared_ptr<UIView>& side, const std::string& number) {
    const auto now = platform_->evaluate(*side, number);
    return now && waitFor(side, number + " > " + std::to_string(now->integer().value_or(0)) + " + 3");
  }
  void carryWords(const std::shared_ptr<UIView>& from, const std::shared_ptr<UIView>& to) {
    ASSERT_TRUE(waitFor(from, "call.words !== ''"));
    const std::string words(platform_->evaluate(*from, "call.words")->string().value_or(""));
    ASSERT_TRUE(platform_->evaluate(*to, "void call.hear(" + words + ")"));
  }
  /// The colours of what is shown of a call.
  std::vector<Colour> look(const CGRect& area) {
    const auto colourAt = platform_->takePicture();
    std::vector<Colour> colours;
    for (int step = 0; step < 400; ++step) {
      const int row = step / 20;
      const CGFloat right = area.minX() + area.size.width * (step % 20 + 0.5) / 20;
      const CGFloat down = area.minY() + area.size.height * (row + 0.5) / 20;
      colours.push_back(colourAt(static_cast<int>(right), static_cast<int>(down)));
    }
    return colours;
  }
  bool isMoving(const CGRect& area) {
    const auto before = look(area);
    return platform_->runUntil([&] { return look(area) != before; });
  }

  std::unique_ptr<RealEnginePlatform> platform_;
  std::shared_ptr<UIView> agent_ = UIView::create({{0, 0}, {390, 422}});
  std::shared_ptr<UIView> customer_ = UIView::create({{0, 422}, {390, 422}});
};

TEST_P(RealCall, TwoPagesSeeEachOtherAtFullSizeFloatingAndHidden) {
  for (const auto& side : {agent_, customer_}) {
    loadPage(side, platform_->page("plain.html"));
    ASSERT_TRUE(waitFor(side, "typeof post === 'function' && document.readyState === 'complete'"));
    ASSERT_TRUE(platform_->evaluate(*side, callScript));
  }
  ASSERT_TRUE(platform_->evaluate(*agent_, "void call.offer()"));
  ASSERT_NO_FATAL_FAILURE(carryWords(agent_, customer_));
  ASSERT_NO_FATAL_FAILURE(carryWords(customer_, agent_));
  for (const auto& side : {agent_, customer_}) {
    ASSERT_TRUE(waitFor(side, "call.state === 'connected'"));
    EXPECT_TRUE(grows(side, "call.frames"));
    EXPECT_TRUE(grows(side, "call.sounds"));
    EXPECT_TRUE(isMoving(side->frame()));
  }
  agent_->setTransform(CGAffineTransform::makeScale(0.33, 0.33));
  EXPECT_TRUE(isMoving(agent_->frame()));
  EXPECT_TRUE(holds(agent_, "innerWidth === 390"));
  agent_->setHidden(true);
  EXPECT_TRUE(grows(agent_, "call.frames"));
  EXPECT_TRUE(grows(customer_, "call.frames"));

  ASSERT_TRUE(platform_->evaluate(*agent_, "call.end()"));
  EXPECT_TRUE(holds(agent_, "call.stream.getTracks().every((track) => track.readyState === 'ended')"));
  EXPECT_TRUE(waitFor(customer_, "call.state !== 'connected'"));
}

/// Counts the frames that come from the other side, in `frames`.
constexpr std::string_view watchScript = R"((() => {
  window.frames_ = 0;
  setInterval(async () => {
    const connection = (window.agentTool ?? window.customer).connection();
    for (const report of connection ? (await connection.getStats()).values() : [])
      if (report.kind === "video" && report.framesDecoded) window.frames_ = report.framesDecoded;
  }, 100);
})())";

TEST_P(RealCall, ThePagesOfTheDemoTalkAboutTheShopUntilOneHangsUp) {
  const auto view = VelnorAgentView::create(Region::custom(platform_->demoPage("agent_tool/index.html#call-now")),
                                            "shop", /*enableSSO=*/false);
  std::vector<std::string> events;
  view->setEventHandler([&](const AgentEvent& event) { events.push_back(encodeJson(event)); });
  const auto waitForEvent = [&](std::string_view event) {
    return platform_->runUntil([&] { return std::ranges::count(events, event) > 0; });
  };
  view->setFrame(agent_->bounds());
  agent_->addSubview(view);
  view->loadBooking("b 1");
  loadPage(customer_, platform_->demoPage("customer/index.html?booking=b%201&locale=fr-CH#auto"));
  ASSERT_TRUE(waitForEvent(R"({"clientLocale":{"locale":"fr-CH"}})")) << testing::PrintToString(events);
  ASSERT_TRUE(platform_->runUntil([&] { return view->callSessionStatus() == CallSessionStatus::running; }));
  for (const auto& side : {agent_, customer_}) {
    ASSERT_TRUE(platform_->evaluate(*side, watchScript));
    EXPECT_TRUE(grows(side, "frames_"));
  }
  EXPECT_EQ(view->captureState(AVMediaType::video), CaptureState::active);

  view->addProductToCart("SCARF-MERINO-GREY", [](const auto&) {});
  ASSERT_TRUE(
      waitFor(customer_, "document.querySelector('#cart [data-wish=add][data-sku=SCARF-MERINO-GREY]') !== null"));
  ASSERT_TRUE(platform_->evaluate(*customer_, "document.querySelector('#cart [data-wish=add]').click()"));
  EXPECT_TRUE(waitForEvent(R"({"productUpdateInCart":{"data":{"sku":"SCARF-MERINO-GREY","quantity":2}}})"))
      << testing::PrintToString(events);

  // The customer goes and comes back.
  ASSERT_TRUE(platform_->evaluate(*customer_, "document.querySelector('#leave').click()"));
  ASSERT_TRUE(
      platform_->runUntil([&] { return view->callSessionStatus() == CallSessionStatus::waitingButLostRemote; }));
  ASSERT_TRUE(platform_->evaluate(*customer_, "document.querySelector('#join').click()"));
  ASSERT_TRUE(platform_->runUntil([&] { return view->callSessionStatus() == CallSessionStatus::running; }));
  ASSERT_TRUE(waitFor(customer_, "customer.state() === 'connected'"));
  EXPECT_TRUE(waitFor(customer_, "document.querySelector('#cart .quantity')?.textContent === '2'"));

  ASSERT_TRUE(platform_->evaluate(*agent_, "document.querySelector('[data-action=endCall]').click()"));
  ASSERT_TRUE(platform_->runUntil([&] { return view->callSessionStatus() == CallSessionStatus::disconnected; }));
  EXPECT_TRUE(waitFor(customer_, "customer.state() === 'ended' && customer.connection() === null"));
  EXPECT_TRUE(platform_->runUntil([&] { return view->captureState(AVMediaType::video) == CaptureState::none; }));
  view->removeFromSuperview();
}

INSTANTIATE_TEST_SUITE_P(, RealCall, testing::ValuesIn(realEngines()),
                         [](const auto& engine) { return engine.param.name; });

}  // namespace
}  // namespace corvane::contract
