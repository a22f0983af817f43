/// The floating call in QML.
#pragma once

#include "corvane/quick/qml_operations.h"

namespace corvane::quick {

/// `MinimizedState`: keeps the floating call, whichever screen it came from.
///
/// Ownership: owned by the QML engine. Threads: main thread only.
class MinimizedStateSingleton final : public QmlOperations {
  Q_OBJECT

 public:
  MinimizedStateSingleton();

  /// As it is now; nothing tells when it changes. `AgentContext.isMinimized` is followed by bindings.
  Q_INVOKABLE [[nodiscard]] bool isMinimized() const;
  Q_INVOKABLE void bringToFront();
  Q_INVOKABLE void maximize();
  /// Takes the floating call off the screen and lets it go.
  Q_INVOKABLE void remove();
};

}  // namespace corvane::quick
