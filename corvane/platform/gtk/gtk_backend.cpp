#include "corvane/platform/gtk/gtk_backend.h"

#include <gtk/gtk.h>

#include <utility>

#include "corvane/platform/capture/stored_authorization.h"
#include "corvane/platform/engine/graphics_processor.h"
#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/gtk/gtk_capabilities.h"
#include "corvane/platform/gtk/gtk_engine_context.h"
#include "corvane/platform/gtk/gtk_text.h"
#include "corvane/platform/gtk/gtk_web_engine.h"
#include "corvane/platform/views/ui_window_scene.h"

namespace corvane::gtk {

namespace {

class EngineFactory final : public WebEngineFactory {
 public:
  explicit EngineFactory(std::shared_ptr<EngineContext> context) : context_(std::move(context)) {}

  std::unique_ptr<WebEngine> makeEngine(const WKWebViewConfiguration& configuration,
                                        std::weak_ptr<WebEngineClient> client) override {
    return std::make_unique<GtkWebEngine>(configuration, std::move(client), context_);
  }

  void queryCapabilities(std::move_only_function<void(const EngineCapabilities&)> completion) override {
    findCapabilities(context_, engine::hasGraphicsProcessor(), std::move(completion));
  }

 private:
  std::shared_ptr<EngineContext> context_;
};

}  // namespace

struct Backend::Parts {
  explicit Parts(const BackendOptions& options) : context(std::make_shared<EngineContext>(options)), factory(context) {}

  std::shared_ptr<EngineContext> context;
  EngineFactory factory;
  StoredAuthorization authorization;
  GtkTextMeasurer measurer;
  PlatformInstallation installation{{.runLoop = context->runLoop.get(),
                                     .engines = &factory,
                                     .capture = &authorization,
                                     .text = &measurer,
                                     .scene = UIWindowScene::create()}};
};

std::expected<std::unique_ptr<Backend>, std::string> Backend::install(const BackendOptions& options) {
  if (auto refusal = PlatformInstallation::refusal(); !refusal.empty()) return std::unexpected(std::move(refusal));
  if (!engine::hasGraphicsProcessor()) g_setenv("GSK_RENDERER", "cairo", FALSE);
  // Without a display the toolkit would crash as soon as a web view is made.
  if (gtk_init_check() == FALSE) {
    return std::unexpected("There is no display: neither WAYLAND_DISPLAY nor DISPLAY leads to a running server");
  }
  return std::unique_ptr<Backend>(new Backend(std::make_unique<Parts>(options)));
}

Backend::Backend(std::unique_ptr<Parts> parts) : parts_(std::move(parts)) {}

Backend::~Backend() = default;

void Backend::setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status) {
  parts_->authorization.set(mediaType, status);
}

void Backend::setCaptureDialogTexts(CaptureDialogTexts texts) {
  parts_->context->captureDialogTexts = std::move(texts);
}

void Backend::clearPageData(std::function<void()> completion) {
  WebKitWebsiteDataManager* const data =
      webkit_network_session_get_website_data_manager(parts_->context->networkSession.get());
  webkit_website_data_manager_clear(
      data, WEBKIT_WEBSITE_DATA_ALL, 0, nullptr,
      [](GObject* manager, GAsyncResult* result, gpointer given) noexcept {
        const std::unique_ptr<std::function<void()>> done(static_cast<std::function<void()>*>(given));
        webkit_website_data_manager_clear_finish(objectCast<WebKitWebsiteDataManager>(manager), result, nullptr);
        if (*done) (*done)();
      },
      std::make_unique<std::function<void()>>(std::move(completion)).release());
}

void Backend::setCapturePrompt(CapturePrompt prompt) { parts_->context->capturePrompt = std::move(prompt); }

}  // namespace corvane::gtk
