// From a call of the host app to the script that the web engine is handed, and requests that wait for each other.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "benchmarks/allocation_counter.h"
#include "benchmarks/product_samples.h"
#include "corvane/agent_view/request_channel.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/bridge/action_records.h"
#include "corvane/platform/capture/stored_authorization.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/foundation/uuid.h"
#include "corvane/platform/headless/headless_backend.h"

namespace corvane::benchmarks {
namespace {

using Clock = std::chrono::steady_clock;

std::string_view identifierIn(std::string_view script) {
  constexpr std::string_view before = R"("_id":")";
  return script.substr(script.rfind(before) + before.size(), 36);
}

JsonValue answerTo(std::string_view id) {
  return JsonValue::parse(R"({"eventType":"SDK_INTERNAL_UPDATE_PRODUCT_IN_CART_CALLBACK","data":{"_id":")" +
                          std::string(id) + R"("}})")
      .value();
}

/// Takes scripts and does nothing with them, so that only our own work is measured.
class IdleEngine final : public WebEngine {
 public:
  explicit IdleEngine(std::weak_ptr<WebEngineClient> client) : client_(std::move(client)) {}

  void load(const URLRequest& /*request*/) override {}
  void evaluate(std::string_view script, EvaluationCompletion completion) override {
    identifier_.assign(identifierIn(script));
    completion_ = std::move(completion);
  }
  void setInteractionEnabled(bool /*isEnabled*/) override {}
  void setScrollEnabled(bool /*isEnabled*/) override {}
  CaptureState captureState(AVMediaType /*mediaType*/) const override { return CaptureState::none; }
  void setCaptureMuted(AVMediaType /*mediaType*/, bool /*isMuted*/) override {}

  void receive(JsonValue message) { client_.lock()->engineDidReceiveMessage(agentEventChannel, std::move(message)); }
  /// The page answers the last action.
  void answer() {
    completion_(JsonValue());
    receive(answerTo(identifier_));
  }

 private:
  std::weak_ptr<WebEngineClient> client_;
  std::string identifier_;
  EvaluationCompletion completion_;
};

class IdleEngineFactory final : public WebEngineFactory {
 public:
  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& /*configuration*/,
                                        std::weak_ptr<WebEngineClient> client) override {
    auto made = std::make_unique<IdleEngine>(std::move(client));
    engine = made.get();
    return made;
  }
  void queryCapabilities(std::move_only_function<void(const EngineCapabilities&)> /*completion*/) override {}

  IdleEngine* engine = nullptr;
};

/// A view in a running call.
class CallingView {
 public:
  CallingView() {
    view = VelnorAgentView::create(Region::eu(), "organisation", false);
    factory_.engine->receive(
        JsonValue::parse(R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})").value());
  }

  /// Measures a request from the call to the end of the turn that hands its script to the engine, and answers it.
  template <class Request>
  std::chrono::duration<double> timeToEngine(Request request) {
    const std::uint64_t allocationsBefore = allocationCount();
    const auto begin = Clock::now();
    request();
    runLoop_.runUntilIdle();
    const auto end = Clock::now();
    allocations += allocationCount() - allocationsBefore;
    factory_.engine->answer();
    // Gets rid of the time limits of answered requests.
    if (++requests_ % 64 == 0) runLoop_.advance(RequestChannel::answerLimit);
    return end - begin;
  }

  std::shared_ptr<VelnorAgentView> view;
  std::uint64_t allocations = 0;

 private:
  headless::VirtualRunLoop runLoop_;
  IdleEngineFactory factory_;
  StoredAuthorization authorization_;
  PlatformInstallation installation_{{.runLoop = &runLoop_, .engines = &factory_, .capture = &authorization_}};
  int requests_ = 0;
};

void setAllocations(benchmark::State& state, std::uint64_t allocations) {
  state.counters["allocations"] =
      benchmark::Counter(static_cast<double>(allocations), benchmark::Counter::kAvgIterations);
}

/// `median` is that of the single calls, in nanoseconds: unlike the average it does not show what else the machine
/// does.
void cartActionToEngine(benchmark::State& state) {
  CallingView host;
  std::size_t answers = 0;
  std::vector<double> times;
  for (auto _ : state) {
    std::string sku = "SHIRT-OXFORD-M-BLUE-123456";
    const auto completion = [&](const std::optional<AgentError>& error) {
      if (!error) ++answers;
    };
    const auto time = host.timeToEngine([&] { host.view->updateProductInCart(std::move(sku), 2, completion); });
    state.SetIterationTime(time.count());
    if (times.size() < 100000) times.push_back(time.count() * 1e9);
  }
  if (answers != static_cast<std::size_t>(state.iterations())) state.SkipWithError("requests were left unanswered");
  std::ranges::nth_element(times, times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2));
  state.counters["median"] = times[times.size() / 2];
  setAllocations(state, host.allocations);
}
BENCHMARK(cartActionToEngine)->UseManualTime();

/// What the measurement above measures when there is nothing to do.
void clockAlone(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  for (auto _ : state) {
    const auto begin = Clock::now();
    backend->runLoop().runUntilIdle();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
  }
}
BENCHMARK(clockAlone)->UseManualTime();

void cartActionText(benchmark::State& state) {
  const SkuAction record(SkuData{._id = makeUuid(), .sku = "SHIRT-OXFORD-M-BLUE-123456", .quantity = 2}, nullptr,
                         Action::updateProductInCart);
  const AllocationReport report(state);
  for (auto _ : state) benchmark::DoNotOptimize(postActionScript(record.toJsonString().value()));
}
BENCHMARK(cartActionText);

void identifier(benchmark::State& state) {
  const AllocationReport report(state);
  for (auto _ : state) benchmark::DoNotOptimize(makeUuid());
}
BENCHMARK(identifier);

/// An added product, beside one encoding of it in the same breath: `encodings` is how many of them the whole way costs.
void addedProductToEngine(benchmark::State& state) {
  CallingView host;
  const Product product(makeProductFields(static_cast<std::size_t>(state.range(0))));
  std::chrono::duration<double> toEngine(0);
  std::chrono::duration<double> encoding(0);
  for (auto _ : state) {
    const auto begin = Clock::now();
    benchmark::DoNotOptimize(encodeJson(product));
    encoding += Clock::now() - begin;
    Product added = product;
    const auto time = host.timeToEngine([&] { host.view->addProductToCall(std::move(added), nullptr); });
    toEngine += time;
    state.SetIterationTime(time.count());
  }
  state.counters["encodings"] = toEngine / encoding;
  setAllocations(state, host.allocations);
}
BENCHMARK(addedProductToEngine)->Arg(100)->Arg(5000)->UseManualTime()->Unit(benchmark::kMicrosecond);

/// Stands where a view stands, with a page that answers at once.
class AnsweringView final : public RequestChannelDelegate, public std::enable_shared_from_this<AnsweringView> {
 public:
  bool hasActiveCall() const override { return true; }
  const CartQuantities& cart() const override { return cart_; }
  void evaluate(std::string_view script, EvaluationCompletion /*completion*/) override {
    RunLoop::main().post([this, id = std::string(identifierIn(script))] {
      channel->handleCallbackEvent(JsonValue::parse(R"({"_id":")" + id + "\"}").value());
    });
  }
  void scriptDidFail(const WebError& /*error*/) override {}

  std::shared_ptr<RequestChannel> channel;

 private:
  CartQuantities cart_;
};

/// Requests of which each but the first waits for those before it. `bytes` is what one of them takes while it waits,
/// its identifier included. The caller's strings and closures are so short that they take nothing of their own.
void waitingRequests(benchmark::State& state) {
  const auto backend = headless::Backend::install().value();
  const auto host = std::make_shared<AnsweringView>();
  host->channel = RequestChannel::create(host);
  const auto count = static_cast<std::size_t>(state.range(0));
  std::uint64_t bytes = 0;
  for (auto _ : state) {
    std::size_t answered = 0;
    const std::uint64_t bytesBefore = allocatedBytes();
    const auto begin = Clock::now();
    for (std::size_t place = 0; place < count; ++place) {
      host->channel->submit(std::make_shared<SkuAction>(
          SkuData{._id = makeUuid(), .sku = "A", .quantity = 2},
          [&answered, place](const std::optional<AgentError>& error) {
            if (!error && answered == place) ++answered;
          },
          Action::updateProductInCart));
    }
    bytes = allocatedBytes() - bytesBefore;
    backend->runLoop().runUntilIdle();
    state.SetIterationTime(std::chrono::duration<double>(Clock::now() - begin).count());
    if (answered != count) state.SkipWithError("requests were not admitted in their order");
    backend->runLoop().dropTasks();
  }
  state.counters["bytes"] = static_cast<double>(bytes) / static_cast<double>(count);
  state.SetItemsProcessed(state.range(0) * state.iterations());
  state.SetComplexityN(state.range(0));
}
BENCHMARK(waitingRequests)
    ->RangeMultiplier(10)
    ->Range(1000, 100000)
    ->UseManualTime()
    ->Unit(benchmark::kMicrosecond)
    ->Complexity(benchmark::oN);

}  // namespace
}  // namespace corvane::benchmarks
