/// The real engine under test, with a window to show it in.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "corvane/platform/gtk/gtk_surface.h"
#include "tests/contract/contract_platform.h"

namespace corvane::contract {

/// Red, green and blue, from 0 to 255.
struct Colour {
  int red = 0;
  int green = 0;
  int blue = 0;
  bool operator==(const Colour&) const = default;
};

/// What only the real engine offers.
class RealEnginePlatform : public ContractPlatform {
 public:
  /// Null, and a reason, where there is no display.
  [[nodiscard]] static std::unique_ptr<RealEnginePlatform> make(std::string& reason);

  /// The address of one of the test pages.
  [[nodiscard]] virtual std::string page(std::string_view file) = 0;
  /// Runs a script in the page that a view shows, and waits for its result.
  [[nodiscard]] virtual EvaluationResult evaluate(const UIView& view, std::string_view script) = 0;
  /// Takes a picture of the window; the result gives the colour of single pixels, black where there is no picture.
  [[nodiscard]] virtual std::function<Colour(int x, int y)> takePicture() = 0;

  /// The surface that shows the views; it lies over the host app's own widgets.
  [[nodiscard]] virtual const std::shared_ptr<gtk::Surface>& surface() = 0;
  /// Lets the backend's own dialog ask the user.
  virtual void useOwnCaptureDialog() = 0;
  /// Puts a button of the host app under the surface.
  virtual GtkWidget* addHostButton(const CGRect& frame, std::function<void()> clicked) = 0;
};

}  // namespace corvane::contract
