#include "corvane/platform/qt/qt_capture.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QUrl>
#include <QWindow>
#include <algorithm>
#include <optional>
#include <utility>

#include "corvane/platform/engine/capture_question.h"
#include "corvane/platform/qt/qt_text.h"

namespace corvane::qt {

namespace {

using Feature = QWebEnginePage::Feature;

std::optional<WKMediaCaptureType> captureType(Feature feature) {
  switch (feature) {
    case QWebEnginePage::MediaAudioCapture:
      return WKMediaCaptureType::microphone;
    case QWebEnginePage::MediaVideoCapture:
      return WKMediaCaptureType::camera;
    case QWebEnginePage::MediaAudioVideoCapture:
      return WKMediaCaptureType::cameraAndMicrophone;
    default:
      return std::nullopt;
  }
}

/// Null for a window of Qt Quick.
QWidget* widgetOf(const QWindow& window) {
  const QWidgetList widgets = QApplication::topLevelWidgets();
  const auto found = std::ranges::find(widgets, &window, &QWidget::windowHandle);
  return found != widgets.end() ? *found : nullptr;
}

/// Asks in a modal dialog over the page's window. The answer is dropped uncalled where there is none, when the page
/// ends, or when the dialog is closed.
void showCaptureDialog(QWindow* parent, QWebEnginePage* page, const CaptureDialogTexts& texts,
                       const WKMediaCaptureRequest& request, std::move_only_function<void(bool)> answer) {
  if (parent == nullptr || page == nullptr) return;
  auto* const dialog = new QMessageBox(widgetOf(*parent));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  if (dialog->parent() == nullptr) {
    dialog->winId();
    dialog->windowHandle()->setTransientParent(parent);
  }
  dialog->setWindowModality(Qt::WindowModal);
  dialog->setIcon(QMessageBox::Question);
  const std::string host = toText(QUrl(toQString(request.pageUrl)).host());
  dialog->setText(
      toQString(texts.question ? texts.question(host, request.type) : engine::captureQuestion(host, request.type)));
  const auto wordOr = [](const std::string& text, const char* usual) { return toQString(text.empty() ? usual : text); };
  dialog->addButton(wordOr(texts.refuse, "Don't allow"), QMessageBox::RejectRole);
  QPushButton* const allow = dialog->addButton(wordOr(texts.allow, "Allow"), QMessageBox::AcceptRole);
  auto once = std::make_shared<std::move_only_function<void(bool)>>(std::move(answer));
  QObject::connect(dialog, &QMessageBox::buttonClicked, dialog, [once, allow](QAbstractButton* clicked) {
    if (auto taken = std::exchange(*once, nullptr)) taken(clicked == allow);
  });
  QObject::connect(page, &QObject::destroyed, dialog, &QWidget::close);
  QObject::connect(page, &QWebEnginePage::loadStarted, dialog, &QWidget::close);
  QObject::connect(page, &QWebEnginePage::renderProcessTerminated, dialog, &QWidget::close);
  dialog->show();
}

}  // namespace

void handleFeatureRequests(QWebEnginePage& page, DialogParent parent, std::shared_ptr<EngineContext> context,
                           std::weak_ptr<WebEngineClient> client) {
  const QPointer<QWebEnginePage> weak(&page);
  QObject::connect(&page, &QWebEnginePage::featurePermissionRequested, &page,
                   [weak, parent = std::move(parent), context = std::move(context), client = std::move(client)](
                       const QUrl& origin, Feature feature) {
                     engine::CaptureAnswer answer([weak, origin, feature](bool isAllowed) {
                       if (weak == nullptr) return;
                       weak->setFeaturePermission(origin, feature,
                                                  isAllowed ? QWebEnginePage::PermissionGrantedByUser
                                                            : QWebEnginePage::PermissionDeniedByUser);
                     });
                     const auto type = captureType(feature);
                     const auto receiver = client.lock();
                     if (!type || receiver == nullptr) return;
                     auto ask = [weak, parent, context](const WKMediaCaptureRequest& request,
                                                        std::move_only_function<void(bool)> passOn) {
                       if (const CapturePrompt prompt = context->capturePrompt)
                         return prompt(request, std::move(passOn));
                       showCaptureDialog(parent(), weak, context->captureDialogTexts, request, std::move(passOn));
                     };
                     const WKMediaCaptureRequest request{*type, toText(weak->url().toEncoded())};
                     receiver->engineRequestsCapture(
                         request, engine::makeDecisionHandler(request, std::move(answer), std::move(ask)));
                   });
}

}  // namespace corvane::qt
