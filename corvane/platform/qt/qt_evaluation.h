/// Scripts that the host runs in a page, until each has given its answer.
#pragma once

#include <QtWebEngineCore/QWebEnginePage>
#include <cstdint>
#include <map>
#include <memory>
#include <string_view>

#include "corvane/platform/qt/qt_engine_context.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::qt {

/// Hands scripts to a page and completes each exactly once, later. That is with the page's answer, or with an error
/// when the document, the page's process or the engine ends first.
///
/// The engine tells nothing of a script's exception and confuses values without a JSON form with null. So each script
/// runs inside of one of ours, which answers with a text.
///
/// Ownership: owned by the engine, which calls `settleAll` at its end; answers hold it weakly. Completions are held
///            until they are called.
/// Threads:   main thread only.
/// Failure:   through the completions.
class Evaluations : public std::enable_shared_from_this<Evaluations> {
 public:
  Evaluations(QWebEnginePage& page, std::shared_ptr<EngineContext> context);

  /// To be injected into every document before its own scripts.
  [[nodiscard]] QString runnerScript() const;
  void run(std::string_view script, EvaluationCompletion completion);
  /// A new document has taken the place of the one that scripts were handed to. The engine forgets those that it had
  /// no time for.
  void documentReplaced();
  /// Completes everything that is pending with this error, later.
  void settleAll(const WebError& error) { settleOlderThan(nextNumber_, error); }
  /// Whether the page has a process. Without one the engine never answers.
  void setProcessGone(bool isGone) { isProcessGone_ = isGone; }

 private:
  void settleOlderThan(std::uint64_t number, const WebError& error);
  void settleLater(EvaluationCompletion completion, WebError error);
  /// A script that is no expression is run in another way.
  void runAsProgram(const QString& script, std::uint64_t number);
  void answer(std::uint64_t number, const QString& text);

  QWebEnginePage* page_;
  std::shared_ptr<EngineContext> context_;
  QString runner_;
  std::map<std::uint64_t, EvaluationCompletion> completions_;
  std::uint64_t nextNumber_ = 0;
  bool isProcessGone_ = false;
};

}  // namespace corvane::qt
