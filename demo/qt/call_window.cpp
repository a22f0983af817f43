#include "demo/qt/call_window.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QVBoxLayout>
#include <utility>

#include "corvane/agent_view/minimized_state.h"
#include "corvane/platform/qt/qt_screenshot.h"
#include "demo/shop/event_printer.h"
#include "demo/shop/floating_look.h"
#include "demo/shop/shop_products.h"

namespace corvane::demo {

namespace {

constexpr int phoneWidth = 390;
constexpr int phoneHeight = 844;
constexpr int barHeight = 64;
constexpr int callScreen = 0;
constexpr int productsScreen = 1;

constexpr const char* styleSheetText = R"(
  QWidget { background: #f4f2ee; color: #1b2530; font-size: 14px; }
  QLabel#title { font-size: 22px; font-weight: 700; }
  QLabel#soft { color: #5a6672; }
  QWidget#card, QWidget#card QLabel { background: #ffffff; }
  QWidget#card { border: 1px solid #e2ded6; border-radius: 12px; }
  QPushButton { background: #ffffff; border: 1px solid #c9c4ba; border-radius: 10px; padding: 9px 12px; }
  QPushButton:hover { background: #eef5f3; }
  QPushButton:checked { background: #0f6b62; color: #ffffff; }
  QPushButton:disabled { color: #8b949d; })";

/// A part of the window for views to be in. Where it has none, what lies under it can be used.
class Area final : public UIView {
 public:
  using UIView::UIView;
  static std::shared_ptr<Area> create() { return std::make_shared<Area>(ConstructionKey{}); }
  [[nodiscard]] bool pointInside(CGPoint /*point*/) const override { return false; }
};

QLabel* makeLabel(const std::string& text, const char* name) {
  auto* const label = new QLabel(QString::fromStdString(text));
  label->setObjectName(QLatin1String(name));
  label->setWordWrap(true);
  return label;
}

QString priceOf(const Product& product) {
  const Price& price = firstShown(product).price();
  return QString::fromStdString(price.currency()) + QString::asprintf(" %.2f", static_cast<double>(price.current()));
}

}  // namespace

CallWindow::CallWindow(const std::string& page, std::string booking, const std::vector<Product>& products)
    : view_(VelnorAgentView::create(Region::custom(page), "shop-42", /*enableSSO=*/true)),
      requests_(std::make_shared<ShopRequests>(
          view_, [this](const std::string& line) { report_->setText(QString::fromStdString(line)); })),
      callArea_(Area::create()),
      floatingArea_(Area::create()),
      booking_(std::move(booking)) {
  setWindowTitle(QStringLiteral("Shop: the agent"));
  setStyleSheet(QLatin1String(styleSheetText));
  resize(phoneWidth, phoneHeight);
  screens_ = new QStackedWidget;
  screens_->addWidget(makeLabel("The call floats. It stays while you look around, and can be dragged.", "soft"));
  screens_->addWidget(makeProducts(products));
  auto* const below = new QWidget;
  auto* const column = new QVBoxLayout(below);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(screens_, 1);
  column->addWidget(makeBar());
  // Both in one cell: where the surface shows nothing, what is below can be used.
  auto* const grid = new QGridLayout(this);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(below, 0, 0);
  grid->addWidget(surface_->widget(), 0, 0);
  surface_->widget()->raise();
  placeCall();
  view_->setEventHandler([this](const AgentEvent& event) { receive(event); });
  showCall();
}

CallWindow::~CallWindow() {
  MinimizedState::shared().resetRestoreAction();
  // A call that floats would stay with the framework, and with the area that it floats in.
  MinimizedState::shared().remove();
  view_->setMinimizedSuperview(nullptr);
  view_->setEventHandler(nullptr);
}

QWidget* CallWindow::makeProducts(const std::vector<Product>& products) {
  auto* const list = new QWidget;
  auto* const column = new QVBoxLayout(list);
  column->setSpacing(10);
  column->addWidget(makeLabel("Products", "title"));
  report_ = makeLabel("Add a product, and the customer sees it.", "soft");
  column->addWidget(report_);
  for (const Product& product : products) {
    const std::string sku = firstShown(product).sku();
    auto* const card = new QWidget;
    card->setObjectName(QStringLiteral("card"));
    auto* const row = new QGridLayout(card);
    auto* const quantity = makeLabel("", "soft");
    auto* const addToCall = new QPushButton(QStringLiteral("Add to call"));
    auto* const addToCart = new QPushButton(QStringLiteral("Add to cart"));
    row->addWidget(makeLabel(product.name().value_or(sku), "name"), 0, 0);
    row->addWidget(quantity, 0, 1, Qt::AlignRight);
    row->addWidget(makeLabel(priceOf(product).toStdString(), "soft"), 1, 0);
    row->addWidget(addToCall, 2, 0);
    row->addWidget(addToCart, 2, 1);
    connect(addToCall, &QPushButton::clicked, this, [this, product] { requests_->addToCall(product); });
    connect(addToCart, &QPushButton::clicked, this, [this, sku] { requests_->addToCart(sku); });
    rows_.push_back({sku, quantity});
    column->addWidget(card);
  }
  column->addStretch(1);
  auto* const scrolled = new QScrollArea;
  scrolled->setWidgetResizable(true);
  scrolled->setFrameShape(QFrame::NoFrame);
  scrolled->setWidget(list);
  return scrolled;
}

QWidget* CallWindow::makeBar() {
  auto* const bar = new QWidget;
  bar->setFixedHeight(barHeight);
  auto* const row = new QHBoxLayout;
  for (const char* const name : {"Call", "Products"}) {
    auto* const tab = new QPushButton(QLatin1String(name));
    tab->setCheckable(true);
    const int index = static_cast<int>(tabs_.size());
    connect(tab, &QPushButton::clicked, this, [this, index] { showScreen(index); });
    row->addWidget(tab);
    tabs_.push_back(tab);
  }
  bar->setLayout(row);
  return bar;
}

void CallWindow::placeCall() {
  // The areas follow the window from this size on, and leave the bar free.
  surface_->window()->setFrame({{0, 0}, {phoneWidth, phoneHeight}});
  constexpr auto bothWays = UIViewAutoresizing::flexibleWidth | UIViewAutoresizing::flexibleHeight;
  for (const auto& area : {callArea_, floatingArea_}) {
    area->setFrame({{0, 0}, {phoneWidth, phoneHeight - barHeight}});
    area->setAutoresizingMask(bothWays);
    surface_->window()->addSubview(area);
  }
  view_->setAutoresizingMask(bothWays);
  view_->setFrame(callArea_->bounds());
  callArea_->addSubview(view_);
  view_->setMinimizedSuperview(floatingArea_);
  view_->setMinimizedOrigin(MinimizedOrigin::bottomRight());
  MinimizedState::shared().registerRestoreAction([this](const std::shared_ptr<VelnorAgentView>& view) {
    showCall();
    callArea_->addSubview(view);
    // The window may have another size by now.
    view->setFrame(callArea_->bounds());
  });
}

void CallWindow::open() {
  show();
  view_->loadBooking(booking_);
}

std::unique_ptr<qt::FrameMeter> CallWindow::measure() { return std::make_unique<qt::FrameMeter>(surface_->widget()); }

bool CallWindow::savePicture(const std::filesystem::path& file) { return qt::saveScreenshot(this, file); }

void CallWindow::showCall() { showScreen(callScreen); }
void CallWindow::showProducts() { showScreen(productsScreen); }

void CallWindow::showScreen(int index) {
  screens_->setCurrentIndex(index);
  callArea_->setHidden(index != callScreen);
  for (int tab = 0; tab < static_cast<int>(tabs_.size()); ++tab) {
    tabs_[static_cast<std::size_t>(tab)]->setChecked(tab == index);
  }
}

void CallWindow::receive(const AgentEvent& event) {
  printEvent(event, *view_);
  followWithEdge(*view_, event);
  cart_.follow(event);
  for (const Row& row : rows_) {
    const auto quantity = cart_.quantityOf(row.sku);
    row.quantity->setText(quantity > 0 ? QString::number(quantity) + QStringLiteral(" in cart") : QString());
  }
  if (const auto* ask = event.getIf<AgentEvent::RefreshSsoToken>()) requests_->refreshToken(ask->responseId);
}

}  // namespace corvane::demo
