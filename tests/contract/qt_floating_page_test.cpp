// What pages in small windows have to do with the toolkit's own drags.
#include <qpa/qplatformdrag.h>
#include <qpa/qwindowsysteminterface.h>
#include <QApplication>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include "tests/contract/floating_page.h"

namespace corvane::contract {
namespace {

using QtFloatingPage = FloatingPage;

TEST_P(QtFloatingPage, WhatIsDroppedReachesThePagesZoneAndReplacesNothing) {
  shrink();
  ASSERT_NO_FATAL_FAILURE(show());
  EXPECT_TRUE(evaluate(
      "document.body.innerHTML = '<div id=zone style=\"position:fixed; inset:0 0 50% 0\"></div>';"
      "zone.ondragover = (event) => event.preventDefault();"
      "zone.ondrop = (event) => { event.preventDefault(); seen.push(event.dataTransfer.getData('text/plain')); };"
      "addEventListener('dragover', () => seen.push('over')); 0"));
  QWindow* const window = QApplication::activeWindow()->windowHandle();
  QMimeData data;
  data.setText("SKU-1");
  data.setUrls({QUrl(QString::fromStdString(platform_->page("plain.html")))});
  const auto drop = [&](QPoint place) {
    forgetEvents();
    for (int step = 0; step < 2; ++step) {
      QWindowSystemInterface::handleDrag(window, &data, place, Qt::CopyAction, Qt::LeftButton, Qt::NoModifier);
    }
    EXPECT_TRUE(waitForPage("seen.includes('over')")) << seen();
    QWindowSystemInterface::handleDrop(window, &data, place, Qt::CopyAction, Qt::NoButton, Qt::NoModifier);
  };
  drop({300, 750});
  drop({300, 550});
  EXPECT_TRUE(waitForPage("seen.includes('SKU-1')")) << seen();
}

INSTANTIATE_TEST_SUITE_P(, QtFloatingPage, testing::Values(qtEngine()), [](const auto&) { return "RealEngineQt"; });

}  // namespace
}  // namespace corvane::contract
