#include "demo/qt/call_tour.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWindow>
#include <cstdio>
#include <utility>

#include "corvane/platform/qt/qt_screenshot.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

using namespace std::chrono_literals;

constexpr auto interval = 50ms;
constexpr auto longestStep = 20s;
constexpr auto pauseForPictures = 600ms;

std::shared_ptr<WKWebView> pageOf(const UIView& view) {
  for (const auto& subview : view.subviews()) {
    if (auto page = std::dynamic_pointer_cast<WKWebView>(subview)) return page;
  }
  return nullptr;
}

}  // namespace

CallTour::CallTour(AgentApp& agent, CustomerWindow& customer, const Product& product, std::filesystem::path pictures)
    : agent_(agent), customer_(customer), pictures_(std::move(pictures)) {
  addSteps(product);
  timer_.setInterval(interval);
  timer_.callOnTimeout(&timer_, [this] { look(); });
}

void CallTour::begin(std::function<void(bool)> ended) {
  ended_ = std::move(ended);
  std::error_code error;
  std::filesystem::create_directories(pictures_, error);
  begun_ = std::chrono::steady_clock::now();
  timer_.start();
  steps_.front().act();
}

void CallTour::addSteps(const Product& product) {
  const auto pause = [this] { return hasPaused(); };
  const std::string sku = firstShown(product).sku();
  steps_.push_back({"the call runs", [] {}, hasCall(CallSessionStatus::running)});
  steps_.push_back({"both sides are seen", [] {}, customerSees("customer.state() === 'connected'")});
  steps_.push_back({"pictures move", [] {}, pause});
  steps_.push_back({"a product is added in the app, and the customer sees it",
                    [this, product] {
                      savePictures("call");
                      agent_.addToCall(product);
                    },
                    customerSees("document.querySelector('#products [data-sku=\"" + sku + "\"]') !== null")});
  addFloatingSteps();
  steps_.push_back({"the customer fills the cart, and the app sees it",
                    [this, sku] {
                      printFrames("growing");
                      runForCustomer("document.querySelector('#products [data-wish=add][data-sku=\"" + sku +
                                     "\"]').click()");
                    },
                    customerSees("document.querySelector('#cart .quantity') !== null")});
  steps_.push_back({"pictures of the end", [] {}, pause});
  steps_.push_back({"the agent hangs up",
                    [this] {
                      savePictures("cart");
                      clickForAgent("endCall");
                    },
                    hasCall(CallSessionStatus::disconnected)});
  steps_.push_back({"the customer is told", [] {}, customerSees("customer.state() === 'ended'")});
}

void CallTour::addFloatingSteps() {
  const auto isStill = [this] { return !agent_.views()->isAnimating(); };
  steps_.push_back({"the call shrinks",
                    [this] {
                      clickForAgent("minimize");
                      measure();
                    },
                    [this, isStill] { return agent_.agentView()->isMinimized() && isStill(); }});
  steps_.push_back({"the products are under the small call",
                    [this] {
                      printFrames("shrinking");
                      savePictures("floating");
                      agent_.showProducts();
                    },
                    [this] { return hasPaused(); }});
  steps_.push_back(
      {"the small call is dragged to the other side",
       [this] {
         measure();
         drag();
       },
       [this, isStill] { return agent_.agentView()->center().x < agent_.nativeWindow()->width() / 2.0 && isStill(); }});
  steps_.push_back({"the call grows back",
                    [this] {
                      printFrames("snapping");
                      savePictures("dragged");
                      measure();
                      agent_.agentView()->maximizeView();
                    },
                    [this, isStill] { return !agent_.agentView()->isMinimized() && isStill(); }});
}

void CallTour::look() {
  if (current_ == steps_.size()) return;
  if (steps_[current_].isDone()) return next();
  if (std::chrono::steady_clock::now() - begun_ < longestStep) return;
  std::printf("demo: the tour waits in vain: %s\n", steps_[current_].name);
  timer_.stop();
  ended_(false);
}

void CallTour::next() {
  std::printf("demo: %s\n", steps_[current_].name);
  begun_ = std::chrono::steady_clock::now();
  *answer_ = false;
  if (++current_ < steps_.size()) return steps_[current_].act();
  timer_.stop();
  ended_(true);
}

std::function<bool()> CallTour::hasCall(CallSessionStatus status) const {
  return [this, status] {
    const auto view = agent_.agentView();
    return view != nullptr && view->callSessionStatus() == status;
  };
}

std::function<bool()> CallTour::customerSees(std::string script) {
  return [this, script = std::move(script)] {
    customer_.page().evaluateJavaScript(script, [answer = answer_](const EvaluationResult& result) {
      *answer = result && result->boolean().value_or(false);
    });
    return std::exchange(*answer_, false);
  };
}

void CallTour::runForCustomer(std::string_view script) {
  customer_.page().evaluateJavaScript(script, [](const EvaluationResult&) {});
}

bool CallTour::hasPaused() const { return std::chrono::steady_clock::now() - begun_ > pauseForPictures; }

void CallTour::clickForAgent(const std::string& action) {
  if (const auto page = pageOf(*agent_.agentView())) {
    page->evaluateJavaScript("document.querySelector('[data-action=" + action + "]').click()",
                             [](const EvaluationResult&) {});
  }
}

void CallTour::drag() {
  const CGPoint center = agent_.agentView()->superview()->convertPoint(agent_.agentView()->center(), nullptr);
  QWindow* const window = agent_.nativeWindow();
  const auto send = [&](QEvent::Type type, QPointF at) {
    const Qt::MouseButton button = type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton;
    const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, at, window->mapToGlobal(at), button, buttons, Qt::NoModifier);
    QCoreApplication::sendEvent(window, &event);
  };
  QPointF place(center.x, center.y);
  send(QEvent::MouseButtonPress, place);
  constexpr int moves = 10;
  const qreal way = place.x() / (moves + 2);
  for (int move = 0; move < moves; ++move) send(QEvent::MouseMove, place -= QPointF(way, way / 2));
  send(QEvent::MouseButtonRelease, place);
}

void CallTour::measure() { frames_ = agent_.measure(); }

void CallTour::printFrames(const char* name) {
  const auto result = frames_->result();
  std::printf("demo: %s with the call running: %.0f frames a second, longest gap %.1f ms\n", name,
              result.framesPerSecond, std::chrono::duration<double, std::milli>(result.longestGap).count());
}

void CallTour::savePictures(const std::string& name) {
  const bool isSaved = agent_.savePicture(pictures_ / ("qt_" + name + "_agent.png")) &&
                       qt::saveScreenshot(&customer_, pictures_ / ("qt_" + name + "_customer.png"));
  if (!isSaved) std::printf("demo: a picture could not be saved in %s\n", pictures_.c_str());
}

}  // namespace corvane::demo
