#include "corvane/quick/agent_screen.h"

#include <QMetaMethod>
#include <QPointer>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "corvane/declarative/agent_modifiers.h"
#include "corvane/platform/declarative/any_view.h"
#include "corvane/platform/declarative/z_stack.h"
#include "corvane/quick/qml_values.h"

namespace corvane::quick {

AgentScreen::AgentScreen(QQuickItem& item) : QObject(&item), item_(&item), container_(UIView::create({})) {
  connect(&item, &QQuickItem::visibleChanged, this, &AgentScreen::follow);
  connect(&item, &QQuickItem::windowChanged, this, &AgentScreen::follow);
  follow();
}

AgentScreen::~AgentScreen() {
  if (const auto mount = std::exchange(mount_, nullptr)) mount->remove();
}

AgentScreen* AgentScreen::qmlAttachedProperties(QObject* object) {
  auto* const item = qobject_cast<QQuickItem*>(object);
  return item != nullptr ? std::make_unique<AgentScreen>(*item).release() : nullptr;
}

void AgentScreen::follow() {
  if (std::exchange(isFollowing_, true)) return;
  QMetaObject::invokeMethod(this, "appearOrDisappear", Qt::QueuedConnection);
}

void AgentScreen::appearOrDisappear() {
  isFollowing_ = false;
  const bool isShown = item_->window() != nullptr && item_->isVisible();
  if (isShown == (mount_ != nullptr)) return;
  if (!isShown) return std::exchange(mount_, nullptr)->remove();
  mount_ = ViewMount::create(*container_);
  const auto mount = mount_;
  mount->show(modifiers());
}

AnyView AgentScreen::modifiers() {
  const QPointer<AgentScreen> self(this);
  AnyView screen = EmptyView{};
  if (isSignalConnected(QMetaMethod::fromSignal(&AgentScreen::agentEvent))) {
    screen = std::move(screen) | onAgentEvent([self](const AgentEvent& event) {
               if (self != nullptr) Q_EMIT self->agentEvent(toVariant(event));
             });
  }
  if (isSignalConnected(QMetaMethod::fromSignal(&AgentScreen::restoreAgent))) {
    screen = std::move(screen) | restoreAgentAction([self](const VelnorAgent& agent) {
               if (self != nullptr) Q_EMIT self->restoreAgent(toVariant(agent));
             });
  }
  if (bringsAgentToFront_) screen = std::move(screen) | bringAgentToFront();
  if (resetsRestoreAction_) screen = std::move(screen) | resetAgentRestoreAction();
  return screen;
}

}  // namespace corvane::quick
