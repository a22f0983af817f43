/// A picture on screen.
#pragma once

#include <memory>
#include <string>

#include "corvane/platform/views/ui_view.h"

namespace corvane {

/// Shows a picture from a file, in the middle of the view and as large as fits without stretching it. The toolkit reads
/// it, PNG and JPEG at least, when it is first shown.
///
/// Ownership, threads as every view. Failure: where the file cannot be read nothing is shown.
class CORVANE_EXPORT UIImageView final : public UIView {
 public:
  /// The size is that of the view in points, whatever the picture's.
  static std::shared_ptr<UIImageView> create(std::string file = {}, CGSize size = {});
  explicit UIImageView(ConstructionKey key, std::string file, CGSize size);

  [[nodiscard]] const std::string& file() const CORVANE_LIFETIMEBOUND { return file_; }
  void setFile(std::string file);
  void setPreferredSize(CGSize size);

  [[nodiscard]] CGSize sizeThatFits(CGSize offered) const override;

  /// What a backend keeps of the file between frames; dropped with the file's name.
  [[nodiscard]] std::shared_ptr<void>& picture() const { return picture_; }

 private:
  std::string file_;
  CGSize preferredSize_;
  mutable std::shared_ptr<void> picture_;
};

}  // namespace corvane
