/// What a page has open of camera and microphone, as its own scripts tell it.
#pragma once

#include <QString>
#include <QtWebEngineCore/QWebEnginePage>
#include <map>
#include <memory>
#include <utility>

#include "corvane/platform/capture/capture_state.h"
#include "corvane/platform/web/web_engine.h"

namespace corvane::qt {

/// The engine tells nothing of this, so a script in every frame follows the tracks that the page is given. Muting is
/// the same script's: it takes the tracks' sound and pictures, whatever the page wants of them.
///
/// Ownership: owned by the engine.
/// Threads:   main thread only.
class PageCapture {
 public:
  PageCapture(QWebEnginePage& page, std::weak_ptr<WebEngineClient> client);

  /// The script for every frame, which says each change after this introduction.
  [[nodiscard]] QString script(const QString& introduction) const;
  /// Takes one change in: which frame it is, and its state of each kind.
  void frameChanged(const QString& change);
  /// The page has gone, and all that it had open.
  void clear();

  [[nodiscard]] CaptureState state(AVMediaType mediaType) const;
  void setMuted(AVMediaType mediaType, bool isMuted);

 private:
  struct Frame {
    CaptureState video = CaptureState::none;
    CaptureState audio = CaptureState::none;
  };

  void tell();

  QWebEnginePage* page_;
  std::weak_ptr<WebEngineClient> client_;
  /// Heard by the script of each frame before the page's own listeners.
  QString command_;
  std::map<QString, Frame> frames_;
  std::pair<CaptureState, CaptureState> told_{};
};

}  // namespace corvane::qt
