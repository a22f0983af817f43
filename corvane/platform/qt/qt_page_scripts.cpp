#include "corvane/platform/qt/qt_page_scripts.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QtWebEngineCore/QWebEngineScript>
#include <utility>

#include "corvane/platform/foundation/match.h"
#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

namespace {

/// What stands behind the secret: which kind of word it is.
constexpr QLatin1Char committedSign('!');
constexpr QLatin1Char arrivedSign('.');
constexpr QLatin1Char messageSign('#');
constexpr QLatin1Char captureSign('*');

/// All that it needs is taken before the page can put something else in its place.
const char* const channelSource = R"js((() => {
  const secret = "%1", names = %2;
  const { freeze, defineProperty } = Object, toJson = JSON.stringify, say = console.debug.bind(console);
  const channel = (name) => freeze({
    postMessage(value) {
      let json;
      try { json = toJson(value); } catch {}
      say(secret + "#" + name + " " + (json === undefined ? "null" : json));
    },
  });
  const messageHandlers = {};
  for (const name of names) messageHandlers[name] = channel(name);
  defineProperty(window, "webkit", { value: freeze({ messageHandlers: freeze(messageHandlers) }), enumerable: true });
  if (window !== top) return;
  say(secret + "!" + location.href);
  document.addEventListener("DOMContentLoaded", () => say(secret + "."), { once: true, capture: true });
})();)js";

/// Takes scrolling from the viewport only. What the root element says about overflow applies to it, and parts of the
/// page that scroll on their own have rules of their own. The page's own scripts cannot see the sheet's variable.
const char* const fixingSource = R"js((() => {
  if (globalThis.corvaneFixing) return;
  globalThis.corvaneFixing = new CSSStyleSheet();
  corvaneFixing.replaceSync("html { overflow: hidden !important; }");
  document.adoptedStyleSheets = [...document.adoptedStyleSheets, corvaneFixing];
})();)js";
const char* const releasingSource = R"js((() => {
  const fixing = globalThis.corvaneFixing;
  if (!fixing) return;
  document.adoptedStyleSheets = [...document.adoptedStyleSheets].filter((sheet) => sheet !== fixing);
  globalThis.corvaneFixing = undefined;
})();)js";

QString fixingName() { return QStringLiteral("corvane-fixing"); }

QWebEngineScript makeScript(const QString& source, QWebEngineScript::InjectionPoint point, bool isForMainFrameOnly) {
  QWebEngineScript script;
  script.setSourceCode(source);
  script.setInjectionPoint(point);
  script.setWorldId(QWebEngineScript::MainWorld);
  script.setRunsOnSubFrames(!isForMainFrameOnly);
  return script;
}

}  // namespace

PageScripts::PageScripts(std::shared_ptr<WKUserContentController> controller, std::size_t longestMessage)
    : controller_(std::move(controller)),
      longestMessage_(longestMessage),
      secret_(QString::number(QRandomGenerator::system()->generate64(), 16).rightJustified(16, QLatin1Char('0'))) {}

QString PageScripts::channelScript() const {
  QJsonArray names;
  for (const auto& content : controller_->contents()) {
    const auto* channel = std::get_if<WKUserContentController::MessageChannel>(&content);
    if (channel != nullptr) names.append(toQString(channel->name));
  }
  const QByteArray list = QJsonDocument(names).toJson(QJsonDocument::Compact);
  return QString::fromLatin1(channelSource).arg(secret_, QString::fromUtf8(list));
}

QString PageScripts::captureIntroduction() const { return secret_ + captureSign; }

void PageScripts::install(QWebEngineScriptCollection& scripts, const QString& captureScript,
                          const QString& runnerScript) const {
  scripts.insert(makeScript(runnerScript, QWebEngineScript::DocumentCreation, true));
  scripts.insert(makeScript(captureScript, QWebEngineScript::DocumentCreation, false));
  scripts.insert(makeScript(channelScript(), QWebEngineScript::DocumentCreation, false));
  for (const auto& content : controller_->contents()) {
    const auto* script = std::get_if<WKUserScript>(&content);
    if (script == nullptr) continue;
    const bool isAtStart = script->injectionTime == WKUserScriptInjectionTime::atDocumentStart;
    scripts.insert(makeScript(toQString(script->source),
                              isAtStart ? QWebEngineScript::DocumentCreation : QWebEngineScript::DocumentReady,
                              script->isForMainFrameOnly));
  }
}

std::optional<PageWord> PageScripts::read(const QString& line) const {
  if (!line.startsWith(secret_) || line.size() == secret_.size()) return std::nullopt;
  const QChar sign = line.at(secret_.size());
  const QStringView rest = QStringView(line).mid(secret_.size() + 1);
  if (sign == arrivedSign) return DocumentArrived{};
  if (sign == committedSign) return DocumentCommitted{toText(rest.toUtf8())};
  if (sign == captureSign) return CaptureChanged{rest.toString()};
  const qsizetype gap = rest.indexOf(QLatin1Char(' '));
  if (sign != messageSign || gap < 0) return std::nullopt;
  const QByteArray json = rest.mid(gap + 1).toUtf8();
  if (static_cast<std::size_t>(json.size()) > longestMessage_) return std::nullopt;
  auto body = JsonValue::parse({json.constData(), static_cast<std::size_t>(json.size())});
  return ChannelMessage{toText(rest.left(gap).toUtf8()), body ? *std::move(body) : JsonValue()};
}

void setPageFixed(QWebEnginePage& page, bool isFixed) {
  QWebEngineScriptCollection& scripts = page.scripts();
  const auto present = scripts.find(fixingName());
  if (isFixed == !present.isEmpty()) return;
  if (isFixed) {
    QWebEngineScript script = makeScript(QString::fromLatin1(fixingSource), QWebEngineScript::DocumentCreation, true);
    script.setName(fixingName());
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    scripts.insert(script);
  } else {
    scripts.remove(present.first());
  }
  page.runJavaScript(QString::fromLatin1(isFixed ? fixingSource : releasingSource), QWebEngineScript::ApplicationWorld);
}

}  // namespace corvane::qt
