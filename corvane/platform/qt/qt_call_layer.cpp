#include "corvane/platform/qt/qt_call_layer.h"

#include <QPainter>
#include <QtQuick/QQuickWindow>
#include <QtQuick/QSGImageNode>
#include <QtQuick/QSGTexture>
#include <algorithm>

#include "corvane/platform/foundation/platform.h"
#include "corvane/platform/qt/qt_item_host.h"
#include "corvane/platform/qt/qt_views_over.h"

namespace corvane::qt {

namespace {

/// In front of pop-ups, too, which are at a million.
constexpr qreal inFront = 2'000'000;

/// A picture in the scene, with its texture, which must end where the scene is drawn.
class PictureNode final : public QSGNode {
 public:
  explicit PictureNode(QQuickWindow& window) : image_(window.createImageNode()) {
    image_->setFlag(QSGNode::OwnedByParent);
    appendChildNode(image_);
  }

  void show(QQuickWindow& window, const QImage& picture, const QRectF& box) {
    std::unique_ptr<QSGTexture> texture(window.createTextureFromImage(picture, QQuickWindow::TextureHasAlphaChannel));
    image_->setTexture(texture.get());
    image_->setRect(box);
    image_->setSourceRect(QRectF(QPointF(), texture->textureSize()));
    std::swap(texture_, texture);
  }

 private:
  std::unique_ptr<QSGTexture> texture_;
  QSGImageNode* image_;
};

}  // namespace

CallLayer& CallLayer::of(QQuickWindow& window) {
  const QList<QQuickItem*> items = window.contentItem()->childItems();
  for (QQuickItem* const item : items) {
    if (auto* const layer = dynamic_cast<CallLayer*>(item)) return *layer;
  }
  return *std::make_unique<CallLayer>(window).release();
}

CallLayer::CallLayer(QQuickWindow& window)
    : QQuickItem(window.contentItem()), core_(SurfaceCore::create(std::make_shared<ItemHost>(*this))) {
  setObjectName(QStringLiteral("Call"));
  setZ(inFront);
  setFlags(ItemHasContents | ItemAcceptsInputMethod);
  setActiveFocusOnTab(true);
  core_->window()->setDelegate(core_);
  followWindow(window);
}

CallLayer::~CallLayer() { core_->end(); }

void CallLayer::followWindow(QQuickWindow& window) {
  QQuickItem* const root = window.contentItem();
  const auto follow = [this, root] { setSize(root->size()); };
  connect(root, &QQuickItem::widthChanged, this, follow);
  connect(root, &QQuickItem::heightChanged, this, follow);
  connect(&window, &QWindow::visibleChanged, this,
          [core = core_](bool isVisible) { isVisible ? core->surfaceShown() : core->surfaceHidden(); });
  connect(&window, &QWindow::activeChanged, this, [this, core = core_] {
    if (this->window() != nullptr && this->window()->isActive()) core->surfaceActivated();
  });
  connect(&window, &QQuickWindow::activeFocusItemChanged, this, [core = core_] { core->focusMoved(); });
  follow();
  // Its events are wanted before it is shown, too: what is shown may have been so for long.
  core_->surfaceShown();
}

QVariant CallLayer::inputMethodQuery(Qt::InputMethodQuery query) const {
  const QVariant answer = core_->answerInputMethod(query);
  return answer.isValid() ? answer : QQuickItem::inputMethodQuery(query);
}

bool CallLayer::event(QEvent* event) {
  const auto core = core_;
  return (isInput(*event) && core->handleInput(*event)) || QQuickItem::event(event);
}

void CallLayer::geometryChange(const QRectF& now, const QRectF& before) {
  QQuickItem::geometryChange(now, before);
  // The base class's constructor sets no size.
  core_->surfaceResized({now.width(), now.height()});
}

void CallLayer::updatePolish() {
  const qreal ratio = window()->effectiveDevicePixelRatio();
  const QSize pixels = (size() * ratio).toSize();
  const UIWindow& views = *core_->window();
  if ((views.subviews().empty() && !views.backgroundColor()) || pixels.isEmpty()) {
    picture_ = {};
  } else {
    // The scene may still use the former one.
    picture_ = QImage(pixels, QImage::Format_ARGB32_Premultiplied);
    picture_.setDevicePixelRatio(ratio);
    picture_.fill(Qt::transparent);
    QPainter painter(&picture_);
    const auto core = core_;
    core->drawSurface(painter, ratio);
  }
}

QSGNode* CallLayer::updatePaintNode(QSGNode* node, UpdatePaintNodeData*) {
  std::unique_ptr<QSGNode> previous(node);
  if (picture_.isNull()) return nullptr;
  if (previous == nullptr) previous = std::make_unique<PictureNode>(*window());
  static_cast<PictureNode&>(*previous).show(*window(), picture_, boundingRect());
  return previous.release();
}

std::shared_ptr<UIWindow> viewsOver(QQuickWindow& window) {
  assertMainThread();
  return CallLayer::of(window).core().window();
}

}  // namespace corvane::qt
