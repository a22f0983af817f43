/// The agent's context in QML.
#pragma once

#include "corvane/platform/declarative/notifier.h"
#include "corvane/quick/qml_operations.h"

namespace corvane::quick {

/// `AgentContext`: knows the agent view that came last, and drives it.
///
/// Ownership: owned by the QML engine. Threads: main thread only.
class AgentContextSingleton final : public QmlOperations {
  Q_OBJECT
  /// From the start of a shrinking to the start of a growing back.
  Q_PROPERTY(bool isMinimized READ isMinimized NOTIFY isMinimizedChanged)

 public:
  AgentContextSingleton();

  [[nodiscard]] bool isMinimized() const;
  Q_INVOKABLE void maximizeAgent();

 Q_SIGNALS:
  void isMinimizedChanged();

 private:
  Subscription subscription_;
};

}  // namespace corvane::quick
