/// The real-engine backend in which calls can take place: Qt for the screen and the run loop, Qt WebEngine for the
/// pages.
#pragma once

#include <cstddef>
#include <expected>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/capture/capture_authorization.h"
#include "corvane/platform/views/ui_color.h"
#include "corvane/platform/web/wk_ui_delegate.h"

namespace corvane::qt {

/// How the backend differs from what an app wants as a rule.
struct BackendOptions {
  /// Gives pages made-up cameras and microphones, for tests and for demos on machines without any. The engine reads
  /// this once, when the first backend of a program is installed.
  bool usesMockCaptureDevices = false;
  /// Forgets cookies, storage and caches when the backend ends, and writes nothing to disk. An app leaves this off, so
  /// that a user who signed in stays signed in. Tests turn it on, so that no run sees what an earlier one left.
  bool isEphemeral = false;
  /// Opens what a page opens in a window of its own, such as a sign-in, in a plain window with the same cookies.
  /// Otherwise the host app gets the address.
  bool opensPopups = false;
  /// Where cookies, storage and caches of the pages live. Empty for a folder below the user's that has the program's
  /// name.
  std::string dataFolder{};
  /// Lets pages play sound and pictures before the user has clicked anything. The engine knows all or nothing here, and
  /// with nothing the other side of a call would be neither heard nor seen until a click.
  bool playsWithoutClick = true;
  /// What is put behind the engine's own name of itself, such as "Shop/2.1".
  std::string userAgentSuffix{};
  /// What pages are asked for, such as "de-CH", the dearest first. Empty for the system's.
  std::vector<std::string> languages{};
  /// The address of a proxy for all pages, such as "http://proxy.example:3128". Empty for the system's. The engine
  /// heeds the proxy of the whole program only, so that the host app's own requests by the toolkit use it, too.
  std::string proxy{};
  /// What is seen of a page before it has painted anything.
  std::optional<UIColor> pageBackground{};
  /// How many bytes of JSON a message of a page may have. A longer one is dropped.
  std::size_t longestMessage = std::size_t{16} << 20U;
};

/// The words of the dialog that asks whether a page may capture, for apps in other languages. What is empty is English.
struct CaptureDialogTexts {
  /// Makes the question. The site is the host name of the page, or empty.
  std::function<std::string(const std::string& site, WKMediaCaptureType type)> question;
  std::string allow;
  std::string refuse;
};

/// Asks the user whether a page may capture; hands the answer to the function once. A function that is dropped
/// uncalled refuses.
using CapturePrompt = std::function<void(const WKMediaCaptureRequest&, std::move_only_function<void(bool)>)>;

/// The installed backend.
///
/// It connects one window scene to the application, which the windows of all surfaces join.
///
/// It adds to QTWEBENGINE_CHROMIUM_FLAGS in the environment, so install it before other threads start. Where there is
/// no graphics processor it has Qt Quick draw in software; that holds for the host app's own Qt Quick windows, too.
///
/// Ownership: owned by the host app, which makes a `QApplication` before it and ends that after it. Views and surfaces
///            should be gone before it ends. A view that is left over stays harmless, but its pages and scripts get no
///            further.
/// Threads:   main thread only, which runs the application's event loop.
/// Failure:   `install` gives a text; nothing is thrown.
class CORVANE_EXPORT Backend {
 public:
  /// Installs run loop, web engine and capture authorisation. Fails with a text for developers when there is no
  /// `QApplication`, or while another backend is installed.
  [[nodiscard]] static std::expected<std::unique_ptr<Backend>, std::string> install(const BackendOptions& options = {});
  Backend(const Backend&) = delete;
  Backend& operator=(const Backend&) = delete;
  /// Uninstalls everything. Tasks that have not run are destroyed unrun.
  ~Backend();

  /// What the user has allowed. A desktop keeps no record of this, so the host app asks its user and says so here;
  /// until then the status is `notDetermined`.
  void setCaptureAuthorization(AVMediaType mediaType, AVAuthorizationStatus status);
  /// Replaces the dialog that asks the user when a page's request is answered with `prompt`. An empty function brings
  /// the dialog back. The dialog stands over the web view's window; a web view in no window is refused.
  /// It ends, with a refusal, when its page does.
  void setCapturePrompt(CapturePrompt prompt);
  void setCaptureDialogTexts(CaptureDialogTexts texts);
  /// Forgets the cookies and caches of all pages, and calls the completion later. Agents are signed out. What pages
  /// have in their own storage stays: the engine offers no way to it.
  void clearPageData(std::function<void()> completion);

 private:
  struct Parts;
  explicit Backend(std::unique_ptr<Parts> parts);

  std::unique_ptr<Parts> parts_;
};

}  // namespace corvane::qt
