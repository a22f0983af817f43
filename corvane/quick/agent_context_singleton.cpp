#include "corvane/quick/agent_context_singleton.h"

#include <QPointer>

#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/foundation/run_loop.h"

namespace corvane::quick {

AgentContextSingleton::AgentContextSingleton() : QmlOperations(VelnorAgentContext::shared()) {
  const auto& published = VelnorAgentContext::shared().publishedIsMinimized();
  subscription_ = published.subscribe([self = QPointer(this)](bool) {
    // The notice comes before the change, and bindings read what is there now.
    if (!RunLoop::hasMain()) return;
    RunLoop::main().post([self] {
      if (self != nullptr) Q_EMIT self->isMinimizedChanged();
    });
  });
}

bool AgentContextSingleton::isMinimized() const { return VelnorAgentContext::shared().isMinimized(); }

void AgentContextSingleton::maximizeAgent() { VelnorAgentContext::shared().maximizeAgent(); }

}  // namespace corvane::quick
