#include "corvane/platform/gtk/gtk_page_settings.h"

#include <string>
#include <string_view>
#include <variant>

#include "corvane/platform/foundation/diagnostics.h"
#include "corvane/platform/foundation/match.h"
#include "corvane/platform/gtk/gtk_evaluation.h"

namespace corvane::gtk {

namespace {

using UserScriptHandle = CHandle<WebKitUserScript, webkit_user_script_unref>;
using FeatureListHandle = CHandle<WebKitFeatureList, webkit_feature_list_unref>;

/// A page that no window shows at the moment would have its timers slowed down to one a second. A call may be going
/// on in it, though. The feature has no setting of its own and may be absent.
void keepTimersOfHiddenPages(WebKitSettings* settings) {
  const FeatureListHandle features(webkit_settings_get_all_features());
  for (gsize index = 0; index < webkit_feature_list_get_length(features.get()); ++index) {
    WebKitFeature* feature = webkit_feature_list_get(features.get(), index);
    if (std::string_view(webkit_feature_get_identifier(feature)) == "HiddenPageDOMTimerThrottling") {
      webkit_settings_set_feature_enabled(settings, feature, FALSE);
    }
  }
}

void addScript(WebKitUserContentManager* manager, const WKUserScript& script) {
  const bool isAtStart = script.injectionTime == WKUserScriptInjectionTime::atDocumentStart;
  const UserScriptHandle handle(webkit_user_script_new(
      script.source.c_str(),
      script.isForMainFrameOnly ? WEBKIT_USER_CONTENT_INJECT_TOP_FRAME : WEBKIT_USER_CONTENT_INJECT_ALL_FRAMES,
      isAtStart ? WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_START : WEBKIT_USER_SCRIPT_INJECT_AT_DOCUMENT_END, nullptr,
      nullptr));
  webkit_user_content_manager_add_script(manager, handle.get());
}

/// Looks at one member only: to turn a whole message into JSON costs more than all the rest of its way.
bool isFilteredOut(JSCValue* message, const WKUserContentController::MessageFilter& filter) {
  if (jsc_value_is_object(message) == FALSE) return false;
  const auto member = GObjectHandle<JSCValue>::adopt(jsc_value_object_get_property(message, filter.member.c_str()));
  if (jsc_value_is_string(member.get()) == FALSE) return false;
  const GTextHandle text(jsc_value_to_string(member.get()));
  return !filter.accepts(text.get());
}

SignalConnection addChannel(WebKitUserContentManager* manager, const WKUserContentController::MessageChannel& channel,
                            const std::weak_ptr<WebEngineClient>& client, const std::weak_ptr<const PageLoader>& loader,
                            std::size_t longestMessage) {
  const std::string& name = channel.name;
  // Connected first, so that no page can post before anybody listens.
  auto connection = SignalConnection::make<void(WebKitUserContentManager*, JSCValue*)>(
      manager, ("script-message-received::" + name).c_str(),
      [client, channel, loader, longestMessage](WebKitUserContentManager*, JSCValue* value) {
        const auto current = loader.lock();
        if (current == nullptr || !current->isPageHeard()) return;
        if (channel.filter && isFilteredOut(value, *channel.filter)) return;
        const GTextHandle text(jsc_value_to_json(value, 0));
        if (text != nullptr && std::string_view(text.get()).size() > longestMessage) {
          return diagnose(Diagnostic::Kind::messageDropped,
                          [] { return std::string("a message longer than allowed"); });
        }
        if (const auto receiver = client.lock()) {
          receiver->engineDidReceiveMessage(channel.name, jsonOf(text.get()).value_or(JsonValue()));
        }
      });
  webkit_user_content_manager_register_script_message_handler(manager, name.c_str(), nullptr);
  return connection;
}

}  // namespace

GObjectHandle<WebKitSettings> makeSettings(const WKWebViewConfiguration& configuration, const BackendOptions& options) {
  auto settings = GObjectHandle<WebKitSettings>::adopt(webkit_settings_new());
  webkit_settings_set_enable_media_stream(settings.get(), TRUE);
  // Off at first, also in engines that were built with it.
  webkit_settings_set_enable_webrtc(settings.get(), TRUE);
  webkit_settings_set_enable_mock_capture_devices(settings.get(), options.usesMockCaptureDevices);
  webkit_settings_set_media_playback_allows_inline(settings.get(), configuration.allowsInlineMediaPlayback);
  // The full screen of a page would be that of the app's window.
  webkit_settings_set_enable_fullscreen(settings.get(), FALSE);
  // The engine would drop the wish for a window in silence; whoever asks the client does not.
  webkit_settings_set_javascript_can_open_windows_automatically(settings.get(), TRUE);
  webkit_settings_set_enable_developer_extras(settings.get(), options.allowsDeveloperTools);
  if (!options.userAgentSuffix.empty()) {
    const std::string agent =
        std::string(webkit_settings_get_user_agent(settings.get())) + " " + options.userAgentSuffix;
    webkit_settings_set_user_agent(settings.get(), agent.c_str());
  }
  keepTimersOfHiddenPages(settings.get());
  return settings;
}

std::vector<SignalConnection> installContents(WebKitUserContentManager* manager,
                                              const WKUserContentController& controller,
                                              const std::weak_ptr<WebEngineClient>& client,
                                              const std::weak_ptr<const PageLoader>& loader,
                                              std::size_t longestMessage) {
  std::vector<SignalConnection> connections;
  for (const auto& content : controller.contents()) {
    match(
        content, [&](const WKUserScript& script) { addScript(manager, script); },
        [&](const WKUserContentController::MessageChannel& channel) {
          connections.push_back(addChannel(manager, channel, client, loader, longestMessage));
        });
  }
  return connections;
}

void removeContents(WebKitUserContentManager* manager, const WKUserContentController& controller) {
  for (const auto& content : controller.contents()) {
    if (const auto* channel = std::get_if<WKUserContentController::MessageChannel>(&content)) {
      webkit_user_content_manager_unregister_script_message_handler(manager, channel->name.c_str(), nullptr);
    }
  }
  webkit_user_content_manager_remove_all_scripts(manager);
}

}  // namespace corvane::gtk
