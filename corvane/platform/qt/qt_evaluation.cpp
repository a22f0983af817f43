#include "corvane/platform/qt/qt_evaluation.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QRandomGenerator>
#include <QStringBuilder>
#include <QVariant>
#include <string>
#include <utility>

#include "corvane/platform/foundation/utf8.h"
#include "corvane/platform/foundation/while_alive.h"
#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

namespace {

/// How long answers may still be on their way when a new document has come.
constexpr std::chrono::milliseconds lastAnswers{1000};

WebError scriptFailed(std::string description) { return {WebError::Kind::scriptFailed, std::move(description), {}}; }

/// Left in each document, so that it is compiled once and not with every script. The page does not know its name.
const char* const runnerSource = R"js((() => {
  const toJson = JSON.stringify;
  const answer = (run) => {
    try {
      const value = run();
      if (typeof value === 'function' || typeof value === 'symbol' || value instanceof Promise)
        throw 'The result has no JSON form';
      const json = toJson(value);
      return 'v' + (json === undefined ? 'null' : json);
    } catch (error) { return 'e' + String(error); }
  };
  Object.defineProperty(window, '%1', { value: answer });
})();)js";

/// The first letter of an answer says whether a value or an error follows.
QString wrapped(const QString& expression) {
  static const QString head = QStringLiteral(
      "(() => { const answer = (value) => {"
      " if (typeof value === 'function' || typeof value === 'symbol' || value instanceof Promise)"
      " throw 'The result has no JSON form';"
      " const json = JSON.stringify(value); return 'v' + (json === undefined ? 'null' : json); };"
      " try { return answer((");
  static const QString tail = QStringLiteral("\n)); } catch (error) { return 'e' + String(error); } })()");
  return head + expression + tail;
}

/// A call that ends in a semicolon is an expression otherwise.
QStringView withoutEnd(QStringView script) {
  while (!script.isEmpty() && (script.back().isSpace() || script.back() == QLatin1Char(';'))) script.chop(1);
  return script;
}

}  // namespace

Evaluations::Evaluations(QWebEnginePage& page, std::shared_ptr<EngineContext> context)
    : page_(&page),
      context_(std::move(context)),
      runner_(QLatin1String("corvane") + QString::number(QRandomGenerator::system()->generate64(), 16)) {}

QString Evaluations::runnerScript() const { return QString::fromLatin1(runnerSource).arg(runner_); }

void Evaluations::run(std::string_view script, EvaluationCompletion completion) {
  if (isProcessGone_) {
    return settleLater(std::move(completion), {WebError::Kind::processTerminated, "The page's process has ended", {}});
  }
  if (!isValidUtf8(script)) return settleLater(std::move(completion), scriptFailed("The script is not valid UTF-8"));
  const std::uint64_t number = nextNumber_++;
  completions_.emplace(number, std::move(completion));
  const QString text = toQString(script);
  const QString call = runner_ % QLatin1String("(() => (") % withoutEnd(text) % QLatin1String("\n))");
  page_->runJavaScript(call, 0, whileAlive(weak_from_this(), [text, number](Evaluations& self, const QVariant& result) {
                         // The engine gives no text for what it cannot parse, nor where the runner is missing, and
                         // nothing of that has run.
                         if (result.typeId() == QMetaType::QString) return self.answer(number, result.toString());
                         self.runAsProgram(text, number);
                       }));
}

void Evaluations::runAsProgram(const QString& script, std::uint64_t number) {
  if (!completions_.contains(number)) return;
  const QByteArray literal = QJsonDocument(QJsonArray{script}).toJson(QJsonDocument::Compact);
  page_->runJavaScript(wrapped(QStringLiteral("(0, eval)(") + QString::fromUtf8(literal) + QStringLiteral("[0])")), 0,
                       whileAlive(weak_from_this(), [number](Evaluations& self, const QVariant& result) {
                         self.answer(number, result.toString());
                       }));
}

void Evaluations::answer(std::uint64_t number, const QString& text) {
  auto node = completions_.extract(number);
  if (node.empty()) return;
  const std::string utf8 = toText(text);
  if (!utf8.starts_with('v')) {
    return node.mapped()(std::unexpected(scriptFailed(utf8.empty() ? "The page has gone" : utf8.substr(1))));
  }
  auto json = JsonValue::parse(std::string_view(utf8).substr(1));
  if (!json) return node.mapped()(std::unexpected(scriptFailed("The result has no JSON form")));
  node.mapped()(*std::move(json));
}

void Evaluations::documentReplaced() {
  if (completions_.empty()) return;
  context_->runLoop->schedule(lastAnswers, whileAlive(weak_from_this(), [number = nextNumber_](Evaluations& self) {
                                self.settleOlderThan(number, scriptFailed("The page has gone"));
                              }));
}

void Evaluations::settleOlderThan(std::uint64_t number, const WebError& error) {
  while (!completions_.empty() && completions_.begin()->first < number) {
    settleLater(std::move(completions_.extract(completions_.begin()).mapped()), error);
  }
}

void Evaluations::settleLater(EvaluationCompletion completion, WebError error) {
  context_->runLoop->post([completion = std::move(completion), error = std::move(error)]() mutable {
    completion(std::unexpected(std::move(error)));
  });
}

}  // namespace corvane::qt
