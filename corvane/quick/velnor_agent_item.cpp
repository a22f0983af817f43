#include "corvane/quick/velnor_agent_item.h"

#include <QPointer>
#include <QtQml/QQmlInfo>
#include <QtQuick/QQuickWindow>
#include <utility>

#include "corvane/platform/qt/qt_views_over.h"
#include "corvane/quick/qml_values.h"

namespace corvane::quick {

namespace {

using Corner = VelnorAgentItem::Corner;

std::optional<MinimizedOrigin> originOf(const QVariant& value) {
  if (value.typeId() == QMetaType::QPointF || value.typeId() == QMetaType::QPoint) {
    const QPointF point = value.toPointF();
    return MinimizedOrigin::custom({point.x(), point.y()});
  }
  bool isNumber = false;
  switch (value.toInt(&isNumber)) {
    case Corner::TopLeft:
      return isNumber ? std::optional(MinimizedOrigin::topLeft()) : std::nullopt;
    case Corner::TopRight:
      return MinimizedOrigin::topRight();
    case Corner::BottomLeft:
      return MinimizedOrigin::bottomLeft();
    case Corner::BottomRight:
      return MinimizedOrigin::bottomRight();
    default:
      return std::nullopt;
  }
}

QVariant variantOf(const MinimizedOrigin& origin) {
  return origin.match(
      [](const MinimizedOrigin::Custom& custom) { return QVariant(QPointF(custom.point.x, custom.point.y)); },
      [](const MinimizedOrigin::TopLeft&) { return QVariant(int{Corner::TopLeft}); },
      [](const MinimizedOrigin::TopRight&) { return QVariant(int{Corner::TopRight}); },
      [](const MinimizedOrigin::BottomLeft&) { return QVariant(int{Corner::BottomLeft}); },
      [](const MinimizedOrigin::BottomRight&) { return QVariant(int{Corner::BottomRight}); });
}

}  // namespace

VelnorAgentItem::VelnorAgentItem(QQuickItem* parent) : QQuickItem(parent) {
  connect(this, &VelnorAgentItem::agentChanged, this, &VelnorAgentItem::show);
}

VelnorAgentItem::~VelnorAgentItem() { go(); }

void VelnorAgentItem::componentComplete() {
  QQuickItem::componentComplete();
  follow();
}

void VelnorAgentItem::itemChange(ItemChange change, const ItemChangeData& data) {
  QQuickItem::itemChange(change, data);
  if (change == ItemSceneChange) go();
  if (change == ItemSceneChange || change == ItemVisibleHasChanged) follow();
}

void VelnorAgentItem::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  place();
}

void VelnorAgentItem::follow() {
  if (std::exchange(isFollowing_, true)) return;
  QMetaObject::invokeMethod(this, "comeOrGo", Qt::QueuedConnection);
}

void VelnorAgentItem::comeOrGo() {
  isFollowing_ = false;
  QQuickWindow* const window = this->window();
  const bool isWanted = isComponentComplete() && window != nullptr && isVisible();
  if (isWanted == (mount_ != nullptr)) return;
  isWanted ? come(*window) : go();
}

void VelnorAgentItem::come(QQuickWindow& window) {
  container_ = UIView::create({});
  place();
  qt::viewsOver(window)->addSubview(container_);
  mount_ = ViewMount::create(*container_);
  // What the item is in may move without a word to it, but not without a frame.
  frames_ = connect(&window, &QQuickWindow::afterAnimating, this, &VelnorAgentItem::place);
  show();
}

void VelnorAgentItem::go() {
  disconnect(frames_);
  agent_.reset();
  if (const auto mount = std::exchange(mount_, nullptr)) mount->remove();
  if (const auto container = std::exchange(container_, nullptr)) container->removeFromSuperview();
}

void VelnorAgentItem::place() {
  if (container_ == nullptr) return;
  const QRectF box = mapRectToScene(boundingRect());
  const CGRect frame{{box.x(), box.y()}, {box.width(), box.height()}};
  if (container_->frame() != frame) container_->setFrame(frame);
}

void VelnorAgentItem::show() {
  const auto mount = mount_;
  if (mount == nullptr) return;
  agent_ = makeAgent();
  mount->show(*agent_);
}

VelnorAgent VelnorAgentItem::makeAgent() {
  VelnorAgent agent(regionOf(region_), organisationId_.toStdString(), connectId_.toStdString(), enableSSO_);
  if (settings_.tapToMaximize) agent.setTapToMaximize(*settings_.tapToMaximize);
  if (settings_.origin) agent.setMinimizedOrigin(*settings_.origin);
  if (settings_.size) agent.setMinimizedSize(*settings_.size);
  agent.setEventHandler([self = QPointer(this)](const AgentEvent& agentEvent) {
    if (self != nullptr) Q_EMIT self->event(toVariant(agentEvent));
  });
  return agent;
}

bool VelnorAgentItem::tapToMaximize() const {
  return agent_ ? agent_->tapToMaximize() : settings_.tapToMaximize.value_or(false);
}

void VelnorAgentItem::setTapToMaximize(bool isOn) {
  settings_.tapToMaximize = isOn;
  if (agent_) agent_->setTapToMaximize(isOn);
  Q_EMIT settingsChanged();
}

QVariant VelnorAgentItem::minimizedOrigin() const {
  return variantOf(agent_ ? agent_->minimizedOrigin() : settings_.origin.value_or(MinimizedOrigin::topLeft()));
}

void VelnorAgentItem::setMinimizedOrigin(const QVariant& origin) {
  const auto chosen = originOf(origin);
  if (!chosen) {
    qmlWarning(this) << "minimizedOrigin is a corner, such as VelnorAgent.BottomRight, or a point";
    return;
  }
  settings_.origin = chosen;
  if (agent_) agent_->setMinimizedOrigin(*chosen);
  Q_EMIT settingsChanged();
}

QSizeF VelnorAgentItem::minimizedSize() const {
  const auto size = agent_ ? agent_->minimizedSize() : settings_.size.value_or(std::nullopt);
  return size ? QSizeF(size->width, size->height) : QSizeF();
}

void VelnorAgentItem::setMinimizedSize(QSizeF size) {
  const auto chosen = size.isEmpty() ? std::nullopt : std::optional(CGSize{size.width(), size.height()});
  settings_.size = chosen;
  if (agent_) agent_->setMinimizedSize(chosen);
  Q_EMIT settingsChanged();
}

}  // namespace corvane::quick
