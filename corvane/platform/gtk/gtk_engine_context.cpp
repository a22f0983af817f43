#include "corvane/platform/gtk/gtk_engine_context.h"

#include <filesystem>
#include <system_error>
#include <vector>

namespace corvane::gtk {

namespace {

/// What tells this app from others. An app that gives itself no name goes by its program file: apps that shared a
/// folder would share their users' cookies.
std::filesystem::path appName() {
  std::error_code unknown;
  const char* given = g_get_prgname();
  const auto program = given != nullptr ? given : std::filesystem::read_symlink("/proc/self/exe", unknown);
  return program.has_filename() ? program.filename() : "corvane";
}

/// A folder of this app and this library, below one of the user's folders.
std::filesystem::path folderOfApp(const char* userFolder) {
  return std::filesystem::path(userFolder) / appName() / "pages";
}

GObjectHandle<WebKitNetworkSession> makeNetworkSession(const BackendOptions& options) {
  using Session = GObjectHandle<WebKitNetworkSession>;
  if (options.isEphemeral) return Session::adopt(webkit_network_session_new_ephemeral());
  const std::filesystem::path chosen = options.dataFolder;
  const std::filesystem::path data = chosen.empty() ? folderOfApp(g_get_user_data_dir()) : chosen / "data";
  const std::filesystem::path cache = chosen.empty() ? folderOfApp(g_get_user_cache_dir()) : chosen / "cache";
  Session session = Session::adopt(webkit_network_session_new(data.c_str(), cache.c_str()));
  // Unlike everything else the engine stores, cookies stay in memory until they are given a file.
  webkit_cookie_manager_set_persistent_storage(webkit_network_session_get_cookie_manager(session.get()),
                                               (data / "cookies.sqlite").c_str(),
                                               WEBKIT_COOKIE_PERSISTENT_STORAGE_SQLITE);
  return session;
}

}  // namespace

EngineContext::EngineContext(const BackendOptions& chosen)
    : options(chosen),
      runLoop(std::make_shared<GlibRunLoop>()),
      webContext(GObjectHandle<WebKitWebContext>::adopt(webkit_web_context_new())),
      networkSession(makeNetworkSession(chosen)),
      // Left alone, the engine saves every download into the user's download folder without a word.
      downloads(SignalConnection::make<void(WebKitNetworkSession*, WebKitDownload*)>(
          networkSession.get(), "download-started",
          [](WebKitNetworkSession*, WebKitDownload* download) { webkit_download_cancel(download); })) {
  if (!options.languages.empty()) {
    std::vector<const char*> languages;
    languages.reserve(options.languages.size() + 1);
    for (const std::string& language : options.languages) languages.push_back(language.c_str());
    languages.push_back(nullptr);
    webkit_web_context_set_preferred_languages(webContext.get(), languages.data());
  }
  if (!options.proxy.empty()) {
    const CHandle<WebKitNetworkProxySettings, webkit_network_proxy_settings_free> proxy(
        webkit_network_proxy_settings_new(options.proxy.c_str(), nullptr));
    webkit_network_session_set_proxy_settings(networkSession.get(), WEBKIT_NETWORK_PROXY_MODE_CUSTOM, proxy.get());
  }
}

}  // namespace corvane::gtk
