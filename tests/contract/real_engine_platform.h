/// A real engine under test, with a window to show it in, whatever toolkit that is made with.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "corvane/platform/views/touch_event.h"
#include "demo/server/local_page_server.h"
#include "tests/contract/contract_platform.h"
#include "tests/contract/trouble_server.h"

namespace corvane::contract {

/// Red, green and blue, from 0 to 255.
struct Colour {
  int red = 0;
  int green = 0;
  int blue = 0;
  bool operator==(const Colour&) const = default;
};

/// A mouse, fingers and keys over one surface. Their events arrive some time later, so wait for what they bring about.
class TestPointer {
 public:
  virtual ~TestPointer() = default;
  virtual void press(int button = 1) = 0;
  virtual void release(int button = 1) = 0;
  [[nodiscard]] virtual bool hasFingers() const = 0;
  /// All fingers are taken away where one is cancelled.
  virtual void touch(int finger, TouchPhase phase, CGPoint at = {}) = 0;
  enum class Key : std::uint8_t { tab, space, enter, left, right, up, down, a };
  /// Presses keys one after the other and releases them in the opposite order.
  virtual void type(std::initializer_list<Key> chord) = 0;

  void move(CGPoint to) { moveNow(position_ = to); }
  void click(CGPoint at) {
    move(at);
    press();
    release();
  }
  /// In steps from where the pointer is; what is pressed stays so.
  void moveInSteps(CGPoint to);

 private:
  virtual void moveNow(CGPoint to) = 0;

  CGPoint position_;
};

/// What has the keys in the window of the app.
enum class Focus : std::uint8_t { nothing, page, surface, host };

/// A surface with a window of the toolkit for itself.
class TestScreen {
 public:
  virtual ~TestScreen() = default;
  /// The surface's window of views; null after its end.
  [[nodiscard]] virtual std::shared_ptr<UIWindow> window() = 0;
  /// Ends the surface before its toolkit's window.
  virtual void endSurface() = 0;
  /// Null, and a reason, where no events can be made.
  [[nodiscard]] virtual std::unique_ptr<TestPointer> openPointer(std::string& reason) = 0;
  /// Counts the frames of the surface from now on.
  [[nodiscard]] virtual std::function<int()> countFrames() = 0;
};

/// What only a real engine offers, and how pages are made to do things: by scripts.
class RealEnginePlatform : public ContractPlatform {
 public:
  std::string address(PageKind kind) override;
  void providePages(const std::shared_ptr<UIView>&) override {}
  bool runUntil(const std::function<bool()>& condition) override;
  void pagePostsValue(const UIView& view, std::string_view data) override;
  void pagePostsText(const UIView& view, std::string_view text) override;
  void pageGetsMessageFromAnotherOrigin(const UIView& view, std::string_view data) override;
  void pageFloods(const UIView& view, std::string_view data) override;
  bool pageCaptures(const UIView& view) override;
  void pageHasTrouble(const UIView& view, const simulation::PageTrouble::Value& trouble) override;
  void setPromptAnswer(bool isAllowed) override { promptAnswer_ = isAllowed; }
  int promptCount() const override { return promptCount_; }

  /// The address of one of the test pages.
  [[nodiscard]] std::string page(std::string_view file) const;
  /// The address of a page of the demo.
  [[nodiscard]] std::string demoPage(std::string_view file) const;
  /// Runs a script in the page that a view shows, and waits for its result.
  [[nodiscard]] EvaluationResult evaluate(const UIView& view, std::string_view script);
  /// Takes a picture of the window; the result gives the colour of single pixels, black where there is no picture.
  [[nodiscard]] virtual std::function<Colour(int x, int y)> takePicture() = 0;

  /// Counts the frames of the surface from now on.
  [[nodiscard]] virtual std::function<int()> countFrames() = 0;
  /// Asks for a frame although nothing has changed.
  virtual void queueFrame() = 0;
  /// Null, and a reason, where there is no mouse to move.
  [[nodiscard]] virtual std::unique_ptr<TestPointer> openPointer(std::string& reason) = 0;
  /// Puts a button of the host app under the surface.
  virtual void addHostButton(const CGRect& frame, std::function<void()> clicked) = 0;
  [[nodiscard]] virtual Focus focus() = 0;
  /// Opens the developer tools of a view's page; false where there is none.
  virtual bool showDeveloperTools(const UIView& view) = 0;
  /// The toolkit's windows on screen.
  [[nodiscard]] virtual int windowCount() = 0;
  virtual void setSurfaceVisible(bool isVisible) = 0;
  /// Puts the surface into a window of its own, or back over the host app's widgets.
  virtual void moveSurface(bool isAlone) = 0;
  /// Another surface; without a window on screen where `isShown` is false.
  [[nodiscard]] virtual std::unique_ptr<TestScreen> makeScreen(bool isShown) = 0;

 protected:
  /// How the user answers; for the backend's prompt.
  [[nodiscard]] std::function<void(const WKMediaCaptureRequest&, std::move_only_function<void(bool)>)> prompt();
  /// One turn of the main loop; false where there was nothing to do.
  virtual bool iterate(bool mayBlock) = 0;
  /// Starts the servers. Empty, or a reason.
  [[nodiscard]] std::string begin();

 private:
  std::unique_ptr<demo::LocalPageServer> server_;
  std::unique_ptr<demo::LocalPageServer> demoPages_;
  TroubleServer trouble_;
  bool promptAnswer_ = false;
  int promptCount_ = 0;
};

/// What backends of both kinds are asked for, to be seen again in the pages.
inline constexpr const char* userAgentSuffix = "Shop/2.1";
inline constexpr const char* pageLanguage = "rm-CH";
inline constexpr std::size_t longestMessage = 4'000'000;

/// A backend with a real engine.
struct RealEngineMaker {
  std::string name;
  /// Null, and a reason, where it cannot run here.
  std::function<std::unique_ptr<RealEnginePlatform>(std::string& reason)> make;
};

inline void PrintTo(const RealEngineMaker& maker, std::ostream* out) { *out << maker.name; }

/// Only where the backends are built.
[[nodiscard]] RealEngineMaker gtkEngine();
[[nodiscard]] RealEngineMaker qtEngine();
/// The same engine in an app of Qt Quick: for what its surface does otherwise.
[[nodiscard]] RealEngineMaker quickEngine();
/// Every engine that is built.
[[nodiscard]] std::vector<RealEngineMaker> realEngines();
/// Every kind of surface.
[[nodiscard]] std::vector<RealEngineMaker> surfaces();

}  // namespace corvane::contract
