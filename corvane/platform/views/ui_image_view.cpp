#include "corvane/platform/views/ui_image_view.h"

#include <utility>

#include "corvane/platform/foundation/platform.h"

namespace corvane {

std::shared_ptr<UIImageView> UIImageView::create(std::string file, CGSize size) {
  return std::make_shared<UIImageView>(ConstructionKey{}, std::move(file), size);
}

UIImageView::UIImageView(ConstructionKey key, std::string file, CGSize size)
    : UIView(key, {{}, size}), file_(std::move(file)), preferredSize_(size) {}

void UIImageView::setFile(std::string file) {
  assertMainThread();
  if (file == file_) return;
  file_ = std::move(file);
  picture_.reset();
  noteChange();
}

void UIImageView::setPreferredSize(CGSize size) {
  assertMainThread();
  if (size == preferredSize_) return;
  preferredSize_ = size;
  noteFitChange();
}

CGSize UIImageView::sizeThatFits(CGSize /*offered*/) const { return preferredSize_; }

}  // namespace corvane
