/// What a screen in QML does with the agent while it is shown, and when it comes and goes.
#pragma once

#include <QObject>
#include <QVariant>
#include <QtQml/QQmlEngine>
#include <QtQuick/QQuickItem>
#include <memory>

#include "corvane/platform/declarative/view_mount.h"

namespace corvane::quick {

/// The attached properties `AgentScreen` of an item. The item appears when it is in a window and visible, as QML has
/// it, and disappears when it is not, each in the event loop's next turn. One that ends disappears at once.
///
/// Only what is used has an effect: a screen without `onAgentEvent` leaves another one's handler alone.
///
/// Ownership: owned by its item. Threads: main thread only.
class AgentScreen final : public QObject {
  Q_OBJECT
  /// Brings a floating call in front when the screen appears.
  Q_PROPERTY(bool bringsAgentToFront MEMBER bringsAgentToFront_ NOTIFY changed)
  /// Drops what is registered for calls that grow back when the screen disappears.
  Q_PROPERTY(bool resetsRestoreAction MEMBER resetsRestoreAction_ NOTIFY changed)
  QML_ATTACHED(AgentScreen)

 public:
  explicit AgentScreen(QQuickItem& item);
  ~AgentScreen() override;
  AgentScreen(const AgentScreen&) = delete;
  AgentScreen& operator=(const AgentScreen&) = delete;

  static AgentScreen* qmlAttachedProperties(QObject* object);

 Q_SIGNALS:
  void changed();
  /// An event of the agent, while this screen is the last one to have appeared with such a handler.
  void agentEvent(const QVariantMap& event);
  /// A floating call has grown back; typically the screen that shows it is opened. The object has the properties with
  /// which a `VelnorAgent` takes the call over.
  void restoreAgent(const QVariantMap& agent);

 private:
  void follow();
  Q_INVOKABLE void appearOrDisappear();
  [[nodiscard]] AnyView modifiers();

  bool bringsAgentToFront_ = false;
  bool resetsRestoreAction_ = false;
  bool isFollowing_ = false;
  QQuickItem* item_;
  /// Nothing of it is seen: it appears and disappears.
  std::shared_ptr<UIView> container_;
  std::shared_ptr<ViewMount> mount_;
};

}  // namespace corvane::quick
