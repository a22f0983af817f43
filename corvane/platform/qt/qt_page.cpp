#include "corvane/platform/qt/qt_page.h"

#include <QColor>
#include <QtWebEngineCore/QWebEngineCertificateError>
#include <QtWebEngineCore/QWebEngineSettings>

namespace corvane::qt {

Page::Page(const EngineContext& context, QObject* parent) : QWebEnginePage(context.profile.get(), parent) {
  QWebEngineSettings* const chosen = settings();
  chosen->setAttribute(QWebEngineSettings::PlaybackRequiresUserGesture, !context.options.playsWithoutClick);
  // The engine would drop the wish for a window in silence; whoever asks the client does not.
  chosen->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
  // An error page of the engine's own would look like one more load.
  chosen->setAttribute(QWebEngineSettings::ErrorPageEnabled, false);
  // The full screen of a page would be that of the app's window.
  chosen->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, false);
  chosen->setAttribute(QWebEngineSettings::NavigateOnDropEnabled, false);
  chosen->setAttribute(QWebEngineSettings::ShowScrollBars, false);
  // Only so are we asked about addresses for other programs. Those are started by the host app, if by anybody.
  chosen->setUnknownUrlSchemePolicy(QWebEngineSettings::AllowAllUnknownUrlSchemes);
  if (const auto& color = context.options.pageBackground) {
    setBackgroundColor(QColor::fromRgbF(static_cast<float>(color->red), static_cast<float>(color->green),
                                        static_cast<float>(color->blue), static_cast<float>(color->alpha)));
  }
  connect(this, &QWebEnginePage::certificateError, this,
          [](QWebEngineCertificateError error) { error.rejectCertificate(); });
}

void Page::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int, const QString&) {
  if (const auto said = handlers_.said) said(message);
}

bool Page::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) {
  const auto mayNavigate = handlers_.mayNavigate;
  return mayNavigate && mayNavigate(url, type, isMainFrame);
}

void Page::javaScriptAlert(const QUrl&, const QString&) {}

bool Page::javaScriptConfirm(const QUrl&, const QString&) {
  const auto isBeingLeft = handlers_.isBeingLeft;
  return isBeingLeft && isBeingLeft();
}

bool Page::javaScriptPrompt(const QUrl&, const QString&, const QString&, QString*) { return false; }

// Only the host's own page could know what the user is looking at, so no dialog of the engine comes up.
QStringList Page::chooseFiles(FileSelectionMode, const QStringList&, const QStringList&) { return {}; }

}  // namespace corvane::qt
