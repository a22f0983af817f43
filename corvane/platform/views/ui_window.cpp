#include "corvane/platform/views/ui_window.h"

namespace corvane {

UIWindowHost::~UIWindowHost() = default;

std::shared_ptr<UIWindow> UIWindow::create(CGRect frame) {
  return std::make_shared<UIWindow>(ConstructionKey{}, frame);
}

}  // namespace corvane
