/// A page, and the questions that it asks by way of virtual functions.
#pragma once

#include <QtWebEngineCore/QWebEnginePage>
#include <functional>

#include "corvane/platform/qt/qt_engine_context.h"

namespace corvane::qt {

/// Hands on what a page says and where it wants to go, and keeps everything from the user that would stop it.
///
/// A page's dialog stops its scripts, the host's among them, until somebody answers it. Nobody can in a view that is
/// hidden or takes no touches. So each is answered at once: questions with no, leaving the page with yes. Otherwise a
/// page could keep the host from loading another one.
///
/// Ownership: a child of its view. The handlers are called while it lives, also inside its own signals.
/// Threads:   main thread only.
class Page final : public QWebEnginePage {
 public:
  struct Handlers {
    /// A line for the console.
    std::function<void(const QString&)> said;
    std::function<bool(const QUrl&, NavigationType, bool isMainFrame)> mayNavigate;
    /// Whether a question is only whether the page may be left for what the host loads.
    std::function<bool()> isBeingLeft;
  };

  Page(const EngineContext& context, QObject* parent);

  void setHandlers(Handlers handlers) { handlers_ = std::move(handlers); }

 protected:
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel level, const QString& message, int line,
                                const QString& source) override;
  bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
  void javaScriptAlert(const QUrl& origin, const QString& message) override;
  bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
  bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& proposal, QString* answer) override;
  QStringList chooseFiles(FileSelectionMode mode, const QStringList& old, const QStringList& types) override;

 private:
  Handlers handlers_;
};

}  // namespace corvane::qt
