#include "demo/qml/qml_app.h"

#include <QUrl>
#include <QtQml/QQmlComponent>
#include <QtQml/QQmlContext>
#include <utility>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/declarative/velnor_agent_context.h"
#include "corvane/platform/qt/qt_screenshot.h"
#include "corvane/platform/qt/qt_views_over.h"
#include "corvane/quick/qml_module.h"
#include "demo/shop/floating_look.h"
#include "demo/shop/product_pictures.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

QVariantList offered(const std::vector<Product>& products) {
  QVariantList list;
  for (std::size_t index = 0; index < products.size(); ++index) {
    const Product& product = products[index];
    const Variation& variation = firstShown(product);
    const Price& price = variation.price();
    const std::string name = product.name().value_or(variation.sku());
    list.append(QVariantMap{
        {"name", QString::fromStdString(name)},
        {"picture", QUrl::fromLocalFile(QString::fromStdString(pictureFile(index)))},
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
  app->engine_.rootContext()->setContextProperty("shop", QVariantMap{{"page", QString::fromStdString(page)},
                                                                     {"booking", QString::fromStdString(booking)},
                                                                     {"products", offered(products)}});
  QQmlComponent component(&app->engine_, QUrl::fromLocalFile(QStringLiteral(CORVANE_DEMO_PAGES "/qml/shop.qml")));
  app->window_.reset(qobject_cast<QQuickWindow*>(component.create()));
  if (app->window_ == nullptr) return std::unexpected(component.errorString().toStdString());
  // The edge is drawn with the agent view, so it is set there.
  app->floating_ = VelnorAgentContext::shared().publishedIsMinimized().subscribe([](bool isFloating) {
    const auto view = VelnorAgentContext::shared().agentView();
    if (view == nullptr) return;
    followWithEdge(*view, isFloating ? AgentEvent(AgentEvent::WillMinimize{}) : AgentEvent(AgentEvent::WillMaximize{}));
  });
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
