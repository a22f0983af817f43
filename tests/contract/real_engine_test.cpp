// What only a page with a script engine, a window and a certificate can show.
#include <gio/gio.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "corvane/platform/web/engine_capabilities.h"
#include "tests/contract/real_engine_platform.h"
#include "tests/contract/trouble_server.h"

namespace corvane::contract {
namespace {

std::string token(std::string_view id) { return R"({"refreshSsoToken":{"responseId":")" + std::string(id) + "\"}}"; }

class RealEngine : public testing::TestWithParam<RealEngineMaker> {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = GetParam().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
  }
  void TearDown() override { view_.reset(); }

  void load(const std::string& address) {
    view_ = VelnorAgentView::create(Region::custom(address), "shop", false);
    view_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    view_->setEventHandler([this](const AgentEvent& event) { events_.push_back(encodeJson(event)); });
    platform_->show(view_);
    view_->setFrame({{0, 0}, {390, 844}});
    view_->loadBooking("b1");
  }
  bool waitFor(const std::string& event) {
    return platform_->runUntil([&] { return std::ranges::find(events_, event) != events_.end(); });
  }
  void loadPage(const std::string& file) {
    events_.clear();
    load(platform_->page(file));
    ASSERT_TRUE(waitFor(token("b1"))) << file;
    ASSERT_TRUE(platform_->runUntil([&] { return view_->isLoaded(); }));
  }

  std::unique_ptr<RealEnginePlatform> platform_;
  std::shared_ptr<VelnorAgentView> view_;
  std::vector<std::string> events_;
};

TEST_P(RealEngine, ActionsReachTheToolInThePageInItsFrameAndInAFrameOfAnotherOrigin) {
  for (const std::string page : {"plain.html", "framed.html", "framed.html#other"}) {
    ASSERT_NO_FATAL_FAILURE(loadPage(page));
    EXPECT_TRUE(platform_->evaluate(*view_, R"(postAction({ eventType: "TEST_ACTION", data: { text: "object" } });)"));
    EXPECT_TRUE(waitFor(token("object"))) << page;
    EXPECT_TRUE(platform_->evaluate(*view_, R"(postAction('{"eventType":"TEST_ACTION","data":{"text":"text"}}');)"));
    EXPECT_TRUE(waitFor(token("text"))) << page;
  }
}

TEST_P(RealEngine, EvaluationGivesJsonOrTheReason) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  EXPECT_EQ(platform_->evaluate(*view_, "({a: [1, 'ü\\u0000']})")->find("a")->size(), 2U);
  EXPECT_TRUE(platform_->evaluate(*view_, "undefined")->isNull());
  for (const std::string_view script : {"missing()", "throw new Error('boom')", "syntax error", "window", "\"\xff\""}) {
    const auto result = platform_->evaluate(*view_, script);
    ASSERT_FALSE(result) << script;
    EXPECT_EQ(result.error().kind, WebError::Kind::scriptFailed) << script;
    EXPECT_FALSE(result.error().description.empty()) << script;
  }
  EXPECT_TRUE(platform_->evaluate(*view_, "throw new Error('boom')").error().description.contains("boom"));
  platform_->pageLosesItsProcess(*view_);
  ASSERT_TRUE(waitFor(R"({"error":{}})"));
  EXPECT_EQ(platform_->evaluate(*view_, "1").error().kind, WebError::Kind::processTerminated);
}

TEST_P(RealEngine, NothingThatAPageAsksItsUserHoldsTheHostUp) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  EXPECT_EQ(platform_->evaluate(*view_, "alert('stop'); print(); confirm('stop')")->boolean(), false);
  EXPECT_TRUE(platform_->evaluate(*view_, "addEventListener('beforeunload', (event) => event.preventDefault())"));
  view_->loadBooking("b2");
  EXPECT_TRUE(waitFor(token("b2"))) << "a page cannot refuse to be left";
}

TEST_P(RealEngine, APictureThatNeverComesEndsNothing) {
  const std::string address = platform_->page("stalled.html#" + platform_->address(PageKind::silent));
  load(address);
  // A busy machine may be too slow for the shorter ones.
  std::chrono::milliseconds limit(500);
  for (bool isThere = false; !isThere && limit < std::chrono::seconds(30); limit *= 2) {
    events_.clear();
    findWebView(*view_)->load({.url = address, .timeoutInterval = limit});
    ASSERT_TRUE(platform_->runUntil([&] { return !events_.empty(); }));
    isThere = events_.front() == token("stalled");
  }
  events_.clear();
  const auto end = RunLoop::main().now() + limit;
  ASSERT_TRUE(platform_->runUntil([&] { return RunLoop::main().now() > end; }));
  EXPECT_EQ(events_, std::vector<std::string>{});
  EXPECT_EQ(platform_->evaluate(*view_, "picture.complete")->boolean(), false) << "it is still awaited";
}

TEST_P(RealEngine, APageThatHangsOrDiesGivesWayToTheNext) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  EXPECT_TRUE(platform_->evaluate(*view_, "setTimeout(() => { for (;;); })"));
  view_->loadBooking("b2");
  EXPECT_TRUE(waitFor(token("b2")));
  view_->loadBooking("b3");
  platform_->pageLosesItsProcess(*view_);
  EXPECT_TRUE(waitFor(token("b3"))) << testing::PrintToString(events_);
  EXPECT_FALSE(view_->error());
}

TEST_P(RealEngine, APageThatDoesNotAnswerIsToldUntilItDoes) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  std::vector<PageIncident> told;
  view_->setPageIncidentHandler([&](PageIncident incident) { told.push_back(incident); });
  EXPECT_TRUE(
      platform_->evaluate(*view_, "setTimeout(() => { const end = Date.now() + 6000; while (Date.now() < end); })"));
  std::ignore = platform_->evaluate(*view_, "0");
  using enum PageIncident;
  EXPECT_TRUE(platform_->runUntil([&] { return told.size() == 2; }));
  EXPECT_EQ(told, (std::vector{stoppedResponding, respondsAgain}));
}

TEST_P(RealEngine, WhatThePageMayNotShowComesToTheHostAndThePageStays) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  std::vector<std::string> links;
  view_->setExternalLinkHandler([&](const ExternalLink& link) {
    links.push_back(link.url.substr(0, link.url.find_first_of("0123456789")) + (link.wantsNewWindow ? " window" : ""));
  });
  view_->setAllowedOrigins(std::vector<std::string>{});
  for (const std::string_view script : {"location = 'mailto:a@shop.example'; 0", "open('https://shop.example/'); 0",
                                        "location = location.href.replace('127.0.0.1', 'localhost'); 0"}) {
    const std::size_t before = links.size();
    EXPECT_TRUE(platform_->evaluate(*view_, script)) << script;
    EXPECT_TRUE(platform_->runUntil([&] { return links.size() > before; })) << script;
  }
  EXPECT_TRUE(platform_->evaluate(*view_,
                                  "{ const a = document.createElement('a'); a.download = 'x';"
                                  "  a.href = URL.createObjectURL(new Blob(['x'])); a.click(); } 0"));
  EXPECT_EQ(links,
            (std::vector<std::string>{"mailto:a@shop.example", "https://shop.example/ window", "http://localhost:"}));
  const auto expectPage = [&](const std::string& booking) {
    EXPECT_TRUE(platform_->evaluate(*view_, "post(new URLSearchParams(location.search).get('connectId') + '!')"));
    EXPECT_TRUE(waitFor(token(booking + "!"))) << testing::PrintToString(events_);
    EXPECT_FALSE(view_->error());
  };
  expectPage("b1");
  view_->loadBooking("b2");
  ASSERT_TRUE(waitFor(token("b2")));
  EXPECT_TRUE(platform_->evaluate(*view_, "history.back()"));
  expectPage("b2");
}

TEST_P(RealEngine, WhatTheHostChoseReachesThePage) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  EXPECT_TRUE(platform_->evaluate(*view_, "navigator.userAgent")->string()->ends_with(" Shop/2.1"));
  EXPECT_EQ(platform_->evaluate(*view_, "navigator.language")->string(), "rm-CH");
  EXPECT_TRUE(platform_->evaluate(*view_, "post('x'.repeat(4000000)); post('short'); 0"));
  EXPECT_TRUE(waitFor(token("short")));
  EXPECT_EQ(events_.back(), token("short"));
  EXPECT_LT(std::ranges::max(events_, {}, &std::string::size).size(), 1000U) << "the long one is dropped";
}

TEST_P(RealEngine, AFloatingCallStaysAtItsSideOnATurnedOutput) {
  if (std::getenv("SWAYSOCK") == nullptr) GTEST_SKIP() << "There is no output that can be turned";
  const auto waitForSize = [&](CGSize size) {
    return platform_->runUntil(
        [&] { return platform_->window()->bounds().size == size && !platform_->window()->isAnimating(); });
  };
  ASSERT_TRUE(waitForSize({390, 844}));
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  platform_->pagePostsValue(*view_, R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
  ASSERT_TRUE(platform_->runUntil([&] { return view_->isMinimized() && !platform_->window()->isAnimating(); }));
  const auto turn = [&](const std::string& transform, CGSize size) {
    const std::string command = "swaymsg -q output HEADLESS-1 transform " + transform;
    ASSERT_TRUE(g_spawn_command_line_sync(command.c_str(), nullptr, nullptr, nullptr, nullptr));
    ASSERT_TRUE(waitForSize(size));
  };
  const auto expectOnTheRight = [&] {
    const CGRect frame = view_->frame();
    const CGSize size = platform_->window()->bounds().size;
    EXPECT_TRUE(view_->center().x > size.width / 2 && frame.maxX() <= size.width && frame.minY() >= 0 &&
                frame.maxY() <= size.height);
    const auto x = static_cast<int>(view_->center().x);
    const auto y = static_cast<int>(view_->center().y);
    EXPECT_TRUE(platform_->runUntil([&] { return platform_->takePicture()(x, y) == (Colour{0, 128, 0}); }));
  };
  ASSERT_NO_FATAL_FAILURE(turn("90", {844, 390}));
  expectOnTheRight();
  ASSERT_NO_FATAL_FAILURE(turn("normal", {390, 844}));
  expectOnTheRight();
  ASSERT_NO_FATAL_FAILURE(turn("270", {844, 390}));
  view_->maximizeView();
  EXPECT_TRUE(platform_->runUntil([&] {
    const auto size = platform_->evaluate(*view_, "innerWidth + ' ' + innerHeight");
    return view_->frame() == platform_->window()->bounds() && size && size->string() == "844 390";
  }));
  ASSERT_NO_FATAL_FAILURE(turn("normal", {390, 844}));
}

TEST_P(RealEngine, DeveloperToolsHaveAWindowOfTheirOwnAndEndWithTheirPage) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  const auto width = [&] { return platform_->evaluate(*view_, "innerWidth").value_or(JsonValue()).integer(); };
  const auto widthBefore = width();
  EXPECT_FALSE(platform_->showDeveloperTools(*UIView::create({})));
  const int before = platform_->windowCount();
  for (int time = 0; time < 2; ++time) {
    EXPECT_TRUE(platform_->showDeveloperTools(*view_));
    EXPECT_TRUE(platform_->runUntil([&] { return platform_->windowCount() == before + 1; }));
  }
  EXPECT_EQ(width(), widthBefore);
  view_->removeFromSuperview();
  view_.reset();
  EXPECT_TRUE(platform_->runUntil([&] { return platform_->windowCount() == before; }));
}

TEST_P(RealEngine, WhatItCanDoIsKnownBeforeAPageIsLoadedAndCaptureCanBeMuted) {
  std::optional<EngineCapabilities> found;
  queryEngineCapabilities([&](const EngineCapabilities& capabilities) { found = capabilities; });
  ASSERT_TRUE(platform_->runUntil([&] { return found.has_value(); }));
  EXPECT_TRUE(found->hasCamera && found->hasMicrophone) << "the made-up ones";
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  EXPECT_EQ(platform_->evaluate(*view_, "typeof RTCPeerConnection === 'function'")->boolean(),
            found->hasPeerConnections);
  platform_->setPromptAnswer(true);
  ASSERT_TRUE(platform_->pageCaptures(*view_));
  const auto becomes = [&](CaptureState state) {
    return platform_->runUntil([&] { return view_->captureState(AVMediaType::audio) == state; });
  };
  EXPECT_TRUE(becomes(CaptureState::active));
  view_->setCaptureMuted(AVMediaType::audio, true);
  EXPECT_TRUE(becomes(CaptureState::muted));
  view_->setCaptureMuted(AVMediaType::audio, false);
  EXPECT_TRUE(becomes(CaptureState::active));
}

TEST_P(RealEngine, AServerThatNobodyTrustsIsToldAsSuch) {
  if (!std::string_view(CORVANE_TEST_CERTIFICATE).ends_with(".pem")) GTEST_SKIP() << "openssl is missing";
  const SelfSignedServer server(CORVANE_TEST_CERTIFICATE);
  load(server.address());
  ASSERT_TRUE(waitFor(R"({"error":{}})"));
  EXPECT_EQ(view_->error()->kind, WebError::Kind::insecureServer);
  EXPECT_FALSE(view_->isLoaded());
}

TEST_P(RealEngine, AddressesThatNoEngineLoadsFail) {
  for (const std::string address : {"", "page", "nothing:", "http://127.0.0.1:9/"}) {
    events_.clear();
    load(address);
    EXPECT_TRUE(events_.empty()) << "not inside the call";
    ASSERT_TRUE(waitFor(R"({"error":{}})")) << address;
    EXPECT_FALSE(view_->isLoaded()) << address;
    EXPECT_EQ(events_.size(), 1U) << address;
  }
}

TEST_P(RealEngine, ThePageFillsItsViewOnScreenAndDoesNotScroll) {
  ASSERT_NO_FATAL_FAILURE(loadPage("plain.html"));
  view_->setFrame({{100, 200}, {200, 300}});
  const Colour page{0, 128, 0};
  EXPECT_TRUE(platform_->runUntil([&] {
    const auto colourAt = platform_->takePicture();
    const auto isPage = [&](int x, int y) { return colourAt(x, y) == page; };
    const bool isOutside = isPage(95, 250) || isPage(305, 300) || isPage(200, 195) || isPage(200, 505);
    return isPage(105, 205) && isPage(295, 495) && !isOutside;
  }));
  EXPECT_EQ(platform_->evaluate(*view_, "[innerWidth, innerHeight].join()")->string(), "200,300");
  EXPECT_EQ(platform_->evaluate(*view_, "getComputedStyle(document.documentElement).overflow")->string(), "hidden");
  view_->setHidden(true);
  EXPECT_TRUE(platform_->runUntil([&] { return platform_->takePicture()(200, 300) != page; }));
}

TEST_P(RealEngine, TextsPicturesEdgesAndShadowsAreDrawn) {
  const auto ground = UIView::create({{0, 0}, {390, 844}});
  ground->setBackgroundColor(UIColor{.red = 1, .green = 1, .blue = 1});
  const auto card = UIView::create({{100, 100}, {200, 100}});
  card->setBackgroundColor(UIColor{.blue = 1});
  card->setCornerRadius(20);
  card->setDecoration({.borderWidth = 6, .borderColor = {.red = 1}, .shadowRadius = 20});
  const auto label = UILabel::create("MMMM");
  label->setFont({.size = 40, .isBold = true});
  label->setColor({.green = 1});
  label->setFrame({{20, 20}, label->sizeThatFits({160, 60})});
  const auto image = UIImageView::create(CORVANE_DEMO_PAGES "/pictures/gift_card.png");
  image->setFrame({{100, 300}, {200, 50}});
  card->addSubview(label);
  ground->addSubview(card);
  ground->addSubview(image);
  platform_->show(ground);
  const auto colourIn = [](const std::function<Colour(int, int)>& at, CGRect box, auto isIt) {
    int found = 0;
    for (int x = int(box.minX()); x < int(box.maxX()); ++x) {
      for (int y = int(box.minY()); y < int(box.maxY()); ++y) found += isIt(at(x, y)) ? 1 : 0;
    }
    return found;
  };
  const auto isGreen = [](Colour colour) { return colour.green > 200 && colour.blue < 100 && colour.red < 50; };
  const auto isGold = [](Colour colour) { return colour.red > 180 && colour.blue < 80; };
  ASSERT_TRUE(platform_->runUntil(
      [&] { return colourIn(platform_->takePicture(), {{120, 120}, label->bounds().size}, isGreen) > 300; }));
  const auto at = platform_->takePicture();
  EXPECT_EQ(at(200, 103), (Colour{255, 0, 0})) << "the edge";
  EXPECT_EQ(at(200, 110), (Colour{0, 0, 255})) << "what is inside of it";
  EXPECT_LT(at(200, 97).red, 250) << "the shadow";
  EXPECT_LT(at(200, 97).red, at(200, 85).red) << "fades";
  EXPECT_EQ(at(200, 60), (Colour{255, 255, 255}));
  EXPECT_NE(at(101, 101), (Colour{255, 0, 0})) << "the corner is round";
  EXPECT_EQ(colourIn(at, {{106, 160}, {188, 34}}, isGreen), 0) << "the text is where its box is";
  EXPECT_GT(colourIn(at, {{175, 300}, {50, 50}}, isGold), 500) << "the picture";
  EXPECT_EQ(at(150, 325), (Colour{255, 255, 255})) << "is not stretched";
}

TEST_P(RealEngine, TheWindowsOfSurfacesAreInOneSceneAndOneOfThemIsKey) {
  ASSERT_EQ(UIApplication::shared().connectedScenes().size(), 1U);
  const auto scene = std::dynamic_pointer_cast<UIWindowScene>(UIApplication::shared().connectedScenes().front());
  ASSERT_NE(scene, nullptr);
  const auto first = platform_->window();
  const auto second = platform_->makeScreen(false);
  EXPECT_EQ(scene->windows(), (std::vector{first, second->window()}));
  EXPECT_TRUE(first->isKeyWindow());
  EXPECT_FALSE(second->window()->isKeyWindow());
  second->window()->makeKey();
  EXPECT_FALSE(first->isKeyWindow());
  second->endSurface();
  EXPECT_TRUE(first->isKeyWindow());
  EXPECT_EQ(scene->windows().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(, RealEngine, testing::ValuesIn(realEngines()),
                         [](const auto& engine) { return engine.param.name; });

}  // namespace
}  // namespace corvane::contract
