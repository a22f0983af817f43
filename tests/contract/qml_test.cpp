// A host app whose screens are QML.
#include <gtest/gtest.h>

#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQml/QQmlEngine>
#include <QtQml/QQmlExpression>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>
#include <memory>
#include <string>

#include "corvane/corvane.h"
#include "corvane/quick/qml_module.h"
#include "tests/contract/quick_platform.h"

namespace corvane::contract {
namespace {

constexpr const char* app = R"qml(
import QtQuick
import Corvane

Item {
    id: app
    width: 390; height: 844
    property var log: []
    property bool isCallOpen: true
    property var restored: null
    property bool small: AgentContext.isMinimized
    function note(who, event) { log.push(who + " " + event.name + (event.status ? " " + event.status : "")) }
    function noteOutcome(error, value) { log.push(error ? "failed " + error.name : "ok " + JSON.stringify(value)) }

    AgentScreen.onAgentEvent: (event) => note("screen", event)
    AgentScreen.resetsRestoreAction: true

    Item {
        id: callScreen
        x: 10; y: 20; width: 300; height: 600
        visible: isCallOpen
        VelnorAgent {
            id: agent
            anchors.fill: parent
            region: pageAddress; organisationId: "shop"; connectId: "b"
            minimizedOrigin: VelnorAgent.BottomRight
            minimizedSize: Qt.size(10, 100)
            onEvent: (event) => { note("own", event); if (event.name === "willMinimize") isCallOpen = false }
        }
    }
    Item {
        visible: !isCallOpen
        AgentScreen.bringsAgentToFront: true
        AgentScreen.onRestoreAgent: (agent) => { restored = agent; isCallOpen = true }
    }
}
)qml";

class Qml : public testing::Test {
 protected:
  void SetUp() override {
    std::string reason;
    platform_ = quickEngine().make(reason);
    if (platform_ == nullptr) GTEST_SKIP() << reason;
    quick::registerQmlModule();
    engine_ = std::make_unique<QQmlEngine>();
    engine_->rootContext()->setContextProperty("pageAddress",
                                               QString::fromStdString(platform_->address(PageKind::agentTool)));
    QQmlComponent component(engine_.get());
    component.setData(app, QUrl("qrc:/app.qml"));
    item_.reset(qobject_cast<QQuickItem*>(component.create()));
    ASSERT_NE(item_, nullptr) << component.errorString().toStdString();
    item_->setParentItem(quickWindow(*platform_).contentItem());
    ASSERT_TRUE(waitForLine("own didLoad")) << text("log.join()");
  }
  void TearDown() override {
    MinimizedState::shared().remove();
    MinimizedState::shared().resetRestoreAction();
    item_.reset();
  }

  /// On the window.
  static CGRect boxOf(const UIView& view) {
    return {view.convertPoint(view.bounds().origin, nullptr), view.bounds().size};
  }
  static VelnorAgentContext& context() { return VelnorAgentContext::shared(); }

  QVariant evaluate(const std::string& expression) {
    QQmlExpression script(qmlContext(item_.get()), item_.get(), QString::fromStdString(expression));
    QVariant value = script.evaluate();
    EXPECT_FALSE(script.hasError()) << script.error().toString().toStdString();
    return value;
  }
  std::string text(const std::string& expression) { return evaluate(expression).toString().toStdString(); }
  bool isTrue(const std::string& expression) { return evaluate(expression).toBool(); }
  bool waitForLine(const std::string& line) {
    return platform_->runUntil([&] { return isTrue("log.includes('" + line + "')"); });
  }
  std::string takeLog() {
    const std::string lines = text("log.join('\\n')");
    evaluate("log = []");
    return lines;
  }
  void post(const std::string& message) { platform_->pagePostsValue(*context().agentView(), message); }
  void minimize() {
    post(R"({"eventType":"SDK_MINIMIZE_AGENT_TOOL"})");
    ASSERT_TRUE(waitForLine("own didMinimize"));
  }

  std::unique_ptr<RealEnginePlatform> platform_;
  std::unique_ptr<QQmlEngine> engine_;
  std::unique_ptr<QQuickItem> item_;
};

TEST_F(Qml, OperationsAnswerFunctionsAndRefuseNonsense) {
  evaluate("AgentContext.isProductInCart('a', noteOutcome)");
  EXPECT_EQ(text("log.slice(-1)[0]"), "failed noActiveCall");
  for (const std::string bad :
       {"AgentContext.addProductToCall({ name: 'a' })", "AgentContext.addProductToCall('{')",
        "AgentContext.updateProductInCart('a', 1.5)", "AgentContext.updateProductInCart('a', NaN)"}) {
    EXPECT_TRUE(isTrue("(() => { try { " + bad + "; return false } catch (error) { return true } })()")) << bad;
  }
  post(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})");
  ASSERT_TRUE(waitForLine("own callStatusUpdate CALL_SESSION_STATUS_RUNNING"));
  EXPECT_TRUE(
      isTrue("log.indexOf('screen callStatusUpdate CALL_SESSION_STATUS_RUNNING') <"
             "log.indexOf('own callStatusUpdate CALL_SESSION_STATUS_RUNNING')"));
  const auto expectOutcome = [&](const std::string& call, const std::string& outcome) {
    evaluate("log = []");
    evaluate(call);
    EXPECT_TRUE(platform_->runUntil([&] { return isTrue("log.some((line) => /^(ok|failed)/.test(line))"); })) << call;
    EXPECT_EQ(text("log.find((line) => /^(ok|failed)/.test(line))"), outcome) << call;
  };
  expectOutcome("AgentContext.addProductToCart('SKU', noteOutcome)", "ok null");
  expectOutcome("AgentContext.getProductsInCart(noteOutcome)", R"(ok ["SKU"])");
  expectOutcome("AgentContext.isProductInCart('SKU', noteOutcome)", "ok true");
  expectOutcome("AgentContext.updateProductInCart('SKU', 3, noteOutcome)", "ok null");
  expectOutcome("AgentContext.getCartStatus(noteOutcome)", R"(ok {"SKU":3})");
  expectOutcome("AgentContext.decrementProductInCart('other', noteOutcome)", "failed skuNotFound");
}

TEST_F(Qml, TheCallFollowsItsItemAndKeepsItsSettings) {
  const auto view = context().agentView();
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(boxOf(*view), (CGRect{{10, 20}, {300, 600}}));
  evaluate("callScreen.x = 50; callScreen.width = 200");
  EXPECT_TRUE(platform_->runUntil([&] { return boxOf(*view) == CGRect{{50, 20}, {200, 600}}; }));
  EXPECT_TRUE(view->minimizedOrigin().is<MinimizedOrigin::BottomRight>());
  EXPECT_EQ(view->minimizedSize(), (CGSize{30, 100}));
  evaluate("agent.tapToMaximize = true; agent.minimizedOrigin = Qt.point(5, 6); agent.minimizedSize = Qt.size(0, 0)");
  EXPECT_TRUE(view->tapToMaximize());
  EXPECT_EQ(view->minimizedOrigin(), MinimizedOrigin::custom({5, 6}));
  EXPECT_EQ(view->minimizedSize(), std::nullopt);
  for (const std::string nonsense : {"'left'", "7", "undefined", "Qt.size(1, 2)"}) {
    evaluate("agent.minimizedOrigin = " + nonsense);
    EXPECT_EQ(view->minimizedOrigin(), MinimizedOrigin::custom({5, 6})) << nonsense;
  }
}

TEST_F(Qml, AFloatingCallOutlivesItsScreenAndComesBackToIt) {
  const std::weak_ptr<VelnorAgentView> view = context().agentView();
  EXPECT_TRUE(platform_->evaluate(*view.lock(), "window.isTheSame = true").has_value());
  ASSERT_NO_FATAL_FAILURE(minimize());
  EXPECT_TRUE(platform_->runUntil([&] { return isTrue("small"); }));
  EXPECT_TRUE(isTrue("MinimizedState.isMinimized()"));
  EXPECT_EQ(context().agentView(), view.lock());
  takeLog();

  evaluate("AgentContext.maximizeAgent()");
  ASSERT_TRUE(platform_->runUntil([&] { return isTrue("isCallOpen"); }));
  EXPECT_EQ(text("[restored.organisationId, restored.connectId, restored.enableSSO].join()"), "shop,b,false");
  EXPECT_EQ(text("restored.region"), platform_->address(PageKind::agentTool));
  EXPECT_TRUE(platform_->runUntil([&] { return !isTrue("small"); }));
  EXPECT_EQ(boxOf(*view.lock()), (CGRect{{10, 20}, {300, 600}}));
  const auto isTheSame = platform_->evaluate(*view.lock(), "window.isTheSame");
  EXPECT_EQ(isTheSame ? isTheSame->boolean() : std::nullopt, true) << "the page was loaded again";
}

TEST_F(Qml, ACallThatIsLeftAtFullSizeEndsWithItsScreen) {
  const std::weak_ptr<VelnorAgentView> view = context().agentView();
  evaluate("isCallOpen = false");
  EXPECT_TRUE(platform_->runUntil([&] { return context().agentView() == nullptr; }));
  EXPECT_TRUE(platform_->runUntil([&] { return view.expired(); }));
  evaluate("log = []; AgentContext.getProductsInCall(noteOutcome)");
  EXPECT_EQ(text("log.join()"), "") << "nobody is there to answer";
  evaluate("isCallOpen = true");
  ASSERT_TRUE(waitForLine("own didLoad"));

  // A screen that has gone hears nothing any more.
  item_->setVisible(false);
  EXPECT_TRUE(platform_->runUntil([&] { return context().agentView() == nullptr; }));
  const auto other = VelnorAgentView::create(Region::custom(platform_->address(PageKind::agentTool)), "shop", false);
  const VelnorAgent agent(other);
  takeLog();
  other->loadBooking("c");
  EXPECT_TRUE(platform_->runUntil([&] { return other->isLoaded(); }));
  EXPECT_EQ(takeLog(), "");
}

}  // namespace
}  // namespace corvane::contract
