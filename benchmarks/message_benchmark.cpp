// From the JSON text of a page message to the called event handler.
#include <benchmark/benchmark.h>
#include <simdjson.h>

#include <array>
#include <memory>
#include <string>
#include <string_view>

#include "benchmarks/allocation_counter.h"
#include "corvane/agent_view/script_bridge.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/headless/headless_backend.h"

namespace corvane::benchmarks {
namespace {

struct Message {
  std::string_view name;
  std::string_view text;
};

constexpr std::array messages{
    Message{"cart update of 100 bytes",
            R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"SHIRT-OXFORD-M-BLUE-123456","quantity":2}})"},
    Message{"call status", R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_RUNNING"}})"},
    Message{"call started",
            R"({"eventType":"SDK_CALL_STARTED","data":{"clientPlatform":{"language":{"locale":"de-CH"}}}})"},
    Message{"removed from call",
            R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CALL","data":{"sku":"SHIRT-OXFORD-M-BLUE","quantity":1}})"},
    Message{"removed from cart",
            R"({"eventType":"SDK_PRODUCT_REMOVED_FROM_CART","data":{"sku":"SHIRT-OXFORD-M-BLUE","quantity":0}})"},
    Message{"refresh token",
            R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":"9d2f8c4e-1b7a-4c56-8d1e-2f3a4b5c6d7e"}})"},
    Message{"unauthorized", R"({"eventType":"SDK_UNAUTHORIZED"})"},
    Message{"unknown type", R"({"eventType":"SDK_SOMETHING_NEW","data":{"sku":"SHIRT-OXFORD-M-BLUE"}})"},
    Message{"refused status", R"({"eventType":"SDK_CALL_STATUS","data":{"status":"CALL_SESSION_STATUS_NEW"}})"},
};

/// A view whose handler counts its events.
class CountingHost {
 public:
  CountingHost() {
    view_->setEventHandler(
        [this](const AgentEvent& event) { benchmark::DoNotOptimize(count_ += event.value().index()); });
  }
  void receive(std::string_view text) { engine_->postMessage(agentEventChannel, text); }

 private:
  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
  std::shared_ptr<VelnorAgentView> view_ = VelnorAgentView::create(Region::eu(), "organisation", false);
  headless::HeadlessWebEngine* engine_ = headless::HeadlessWebEngine::of(*view_);
  std::size_t count_ = 0;
};

void setBytes(benchmark::State& state, std::size_t size) {
  state.SetBytesProcessed(static_cast<std::int64_t>(size) * state.iterations());
}

void parseAlone(benchmark::State& state) {
  const Message& message = messages[static_cast<std::size_t>(state.range(0))];
  state.SetLabel(std::string(message.name));
  simdjson::dom::parser parser;
  for (auto _ : state) {
    simdjson::dom::element root;
    benchmark::DoNotOptimize(parser.parse(message.text.data(), message.text.size()).get(root));
  }
  setBytes(state, message.text.size());
}
BENCHMARK(parseAlone)->DenseRange(0, messages.size() - 1);

void textToHandler(benchmark::State& state) {
  const Message& message = messages[static_cast<std::size_t>(state.range(0))];
  state.SetLabel(std::string(message.name));
  CountingHost host;
  host.receive(message.text);
  {
    const AllocationReport report(state);
    for (auto _ : state) host.receive(message.text);
  }
  setBytes(state, message.text.size());
}
BENCHMARK(textToHandler)->DenseRange(0, messages.size() - 1);

/// The payload holds members that nobody reads, up to a message of the given size.
void largeMessage(benchmark::State& state) {
  std::string text = R"({"eventType":"SDK_PRODUCT_UPDATE_IN_CART","data":{"sku":"A","quantity":1,"more":[)";
  while (text.size() < static_cast<std::size_t>(state.range(0)))
    text += R"({"name":"something","value":[1,2.5,true]},)";
  text.back() = ']';
  text += "}}";
  CountingHost host;
  for (auto _ : state) host.receive(text);
  setBytes(state, text.size());
  state.SetComplexityN(state.range(0));
}
BENCHMARK(largeMessage)->RangeMultiplier(4)->Range(1 << 10, 1 << 20)->Complexity(benchmark::oN);

void messagesInARow(benchmark::State& state) {
  CountingHost host;
  for (auto _ : state) {
    for (std::int64_t index = 0; index < state.range(0); ++index) host.receive(messages[0].text);
  }
  state.SetItemsProcessed(state.range(0) * state.iterations());
  state.SetComplexityN(state.range(0));
}
BENCHMARK(messagesInARow)->Arg(1000)->Arg(10000)->Arg(100000)->Complexity(benchmark::oN);

}  // namespace
}  // namespace corvane::benchmarks
