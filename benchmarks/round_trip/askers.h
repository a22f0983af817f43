/// Those who ask the page, on any engine.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "corvane/corvane.h"
#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/web/wk_web_view.h"

namespace corvane::benchmarks {

class Asker {
 public:
  virtual ~Asker() = default;
  [[nodiscard]] virtual bool isReady() const = 0;
  virtual void setPayload(const std::string& sku) = 0;
  /// Asks once and calls `done` when the answer is there.
  virtual void ask(std::function<void()> done) = 0;
};

/// A public call of the library.
class ViewAsker final : public Asker {
 public:
  ViewAsker(UIWindow& window, const std::string& address)
      : view_(VelnorAgentView::create(Region::custom(address), "shop", false)) {
    view_->setFrame(window.bounds());
    view_->setAutoresizingMask(UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight);
    window.addSubview(view_);
    view_->loadBooking("b1");
  }
  ViewAsker(const ViewAsker&) = delete;
  ViewAsker& operator=(const ViewAsker&) = delete;
  ~ViewAsker() override { view_->removeFromSuperview(); }

  bool isReady() const override { return view_->callSessionStatus() == CallSessionStatus::running; }
  void setPayload(const std::string& sku) override { sku_ = sku; }
  void ask(std::function<void()> done) override {
    view_->updateProductInCart(sku_, 2, [done = std::move(done)](const std::optional<AgentError>& error) {
      if (error) {
        std::printf("a request failed: %s\n", error->what());
        std::exit(1);
      }
      done();
    });
  }

  [[nodiscard]] WKWebView& webView() const { return dynamic_cast<WKWebView&>(*view_->subviews().front()); }

 private:
  std::shared_ptr<VelnorAgentView> view_;
  std::string sku_;
};

/// How much a bare loop does of what the library does.
enum class Effort : std::uint8_t {
  least,         ///< the same script each time, which engines keep compiled
  newText,       ///< a new script each time, as each request has an identifier of its own
  newTextReads,  ///< and the page's messages are read as JSON
  nextTurn,      ///< and it asks from the main loop's next turn
};

/// The engine alone: evaluates a script and waits for the page's messages.
class BareAsker : public Asker {
 public:
  explicit BareAsker(Effort effort) : effort_(effort) {}

  bool isReady() const override { return isReady_; }
  void setPayload(const std::string& sku) override { sku_ = sku; }
  void ask(std::function<void()> done) override {
    done_ = std::move(done);
    // The page forwards the action, too, since it is a message of its own window.
    missing_ = 2;
    if (effort_ != Effort::nextTurn) return evaluate(nextScript());
    RunLoop::main().post([this] { evaluate(nextScript()); });
  }

 protected:
  [[nodiscard]] bool reads() const { return effort_ >= Effort::newTextReads; }
  void messageCame() {
    isReady_ = true;
    if (missing_ == 0) return;
    --missing_;
    if (missing_ == 0) std::exchange(done_, nullptr)();
  }

 private:
  virtual void evaluate(const std::string& script) = 0;

  std::string nextScript() {
    if (effort_ >= Effort::newText) ++number_;
    const std::string digits = std::to_string(number_);
    return R"(postAction({"eventType":"SDK_INTERNAL_UPDATE_PRODUCT_IN_CART","data":{"_id":)"
           R"("9D2F8C4E-1B7A-4C56-8D1E-)" +
           std::string(12 - digits.size(), '0') + digits + R"(","sku":")" + sku_ + R"(","quantity":2}});)";
  }

  Effort effort_;
  std::string sku_;
  std::function<void()> done_;
  std::uint64_t number_ = 0;
  int missing_ = 0;
  bool isReady_ = false;
};

}  // namespace corvane::benchmarks
