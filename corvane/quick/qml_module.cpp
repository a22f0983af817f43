#include "corvane/quick/qml_module.h"

#include <QtQml/QQmlEngine>

#include "corvane/quick/agent_context_singleton.h"
#include "corvane/quick/agent_screen.h"
#include "corvane/quick/minimized_state_singleton.h"
#include "corvane/quick/velnor_agent_item.h"

namespace corvane::quick {

namespace {

constexpr const char* module = "Corvane";
constexpr int major = 1;
constexpr int minor = 0;

/// The engine owns what it gets.
template <class Singleton>
QObject* makeSingleton(QQmlEngine*, QJSEngine*) {
  return std::make_unique<Singleton>().release();
}

}  // namespace

void registerQmlModule() {
  static const bool isRegistered = [] {
    qmlRegisterType<VelnorAgentItem>(module, major, minor, "VelnorAgent");
    qmlRegisterUncreatableType<AgentScreen>(module, major, minor, "AgentScreen",
                                            QStringLiteral("AgentScreen is attached to the items of screens"));
    qmlRegisterSingletonType<AgentContextSingleton>(module, major, minor, "AgentContext",
                                                    &makeSingleton<AgentContextSingleton>);
    qmlRegisterSingletonType<MinimizedStateSingleton>(module, major, minor, "MinimizedState",
                                                      &makeSingleton<MinimizedStateSingleton>);
    return true;
  }();
  static_cast<void>(isRegistered);
}

}  // namespace corvane::quick
