#include "demo/qml/qml_app.h"

#include <QLinearGradient>
#include <QPainter>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <QtQuick/QQuickImageProvider>
#include <utility>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/qt/qt_screenshot.h"
#include "corvane/platform/qt/qt_views_over.h"
#include "corvane/quick/qml_module.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

/// Draws a picture for each product, as the catalogue's own are elsewhere: its initial on a colour of its own.
class ProductPictures final : public QQuickImageProvider {
 public:
  ProductPictures() : QQuickImageProvider(QQuickImageProvider::Image) {}

  QImage requestImage(const QString& name, QSize* size, const QSize& wanted) override {
    constexpr int usual = 144;
    const int length = wanted.width() > 0 ? wanted.width() : usual;
    QImage picture(length, length, QImage::Format_RGB32);
    QLinearGradient colours(0, 0, length, length);
    constexpr int circle = 360;
    int hue = 0;
    for (const QChar letter : name) hue = (hue * 7 + letter.unicode()) % circle;
    colours.setColorAt(0, QColor::fromHsl(hue, 90, 175));
    colours.setColorAt(1, QColor::fromHsl(hue, 110, 105));
    QPainter painter(&picture);
    painter.fillRect(picture.rect(), colours);
    QFont font = painter.font();
    font.setPixelSize(length / 2);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(picture.rect(), Qt::AlignCenter, name.left(1));
    if (size != nullptr) *size = picture.size();
    return picture;
  }
};

QVariantList offered(const std::vector<Product>& products) {
  QVariantList list;
  for (const Product& product : products) {
    const Variation& variation = firstShown(product);
    const Price& price = variation.price();
    const std::string name = product.name().value_or(variation.sku());
    list.append(QVariantMap{
        {"name", QString::fromStdString(name)},
        {"sku", QString::fromStdString(variation.sku())},
        {"price",
         QString::fromStdString(price.currency()) + QString::asprintf(" %.2f", static_cast<double>(price.current()))},
        {"json", QString::fromStdString(encodeJson(product))},
    });
  }
  return list;
}

}  // namespace

std::expected<std::unique_ptr<QmlApp>, std::string> QmlApp::load(const std::string& page, const std::string& booking,
                                                                 const std::vector<Product>& products) {
  quick::registerQmlModule();
  std::unique_ptr<QmlApp> app(new QmlApp);
  app->engine_.addImageProvider("pictures", std::make_unique<ProductPictures>().release());
  app->engine_.rootContext()->setContextProperty("shop", QVariantMap{{"page", QString::fromStdString(page)},
                                                                     {"booking", QString::fromStdString(booking)},
                                                                     {"products", offered(products)}});
  QQmlComponent component(&app->engine_, QUrl::fromLocalFile(QStringLiteral(CORVANE_DEMO_PAGES "/qml/shop.qml")));
  app->window_.reset(qobject_cast<QQuickWindow*>(component.create()));
  if (app->window_ == nullptr) return std::unexpected(component.errorString().toStdString());
  return app;
}

QmlApp::~QmlApp() {
  // A call that floats would stay with the framework.
  MinimizedState::shared().remove();
}

void QmlApp::open() { window_->show(); }

std::shared_ptr<VelnorAgentView> QmlApp::agentView() const { return VelnorAgentContext::shared().agentView(); }

std::shared_ptr<UIWindow> QmlApp::views() const { return qt::viewsOver(*window_); }

void QmlApp::addToCall(const Product& product) {
  QMetaObject::invokeMethod(window_.get(), "addToCall", Q_ARG(QVariant, QString::fromStdString(encodeJson(product))));
}

void QmlApp::showProducts() { window_->setProperty("isCallOpen", false); }

std::unique_ptr<qt::FrameMeter> QmlApp::measure() { return std::make_unique<qt::FrameMeter>(*window_); }

bool QmlApp::savePicture(const std::filesystem::path& file) { return qt::saveScreenshot(*window_, file); }

}  // namespace corvane::demo
