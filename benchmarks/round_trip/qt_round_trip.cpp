// A request's whole way over Qt WebEngine and back, beside loops that do less on the same page with the same injected
// scripts and the same way for messages.
#include <unistd.h>
#include <QApplication>
#include <QGridLayout>
#include <QThread>
#include <QWidget>
#include <QtWebEngineCore/QWebEnginePage>
#include <QtWebEngineCore/QWebEngineScriptCollection>
#include <array>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/round_trip/comparison.h"
#include "corvane/platform/qt/qt_backend.h"
#include "corvane/platform/qt/qt_page_view.h"
#include "corvane/platform/qt/qt_surface.h"
#include "corvane/platform/qt/qt_web_engine.h"
#include "demo/server/local_page_server.h"

namespace corvane::benchmarks {
namespace {

/// Tells of every line for the console that is a message.
class ListeningPage final : public QWebEnginePage {
 public:
  ListeningPage(QWebEngineProfile* profile, QObject* parent, std::function<void(const QString&)> said)
      : QWebEnginePage(profile, parent), said_(std::move(said)) {}

 protected:
  void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& line, int, const QString&) override {
    // A secret, and what kind of word it is.
    constexpr qsizetype secretLength = 16;
    if (line.size() > secretLength && line.at(secretLength) == QLatin1Char('#')) said_(line);
  }

 private:
  std::function<void(const QString&)> said_;
};

class BareQtAsker final : public BareAsker {
 public:
  BareQtAsker(const WKWebView& model, const std::string& address, Effort effort) : BareAsker(effort) {
    QWebEnginePage* const modelPage = dynamic_cast<qt::QtWebEngine&>(model.engine()).view().page();
    auto page = std::make_unique<ListeningPage>(modelPage->profile(), &view_, [this](const QString& line) {
      if (reads()) {
        const QByteArray json = line.mid(line.indexOf(QLatin1Char(' ')) + 1).toUtf8();
        readCount_ += JsonValue::parse({json.constData(), static_cast<std::size_t>(json.size())}) ? 1 : 0;
      }
      messageCame();
    });
    page->scripts().insert(modelPage->scripts().toList());
    // The view owns it.
    view_.setPage(page.release());
    view_.load(QUrl(QString::fromStdString(address)));
  }

 private:
  void evaluate(const std::string& script) override { view_.page()->runJavaScript(QString::fromStdString(script)); }

  qt::PageView view_;
  int readCount_ = 0;
};

int run(int count, char** arguments) {
  if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  if (getuid() == 0) qputenv("QTWEBENGINE_DISABLE_SANDBOX", "1");
  const QApplication application(count, arguments);
  const auto backend = qt::Backend::install({.isEphemeral = true});
  if (!backend) {
    std::printf("round trip: skipped. %s\n", backend.error().c_str());
    return 0;
  }
  const auto server = demo::LocalPageServer::start(CORVANE_BENCHMARK_PAGES);
  if (!server) {
    std::printf("round trip: skipped. %s\n", server.error().c_str());
    return 0;
  }
  const std::string address = (*server)->address("answers_at_once.html");
  const Iterate iterate = [] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); };
  QWidget window;
  window.resize(390, 844);
  const auto surface = qt::Surface::create();
  const auto layout = std::make_unique<QGridLayout>(&window);
  layout->addWidget(surface->widget(), 0, 0);
  window.show();
  ViewAsker ours(*surface->window(), address);
  std::array<BareQtAsker, 4> bare{{{ours.webView(), address, Effort::nextTurn},
                                   {ours.webView(), address, Effort::newTextReads},
                                   {ours.webView(), address, Effort::newText},
                                   {ours.webView(), address, Effort::least}}};
  const std::vector<Contestant> contestants = contestantsOf(ours, bare);
  runUntil(iterate, [&] { return areReady(contestants); });
  compareAll(contestants, iterate);
  return 0;
}

}  // namespace
}  // namespace corvane::benchmarks

int main(int count, char** arguments) { return corvane::benchmarks::run(count, arguments); }
