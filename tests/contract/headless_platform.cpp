#include <chrono>
#include <map>

#include "corvane/platform/headless/headless_backend.h"
#include "corvane/simulation/simulated_agent_tool.h"
#include "tests/contract/contract_platform.h"

namespace corvane::contract {

namespace {

using simulation::SimulatedAgentTool;

class HeadlessPlatform final : public ContractPlatform {
 public:
  std::string address(PageKind kind) override {
    return "https://pages.example/" + std::to_string(static_cast<int>(kind));
  }

  const std::shared_ptr<UIWindow>& window() override { return window_; }

  void providePages(const std::shared_ptr<UIView>& view) override {
    const auto page = SimulatedAgentTool::attach(view);
    pages_[view.get()] = page;
    page->setLoadPlan([this, agentView = std::weak_ptr(std::dynamic_pointer_cast<VelnorAgentView>(view)),
                       weakPage = std::weak_ptr(page)](std::string_view url) -> SimulatedAgentTool::LoadOutcome {
      using Tool = SimulatedAgentTool;
      ++loadCount_;
      const auto is = [&](PageKind kind) { return url.starts_with(address(kind)); };
      if (is(PageKind::closedPort)) return Tool::FailsBeforeAnythingArrived{{.kind = WebError::Kind::cannotLoad}};
      if (is(PageKind::silent)) return Tool::FailsBeforeAnythingArrived{{.kind = WebError::Kind::timedOut}};
      if (is(PageKind::breaksOff)) return Tool::Fails{{.kind = WebError::Kind::cannotLoad}};
      if (is(PageKind::agentTool)) return Tool::Finishes{};
      const std::string booking = agentView.lock()->connectId().value();
      backend_->runLoop().post([weakPage, booking] {
        const auto alive = weakPage.lock();
        if (alive)
          alive->postValue(R"({"eventType":"SDK_REFRESH_SSO_TOKEN","data":{"responseId":")" + booking + "\"}}");
      });
      return Tool::Finishes{};
    });
    auto& engine = *headless::HeadlessWebEngine::of(*view);
    const auto loads = engine.recordsOf<headless::HeadlessWebEngine::LoadRequested>();
    if (!loads.empty()) engine.load(loads.back().request);
  }

  bool runUntil(const std::function<bool()>& condition) override {
    for (int step = 0; step < 1000 && !condition(); ++step) backend_->runLoop().advance(std::chrono::milliseconds(10));
    return condition();
  }

  void pagePostsValue(const UIView& view, std::string_view data) override { page(view).postValue(data); }
  void pagePostsText(const UIView& view, std::string_view text) override { page(view).postText(text); }
  void pageGetsMessageFromAnotherOrigin(const UIView& view, std::string_view data) override {
    page(view).postValue(data, SimulatedAgentTool::Origin::another);
  }
  void pageFloods(const UIView& view, std::string_view data) override {
    flood(pages_.at(&view), std::string(data), loadCount_);
  }
  bool pageCaptures(const UIView& view) override {
    bool isGranted = false;
    headless::HeadlessWebEngine::of(view)->requestCapture(
        WKMediaCaptureType::cameraAndMicrophone, [&](WKPermissionDecision decision) {
          if (decision == WKPermissionDecision::prompt) ++promptCount_;
          isGranted =
              decision == WKPermissionDecision::grant || (decision == WKPermissionDecision::prompt && promptAnswer_);
        });
    return isGranted;
  }
  void pageHasTrouble(const UIView& view, const simulation::PageTrouble::Value& trouble) override {
    page(view).setTrouble(trouble);
  }
  void pageLosesItsProcess(const UIView& view) override { headless::HeadlessWebEngine::of(view)->terminateProcess(); }

  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) override {
    backend_->setCaptureAuthorization(mediaType, status);
  }
  void setPromptAnswer(bool isAllowed) override { promptAnswer_ = isAllowed; }
  int promptCount() const override { return promptCount_; }

 private:
  void flood(const std::shared_ptr<SimulatedAgentTool>& page, const std::string& text, int load) {
    backend_->runLoop().schedule(std::chrono::milliseconds(1), [=, this] {
      // It ends with its document, and with any other: no test has two that matter.
      if (load != loadCount_ || ++floodCount_ > 5000) return;
      page->postValue(text);
      flood(page, text, load);
    });
  }

  SimulatedAgentTool& page(const UIView& view) { return *pages_.at(&view); }

  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install().value();
  std::shared_ptr<UIWindow> window_ = UIWindow::create({{0, 0}, {390, 844}});
  std::map<const UIView*, std::shared_ptr<SimulatedAgentTool>> pages_;
  bool promptAnswer_ = false;
  int promptCount_ = 0;
  int floodCount_ = 0;
  int loadCount_ = 0;
};

}  // namespace

PlatformMaker headlessPlatform() {
  return {"Headless", [](std::string&) { return std::make_unique<HeadlessPlatform>(); }};
}

}  // namespace corvane::contract
