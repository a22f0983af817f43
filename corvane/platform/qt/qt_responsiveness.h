/// Whether a page answers.
#pragma once

#include <QTimer>
#include <cstdint>
#include <memory>

#include "corvane/platform/qt/qt_evaluation.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::qt {

/// Tells the client when a page has not answered for some seconds, and when it does again. The engine itself says
/// nothing of that. A page of which nobody wants anything is left in peace.
///
/// Ownership: owned by the engine, which calls `end` at its end; answers hold it weakly.
/// Threads:   main thread only.
class Responsiveness : public std::enable_shared_from_this<Responsiveness> {
 public:
  Responsiveness(std::shared_ptr<Evaluations> evaluations, std::weak_ptr<WebEngineClient> client);

  /// The user or the host has wanted something of the page.
  void expectAnswer();
  /// Another document, or none: nothing is expected of the one that was there.
  void forget();
  void end();

 private:
  void ask();
  void fail();
  void answered();

  std::shared_ptr<Evaluations> evaluations_;
  std::weak_ptr<WebEngineClient> client_;
  std::unique_ptr<QTimer> timer_;
  std::uint64_t question_ = 0;
  bool isAsking_ = false;
  bool isResponding_ = true;
};

}  // namespace corvane::qt
