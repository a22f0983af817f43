/// What is injected into pages, and how they post to the host.
#pragma once

#include <QString>
#include <QtWebEngineCore/QWebEnginePage>
#include <QtWebEngineCore/QWebEngineScriptCollection>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/web/wk_web_view_configuration.h"

namespace corvane::qt {

/// A new document has begun to arrive in the page.
struct DocumentCommitted {
  std::string url;
};
/// All of the page's own text is there; pictures and the like may still be on their way.
struct DocumentArrived {};
/// The page, or a frame of it, has posted to a channel.
struct ChannelMessage {
  std::string channel;
  JsonValue body;
};
/// A frame has opened, closed or muted a device; for whoever made the script that said so.
struct CaptureChanged {
  QString change;
};
using PageWord = std::variant<DocumentCommitted, DocumentArrived, ChannelMessage, CaptureChanged>;

/// Gives pages their channels, and reads what comes back through them.
///
/// Words travel as lines for the console, the only way that is open to every frame and keeps their order. Each begins
/// with a secret of this page, so that no line of the page's own can pass for one.
///
/// Ownership: owned by the engine. Threads: main thread only. Failure: what is no word of ours is none.
class PageScripts {
 public:
  /// Messages of more bytes of JSON than this are none.
  PageScripts(std::shared_ptr<WKUserContentController> controller, std::size_t longestMessage);

  /// What a script of ours puts before a change of capture.
  [[nodiscard]] QString captureIntroduction() const;
  /// Adds the script that runs those of the host, the one that follows capture, the channels and the scripts in their
  /// order.
  void install(QWebEngineScriptCollection& scripts, const QString& captureScript, const QString& runnerScript) const;
  [[nodiscard]] std::optional<PageWord> read(const QString& line) const;

 private:
  [[nodiscard]] QString channelScript() const;

  std::shared_ptr<WKUserContentController> controller_;
  std::size_t longestMessage_;
  QString secret_;
};

/// Fixes documents to their viewport, or lets them go, for the page that is there and for later ones.
void setPageFixed(QWebEnginePage& page, bool isFixed);

}  // namespace corvane::qt
