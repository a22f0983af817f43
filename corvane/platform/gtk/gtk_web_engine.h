/// The web engine: one WebKit view with its scripts, channels and loads.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "corvane/platform/web/web_engine.h"

// The toolkit's own declaration, so that including this header does not pull the toolkit in.
struct _GtkWidget;
using GtkWidget = _GtkWidget;

namespace corvane::gtk {

struct EngineContext;

/// Carries a web view with WebKitGTK. It works in no window, too: pages load, run their scripts and post messages.
///
/// Ownership: owned by its web view. It holds its widget, which surfaces adopt as a child. At its end the page ends,
///            pending evaluations fail later, and the widget leaves its parent.
/// Threads:   main thread only.
/// Failure:   as every engine.
class GtkWebEngine final : public WebEngine {
 public:
  GtkWebEngine(const WKWebViewConfiguration& configuration, std::weak_ptr<WebEngineClient> client,
               std::shared_ptr<EngineContext> context);
  GtkWebEngine(const GtkWebEngine&) = delete;
  GtkWebEngine& operator=(const GtkWebEngine&) = delete;
  ~GtkWebEngine() override;

  void load(const URLRequest& request) override;
  void evaluate(std::string_view script, EvaluationCompletion completion) override;
  void setInteractionEnabled(bool isEnabled) override;
  /// Works on the page that is there and on later ones. Scripts of the page can still scroll it.
  void setScrollEnabled(bool isEnabled) override;
  [[nodiscard]] CaptureState captureState(AVMediaType mediaType) const override;
  void setCaptureMuted(AVMediaType mediaType, bool isMuted) override;

  /// The WebKit view.
  [[nodiscard]] GtkWidget* widget() const;
  void somethingWasDropped();
  /// Makes the widget a child of this parent. A widget that was taken apart loses its picture, here or by a move of
  /// something around it. The page is made to draw itself again when it is next seen.
  void moveTo(GtkWidget* parent) const;

 private:
  struct Parts;

  std::unique_ptr<Parts> parts_;
};

}  // namespace corvane::gtk
