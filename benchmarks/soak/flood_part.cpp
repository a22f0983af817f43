#include <charconv>
#include <cstdint>
#include <cstdio>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "benchmarks/soak/memory_log.h"
#include "benchmarks/soak/outcome.h"
#include "benchmarks/soak/parts.h"
#include "benchmarks/soak/random_source.h"

namespace corvane::soak {

namespace {

constexpr int allMessages = 100'000;
constexpr GrowthBounds bounds{.heap = 1, .resident = 25};

/// A page and its frame post as fast as they can while the app goes on asking.
class FloodSoak {
 public:
  FloodSoak(SoakHost& host, const PartOptions& options, Checks& checks)
      : host_(host), checks_(checks), random_(options.seed), perSource_(allMessages * options.percent / 100 / 2) {}

  void run();

 private:
  void receive(const AgentEvent& event);
  void receiveMark(std::string_view mark);
  void askOn();

  SoakHost& host_;
  Checks& checks_;
  RandomSource random_;
  int perSource_;
  std::shared_ptr<VelnorAgentView> view_ = host_.addView(host_.pages().soakPage("flood.html"));
  /// How many valid events of each source have come.
  std::map<std::string, std::int64_t, std::less<>> received_;
  bool isOver_ = false;
  int requests_ = 0;
  bool isAsking_ = false;
};

/// Every valid event of the flood bears a mark: who posted it, and its number.
void FloodSoak::receive(const AgentEvent& event) {
  if (const auto* token = event.getIf<AgentEvent::RefreshSsoToken>()) return receiveMark(token->responseId);
  if (const auto* update = event.getIf<AgentEvent::ProductUpdateInCart>()) return receiveMark(update->data.sku);
  if (const auto* removal = event.getIf<AgentEvent::ProductRemovedFromCart>()) return receiveMark(removal->sku);
  if (const auto* removal = event.getIf<AgentEvent::ProductRemovedFromCall>()) return receiveMark(removal->sku);
  if (const auto* client = event.getIf<AgentEvent::ClientLocale>()) return receiveMark(client->locale);
  const bool isOfTheLoad = event.is<AgentEvent::DidLoad>() || event.is<AgentEvent::CallStatusUpdate>();
  checks_.that(isOfTheLoad && received_.empty(), "no other event comes");
}

void FloodSoak::receiveMark(std::string_view mark) {
  const auto end = mark.find('|');
  const std::string_view source = mark.substr(0, end);
  if (!checks_.that(source == "page" || source == "frame", "only valid events come")) return;
  std::int64_t number = -1;
  std::from_chars(mark.data() + end + 1, mark.data() + mark.size(), number);
  auto& next = received_.try_emplace(std::string(source)).first->second;
  checks_.that(number == next, "the events of a source come in their order, and each once");
  next = number + 1;
}

void FloodSoak::askOn() {
  if (isOver_) return;
  isAsking_ = true;
  view_->isProductInCart("S", [this](const AgentResult<bool>& answer) {
    ++requests_;
    isAsking_ = false;
    checks_.areEqual(outcomeOf(answer), "true", "a request in the flood");
    askOn();
  });
}

void FloodSoak::run() {
  view_->setEventHandler([this](const AgentEvent& event) { receive(event); });
  if (!checks_.that(host_.loadAndRun(*view_), "the page loads")) return;
  const bool hasFrame = host_.waitForPage(*view_,
                                          "!!document.getElementById('frame')?.contentWindow?.beginFlood && "
                                          "document.getElementById('frame').contentDocument.readyState === "
                                          "'complete'");
  if (!checks_.that(hasFrame, "the frame loads")) return;
  MemoryLog memory("flood", 2 * perSource_, bounds);
  memory.progress(0);
  host_.gaps().restart();
  const auto begin = std::chrono::steady_clock::now();
  const auto order = [&](const char* window) {
    return std::string(window) + ".beginFlood({ total: " + std::to_string(perSource_) +
           ", seed: " + std::to_string(random_.below(1U << 31U)) + " });";
  };
  SoakHost::run(*view_, order("window") + order("document.getElementById('frame').contentWindow") + "0");
  askOn();
  bool isComplete = false;
  std::string posted;
  while (!isComplete && std::chrono::steady_clock::now() - begin < std::chrono::minutes(10)) {
    const JsonValue said = host_.evaluate(*view_, "[flood, document.getElementById('frame').contentWindow.flood]");
    isComplete = said.isArray();
    int done = 0;
    posted.clear();
    for (const JsonView source : said.elements()) {
      const auto number = [&](const char* key) { return source.find(key).value_or(JsonView()).integer().value_or(0); };
      isComplete = isComplete && source.find("isOver").value_or(JsonView()).boolean().value_or(false);
      done += static_cast<int>(number("posted"));
      posted += std::to_string(number("valid")) + " ";
    }
    memory.progress(done);
    host_.gaps().skip();
  }
  checks_.that(isComplete, "the flood ends");
  const auto received = [this] {
    return std::to_string(received_["page"]) + " " + std::to_string(received_["frame"]) + " ";
  };
  host_.runUntil([&] { return received() == posted; });
  const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
  isOver_ = true;
  host_.runUntil([this] { return !isAsking_; });
  checks_.areEqual(received(), posted, "every valid event has come");
  std::printf(
      "flood: %d messages posted in %.1f s, %s(page, frame) of them valid; %d requests answered meanwhile; "
      "longest gap of the main loop %d ms\n",
      2 * perSource_, seconds.count(), posted.c_str(), requests_, static_cast<int>(host_.gaps().longest().count()));
  view_->removeFromSuperview();
  view_.reset();
  memory.conclude(checks_);
}

}  // namespace

void soakFlood(SoakHost& host, const PartOptions& options, Checks& checks) { FloodSoak(host, options, checks).run(); }

}  // namespace corvane::soak
