/// What a backend must offer so that the contract tests can run on it, pages included.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "corvane/corvane.h"
#include "corvane/platform/web/wk_web_view.h"
#include "corvane/simulation/page_trouble.h"

namespace corvane::contract {

enum class PageKind {
  agentTool,   ///< answers actions as the agent tool does
  plain,       ///< posts SDK_REFRESH_SSO_TOKEN with its "connectId" as soon as it runs
  closedPort,  ///< nobody listens there
  breaksOff,   ///< the server hangs up in the middle of the page
  silent,      ///< the server takes the request and says nothing
};

/// An installed backend with pages to load.
class ContractPlatform {
 public:
  virtual ~ContractPlatform() = default;

  [[nodiscard]] virtual std::string address(PageKind kind) = 0;
  /// The window on screen, as wide and high as a phone.
  [[nodiscard]] virtual const std::shared_ptr<UIWindow>& window() = 0;
  /// Lets a view find its pages, also the one that it has asked for already.
  virtual void providePages(const std::shared_ptr<UIView>& view) = 0;
  /// Puts a view on screen, and lets it find its pages.
  void show(const std::shared_ptr<UIView>& view) {
    window()->addSubview(view);
    providePages(view);
  }
  /// Lets the backend work until the condition holds; false when it does not for so long that it never will.
  [[nodiscard]] virtual bool runUntil(const std::function<bool()>& condition) = 0;

  /// The page that a view shows does something. `data` is JSON text.
  virtual void pagePostsValue(const UIView& view, std::string_view data) = 0;
  virtual void pagePostsText(const UIView& view, std::string_view text) = 0;
  /// Returns when the page's own window has got the message.
  virtual void pageGetsMessageFromAnotherOrigin(const UIView& view, std::string_view data) = 0;
  /// The page posts the same value again and again, as fast as it can.
  virtual void pageFloods(const UIView& view, std::string_view data) = 0;
  /// The page asks for the camera and the microphone; returns whether it got them.
  [[nodiscard]] virtual bool pageCaptures(const UIView& view) = 0;
  virtual void pageLosesItsProcess(const UIView& view) = 0;
  /// Lets the answers of an agent tool page go wrong from now on; returns when the page is ready for it.
  virtual void pageHasTrouble(const UIView& view, const simulation::PageTrouble::Value& trouble) = 0;

  virtual void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) = 0;
  /// What the user says when the engine asks; counts how often it did.
  virtual void setPromptAnswer(bool isAllowed) = 0;
  [[nodiscard]] virtual int promptCount() const = 0;
};

/// The first web view inside a view.
[[nodiscard]] std::shared_ptr<WKWebView> findWebView(const UIView& view);

struct PlatformMaker {
  std::string name;
  /// Null, and a reason, where the platform cannot run here.
  std::function<std::unique_ptr<ContractPlatform>(std::string& reason)> make;
};

inline void PrintTo(const PlatformMaker& maker, std::ostream* out) { *out << maker.name; }

[[nodiscard]] PlatformMaker headlessPlatform();
/// Every platform that is built.
[[nodiscard]] std::vector<PlatformMaker> platforms();

}  // namespace corvane::contract
