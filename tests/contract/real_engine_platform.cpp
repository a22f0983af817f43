#include "tests/contract/real_engine_platform.h"

#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "tests/support/main_context.h"

namespace corvane::contract {

namespace {

/// The words of the stand-in agent tool for a trouble.
std::string inWordsOfThePage(const simulation::PageTrouble::Value& trouble) {
  using Trouble = simulation::PageTrouble;
  constexpr std::array kindsInTheirOrder{
      "none",         "late",   "never",       "twice", "unknownIdentifier", "errorText", "wrongResultType",
      "reverseOrder", "throws", "noPostAction"};
  nlohmann::json words{{"kind", kindsInTheirOrder.at(trouble.index())}};
  if (const auto* late = std::get_if<Trouble::AnswersLate>(&trouble)) words["milliseconds"] = late->delay.count();
  if (const auto* error = std::get_if<Trouble::AnswersWithError>(&trouble)) words["text"] = error->text;
  return words.dump();
}

void run(const UIView& view, const std::string& script) {
  findWebView(view)->evaluateJavaScript(script, [](const EvaluationResult&) {});
}

}  // namespace

void TestPointer::moveInSteps(CGPoint to) {
  constexpr int steps = 8;
  const CGPoint from = position_;
  for (int step = 1; step <= steps; ++step) {
    const double part = static_cast<double>(step) / steps;
    move({from.x + (to.x - from.x) * part, from.y + (to.y - from.y) * part});
  }
}

std::string RealEnginePlatform::begin() {
  auto server = demo::LocalPageServer::start(CORVANE_TEST_PAGES);
  auto demoPages = demo::LocalPageServer::start(CORVANE_DEMO_PAGES);
  if (!server || !demoPages) return (server ? demoPages : server).error();
  server_ = *std::move(server);
  demoPages_ = *std::move(demoPages);
  return {};
}

std::function<void(const WKMediaCaptureRequest&, std::move_only_function<void(bool)>)> RealEnginePlatform::prompt() {
  return [this](const WKMediaCaptureRequest&, std::move_only_function<void(bool)> answer) {
    ++promptCount_;
    answer(promptAnswer_);
  };
}

std::string RealEnginePlatform::address(PageKind kind) {
  switch (kind) {
    case PageKind::agentTool:
      return demoPage("agent_tool/index.html");
    case PageKind::plain:
      return page("plain.html");
    case PageKind::closedPort:
      return closedPortAddress();
    case PageKind::breaksOff:
      return trouble_.address("page");
    case PageKind::silent:
      return trouble_.address("silent");
  }
  std::unreachable();
}

std::string RealEnginePlatform::page(std::string_view file) const { return server_->address(file); }
std::string RealEnginePlatform::demoPage(std::string_view file) const { return demoPages_->address(file); }

bool RealEnginePlatform::runUntil(const std::function<bool()>& condition) {
  return test::runMainContextUntil(condition, [this](bool mayBlock) { return iterate(mayBlock); });
}

EvaluationResult RealEnginePlatform::evaluate(const UIView& view, std::string_view script) {
  std::optional<EvaluationResult> result;
  findWebView(view)->evaluateJavaScript(script, [&](EvaluationResult given) { result = std::move(given); });
  if (!runUntil([&] { return result.has_value(); })) return std::unexpected(WebError{.description = "no result"});
  return *std::move(result);
}

void RealEnginePlatform::pagePostsValue(const UIView& view, std::string_view data) {
  run(view, "window.postMessage(" + std::string(data) + ", '*');0");
}

void RealEnginePlatform::pagePostsText(const UIView& view, std::string_view text) {
  pagePostsValue(view, nlohmann::json(text).dump());
}

void RealEnginePlatform::pageGetsMessageFromAnotherOrigin(const UIView& view, std::string_view data) {
  run(view, R"({
    window.foreignMessages = 0;
    addEventListener("message", (event) => { if (event.origin !== origin) ++window.foreignMessages; });
    const poster = new URL("foreign_poster.html", location.href);
    poster.hostname = "localhost";
    poster.hash = encodeURIComponent(JSON.stringify()" +
                std::string(data) + R"());
    const frame = document.createElement("iframe");
    frame.src = poster;
    document.body.append(frame);
  } 0)");
  static_cast<void>(runUntil([&] {
    const auto count = evaluate(view, "window.foreignMessages");
    return count && count->integer().value_or(0) > 0;
  }));
}

void RealEnginePlatform::pageFloods(const UIView& view, std::string_view data) {
  run(view,
      "setInterval(() => { for (let i = 0; i < 50; ++i) window.postMessage(" + std::string(data) + ", '*'); }, 0);0");
}

bool RealEnginePlatform::pageCaptures(const UIView& view) {
  run(view, R"({
    window.captured = null;
    navigator.mediaDevices.getUserMedia({ video: true, audio: true })
        .then(() => { window.captured = true; }, () => { window.captured = false; });
  } 0)");
  std::optional<bool> captured;
  static_cast<void>(runUntil([&] {
    const auto value = evaluate(view, "window.captured");
    captured = value ? value->boolean() : std::nullopt;
    return captured.has_value();
  }));
  return captured.value_or(false);
}

void RealEnginePlatform::pageHasTrouble(const UIView& view, const simulation::PageTrouble::Value& trouble) {
  run(view, "agentTool.setTrouble(" + inWordsOfThePage(trouble) + ");0");
  if (!std::holds_alternative<simulation::PageTrouble::HasNoPostAction>(trouble)) return;
  // The page loads anew for it.
  static_cast<void>(runUntil([&] {
    const auto isGone = evaluate(view, "postAction === undefined && !!window.agentTool");
    return isGone && isGone->boolean().value_or(false);
  }));
}

std::vector<RealEngineMaker> realEngines() {
  return {
#ifdef CORVANE_HAS_GTK
      gtkEngine(),
#endif
#ifdef CORVANE_HAS_QT
      qtEngine(),
#endif
  };
}

std::vector<RealEngineMaker> surfaces() {
  auto makers = realEngines();
#ifdef CORVANE_HAS_QT
  makers.push_back(quickEngine());
#endif
  return makers;
}

}  // namespace corvane::contract
