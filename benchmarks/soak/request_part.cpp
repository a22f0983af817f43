#include <algorithm>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>

#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/outcome.h"
#include "benchmarks/soak/parts.h"
#include "benchmarks/soak/random_source.h"
#include "benchmarks/soak/request_ledger.h"
#include "demo/shop/shop_products.h"

namespace corvane::soak {

namespace {

constexpr int allRequests = 20'000;
// Each takes five seconds.
constexpr int perTimeOut = 800;
constexpr GrowthBounds bounds{.heap = 1, .resident = 6};
/// After so many requests the queue is left to run empty, and all is compared.
constexpr std::size_t requestsInRound = 150;

/// Asks and asks again from within the completions, round by round.
class RequestSoak : public std::enable_shared_from_this<RequestSoak> {
 public:
  RequestSoak(SoakHost& host, const PartOptions& options, Checks& checks, std::vector<Product> products)
      : host_(host),
        checks_(checks),
        random_(options.seed),
        total_(allRequests * options.percent / 100),
        products_(std::move(products)),
        ledger_(checks),
        model_(products_) {}

  void run();

 private:
  void preparePage();
  void askOne();
  void completed(std::size_t number, std::string outcome);
  void compare();
  void askInVain();
  void askWithoutPostAction();
  bool settle() {
    return checks_.that(host_.runUntil([this] { return ledger_.openCount() == 0; }), "all requests end");
  }

  SoakHost& host_;
  Checks& checks_;
  RandomSource random_;
  int total_;
  std::vector<Product> products_;
  std::shared_ptr<VelnorAgentView> view_ = host_.addView(host_.pages().agentTool());
  RequestLedger ledger_;
  PageModel model_;
  std::int64_t cartEvents_ = 0;
  int errorEvents_ = 0;
  int asked_ = 0;
  int askedInCompletions_ = 0;
  int refused_ = 0;
};

void RequestSoak::preparePage() {
  std::ifstream file(CORVANE_SOAK_PAGES "/trouble_plan.js");
  const std::string plan(std::istreambuf_iterator<char>(file), {});
  SoakHost::run(*view_, plan + "({ seed: " + std::to_string(random_.below(1U << 31U)) +
                            ", perTimeOut: " + std::to_string(perTimeOut) + " });0");
  model_.begin(host_.evaluate(*view_, "agentTool.state()"));
}

void RequestSoak::askOne() {
  ++asked_;
  const Request request = makeRequest(static_cast<Operation>(random_.below(operationCount)), products_, random_);
  const std::size_t number = ledger_.asked(request);
  ask(*view_, request, products_,
      [self = shared_from_this(), number](std::string outcome) { self->completed(number, std::move(outcome)); });
}

void RequestSoak::completed(std::size_t number, std::string outcome) {
  ledger_.completed(number, std::move(outcome));
  const std::size_t chance = random_.below(10);
  const int more = chance < 6 ? 1 : chance == 6 ? 3 : 0;
  for (int count = 0; count < more && asked_ < total_ && ledger_.askedCount() < requestsInRound; ++count) {
    ++askedInCompletions_;
    askOne();
  }
}

void RequestSoak::compare() {
  const JsonValue said = host_.evaluate(*view_, "({ arrivals: soak.take(), state: agentTool.state() })");
  std::vector<Arrival> arrivals;
  const auto list = said.find("arrivals").value_or(JsonView());
  for (const JsonView arrival : list.elements()) arrivals.push_back(Arrival::read(arrival));
  ledger_.compare(arrivals, model_);
  checks_.areEqual(PageModel::stateOf(said.find("state").value_or(JsonView())), model_.state(), "the page's state");
  checks_.areEqual(std::to_string(cartEvents_), std::to_string(model_.cartEventCount()), "the cart's events");
}

/// Without a running call, and with a product that has no JSON form, all is refused inside the call.
void RequestSoak::askInVain() {
  const auto refuse = [&](const Request& request, const std::vector<Product>& products, const char* expected) {
    std::string outcome;
    ask(*view_, request, products, [&](std::string given) { outcome += given; });
    checks_.areEqual(outcome, expected, "a refusal");
    ++refused_;
  };
  const std::vector plain{Product(ProductFields{.currency = "EUR", .description = "Nothing", .locale = "de-CH"})};
  refuse({.operation = Operation::addProductToCall}, plain, "encoding");
  SoakHost::run(*view_, postScript(R"({eventType:"SDK_CALL_STATUS",data:{status:"CALL_SESSION_STATUS_PAUSED"}})"));
  host_.runUntil([&] { return view_->callSessionStatus() == CallSessionStatus::paused; });
  for (std::size_t operation = 0; operation < operationCount; ++operation) {
    refuse(makeRequest(static_cast<Operation>(operation), products_, random_), products_, "no call");
  }
  SoakHost::run(*view_, postScript(R"({eventType:"SDK_CALL_STATUS",data:{status:"CALL_SESSION_STATUS_RUNNING"}})"));
  host_.runUntil([&] { return view_->callSessionStatus() == CallSessionStatus::running; });
}

/// The page loads anew for it, twice.
void RequestSoak::askWithoutPostAction() {
  const auto setTrouble = [&](const char* kind, const char* condition) {
    SoakHost::run(*view_, std::string("agentTool.setTrouble({kind:'") + kind + "'});0");
    checks_.that(host_.waitForPage(*view_, std::string("!!window.agentTool && ") + condition), "the page loads anew");
  };
  setTrouble("noPostAction", "postAction === undefined");
  std::string outcome;
  view_->getCartStatus([&](const AgentResult<CartQuantities>& result) { outcome += outcomeOf(result); });
  host_.runUntil([&] { return !outcome.empty(); });
  checks_.areEqual(outcome, "time-out", "a request without postAction");
  checks_.areEqual(std::to_string(std::exchange(errorEvents_, 0)), "1", "its error");
  setTrouble("none", "typeof postAction === 'function'");
  preparePage();
}

void RequestSoak::run() {
  view_->setEventHandler([self = weak_from_this()](const AgentEvent& event) {
    const auto soak = self.lock();
    if (soak == nullptr) return;
    if (event.is<AgentEvent::ProductUpdateInCart>() || event.is<AgentEvent::ProductRemovedFromCart>()) {
      ++soak->cartEvents_;
    }
    if (event.is<AgentEvent::Error>()) ++soak->errorEvents_;
  });
  if (!checks_.that(host_.loadAndRun(*view_), "the page loads")) return;
  preparePage();
  MemoryLog memory("requests", total_, bounds);
  int withoutPostAction = 0;
  while (asked_ < total_) {
    memory.progress(asked_);
    const int first = std::min(total_ - asked_, 1 + static_cast<int>(random_.below(60)));
    for (int count = 0; count < first; ++count) askOne();
    if (!settle()) return;
    compare();
    if (random_.happensInPercent(5)) askInVain();
    if (asked_ > total_ / 3 * (withoutPostAction + 1) && withoutPostAction < 2) {
      ++withoutPostAction;
      askWithoutPostAction();
    }
  }
  memory.progress(asked_);
  checks_.that(errorEvents_ == 0, "no error is raised");
  std::printf("requests: %d asked, %d of them from within completions; %d timed out; %d refused at once\n", asked_,
              askedInCompletions_, static_cast<int>(ledger_.timeOutCount()) + withoutPostAction, refused_);
  checks_.that(host_.end(view_), "nothing holds the view");
  memory.conclude(checks_);
}

}  // namespace

void soakRequests(SoakHost& host, const PartOptions& options, Checks& checks) {
  auto products = demo::readProducts(CORVANE_SOAK_CATALOGUE);
  if (!checks.that(products.has_value(), "the products can be read")) return;
  std::make_shared<RequestSoak>(host, options, checks, *std::move(products))->run();
}

}  // namespace corvane::soak
