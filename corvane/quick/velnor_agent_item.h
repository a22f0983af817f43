/// The agent as an item of QML.
#pragma once

#include <QPointF>
#include <QString>
#include <QVariant>
#include <QtQuick/QQuickItem>
#include <cstdint>
#include <memory>
#include <optional>

#include "corvane/declarative/velnor_agent.h"
#include "corvane/platform/declarative/view_mount.h"

namespace corvane::quick {

/// `VelnorAgent`: shows the agent tool for a booking in the box of the item, over everything else in the window. While
/// the call floats the item is empty.
///
/// The item comes when it is complete, in a window and visible, and goes when it is not, each in the event loop's next
/// turn; one that ends or leaves its window goes at once. Its coming makes the agent
/// view, or takes over the context's where region and organisation are the same; its going releases the view, unless
/// that floats. Once it has come, what is shown no longer follows region, organisation and booking: show another item
/// for another booking, and let this one go first. The settings can be changed at any time.
///
/// What is clipped, faded, turned or covered in the scene stays as it is in the call.
///
/// Ownership: as every item. Threads: main thread only.
class VelnorAgentItem : public QQuickItem {
  Q_OBJECT
  /// "eu", "global", or the address of a shop's own deployment.
  Q_PROPERTY(QString region MEMBER region_ NOTIFY agentChanged REQUIRED)
  Q_PROPERTY(QString organisationId MEMBER organisationId_ NOTIFY agentChanged REQUIRED)
  /// Empty for the booking of somebody who is not known.
  Q_PROPERTY(QString connectId MEMBER connectId_ NOTIFY agentChanged)
  Q_PROPERTY(bool enableSSO MEMBER enableSSO_ NOTIFY agentChanged)
  Q_PROPERTY(bool tapToMaximize READ tapToMaximize WRITE setTapToMaximize NOTIFY settingsChanged)
  /// A corner, such as `VelnorAgent.BottomRight`, or a point of the window as from `Qt.point`.
  Q_PROPERTY(QVariant minimizedOrigin READ minimizedOrigin WRITE setMinimizedOrigin NOTIFY settingsChanged)
  /// Without one, or an empty one, the agent view chooses.
  Q_PROPERTY(QSizeF minimizedSize READ minimizedSize WRITE setMinimizedSize NOTIFY settingsChanged)

 public:
  // QML knows only names that begin with a capital.
  // NOLINTNEXTLINE(readability-identifier-naming)
  enum Corner : std::uint8_t { TopLeft, TopRight, BottomLeft, BottomRight };
  Q_ENUM(Corner)

  explicit VelnorAgentItem(QQuickItem* parent = nullptr);
  ~VelnorAgentItem() override;
  VelnorAgentItem(const VelnorAgentItem&) = delete;
  VelnorAgentItem& operator=(const VelnorAgentItem&) = delete;

  [[nodiscard]] bool tapToMaximize() const;
  void setTapToMaximize(bool isOn);
  [[nodiscard]] QVariant minimizedOrigin() const;
  void setMinimizedOrigin(const QVariant& origin);
  [[nodiscard]] QSizeF minimizedSize() const;
  void setMinimizedSize(QSizeF size);

 Q_SIGNALS:
  void agentChanged();
  void settingsChanged();
  /// An event of the agent view that this item has made or taken over.
  void event(const QVariantMap& event);

 protected:
  using QQuickItem::event;
  void componentComplete() override;
  void itemChange(ItemChange change, const ItemChangeData& data) override;
  void geometryChange(const QRectF& now, const QRectF& before) override;

 private:
  struct Settings {
    std::optional<bool> tapToMaximize{};
    std::optional<MinimizedOrigin> origin{};
    std::optional<std::optional<CGSize>> size{};
  };

  /// Comes or goes later: a screen may be changed inside the notice that a call is about to float.
  void follow();
  Q_INVOKABLE void comeOrGo();
  void come(QQuickWindow& window);
  void go();
  void place();
  void show();
  [[nodiscard]] VelnorAgent makeAgent();

  QString region_;
  QString organisationId_;
  QString connectId_;
  bool enableSSO_ = false;
  /// What has been chosen. What has not been leaves a view that is taken over as it is.
  Settings settings_;
  std::optional<VelnorAgent> agent_;
  std::shared_ptr<UIView> container_;
  std::shared_ptr<ViewMount> mount_;
  QMetaObject::Connection frames_;
  bool isFollowing_ = false;
};

}  // namespace corvane::quick
