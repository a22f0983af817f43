/// The web engine: one page with its scripts, channels and loads.
#pragma once

#include <functional>
#include <memory>
#include <string_view>

#include "corvane/platform/web/web_engine.h"

namespace corvane::qt {

struct EngineContext;
class PageView;
class SurfaceHost;

/// Carries a web view with Qt WebEngine. It works in no window, too: pages load, run their scripts and post messages.
///
/// Ownership: owned by its web view. At its end the page ends, and pending evaluations fail later.
/// Threads:   main thread only.
/// Failure:   as every engine.
class QtWebEngine final : public WebEngine {
 public:
  QtWebEngine(const WKWebViewConfiguration& configuration, std::weak_ptr<WebEngineClient> client,
              std::shared_ptr<EngineContext> context);
  QtWebEngine(const QtWebEngine&) = delete;
  QtWebEngine& operator=(const QtWebEngine&) = delete;
  ~QtWebEngine() override;

  void load(const URLRequest& request) override;
  void evaluate(std::string_view script, EvaluationCompletion completion) override;
  void setInteractionEnabled(bool isEnabled) override { isInteractive_ = isEnabled; }
  /// Works on the page that is there and on later ones. Scripts of the page can still scroll it.
  void setScrollEnabled(bool isEnabled) override;
  [[nodiscard]] CaptureState captureState(AVMediaType mediaType) const override;
  /// Heeded by scripts of ours in the page, so that a page that wants to can evade it.
  void setCaptureMuted(AVMediaType mediaType, bool isMuted) override;

  [[nodiscard]] bool isInteractive() const { return isInteractive_; }
  /// The page's own widget, which is never on screen.
  [[nodiscard]] PageView& view() const;
  /// The surface that shows the page, and what is to be called when the page looks different.
  void setSurface(std::shared_ptr<SurfaceHost> surface, std::function<void()> changed);
  /// Null for a page that none shows.
  [[nodiscard]] const std::shared_ptr<SurfaceHost>& surface() const;
  /// The user has clicked, typed or touched in the page.
  void noteUserAction();

 private:
  struct Parts;

  std::unique_ptr<Parts> parts_;
  bool isInteractive_ = true;
};

}  // namespace corvane::qt
