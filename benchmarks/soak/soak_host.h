/// What every part of the soak stands on: the backend, the pages, a window and its main loop.
#pragma once

#include <chrono>
#include <expected>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "benchmarks/soak/page_server_process.h"
#include "corvane/agent_view/velnor_agent_view.h"
#include "corvane/platform/foundation/json_value.h"
#include "corvane/platform/gtk/gtk_backend.h"
#include "corvane/platform/gtk/gtk_surface.h"

// The engine's own declaration, so that including this header does not pull the engine in.
struct _WebKitWebView;
using WebKitWebView = _WebKitWebView;

namespace corvane::soak {

/// The longest time for which the main loop did not come round, measured by a timer that wants to run every few
/// milliseconds.
class GapMeter {
 public:
  GapMeter();
  GapMeter(const GapMeter&) = delete;
  GapMeter& operator=(const GapMeter&) = delete;
  ~GapMeter();

  /// Forgets what was measured.
  void restart();
  /// What has passed since the last turn is none of the loop's gaps.
  void skip() { last_ = Clock::now(); }
  [[nodiscard]] std::chrono::milliseconds longest() const;

 private:
  using Clock = std::chrono::steady_clock;
  void tick();

  Clock::time_point last_ = Clock::now();
  Clock::duration longest_{};
  unsigned timer_;
};

/// Ownership: one for the program.
/// Threads:   main thread only.
/// Failure:   `make` gives a text.
class SoakHost {
 public:
  [[nodiscard]] static std::expected<std::unique_ptr<SoakHost>, std::string> make();
  SoakHost(const SoakHost&) = delete;
  SoakHost& operator=(const SoakHost&) = delete;
  ~SoakHost();

  [[nodiscard]] const PageServerProcess& pages() const { return *pages_; }

  /// A view in the window, which has not loaded anything.
  [[nodiscard]] std::shared_ptr<VelnorAgentView> addView(const std::string& address) const;
  /// The engine's part of a view.
  [[nodiscard]] static WebKitWebView* engineOf(const UIView& view);
  [[nodiscard]] const std::shared_ptr<gtk::Surface>& surface() const { return surface_; }

  /// Runs the main loop until the condition holds; false where it does not within a time that is far beyond what
  /// anything takes.
  bool runUntil(const std::function<bool()>& condition) const;
  /// Loads a booking and brings the call into the state `running`; false where that fails.
  bool loadAndRun(VelnorAgentView& view);
  /// Takes a view away and releases it; false where somebody else still holds it.
  bool end(std::shared_ptr<VelnorAgentView>& view) const;
  /// Waits until a script says true; false where it does not.
  bool waitForPage(const UIView& view, std::string_view condition) const;

  /// Runs a script in the page.
  static void run(const UIView& view, std::string_view script);
  /// Runs a script in the page and waits for its result; null where there is none.
  [[nodiscard]] JsonValue evaluate(const UIView& view, std::string_view script) const;

  [[nodiscard]] GapMeter& gaps() { return gaps_; }

 private:
  SoakHost() = default;

  std::unique_ptr<PageServerProcess> pages_;
  std::unique_ptr<gtk::Backend> backend_;
  std::shared_ptr<gtk::Surface> surface_;
  GtkWidget* window_ = nullptr;
  GapMeter gaps_;
  int bookingCount_ = 0;
};

/// The script that makes a page post a text as a message.
[[nodiscard]] std::string postScript(std::string_view json);

}  // namespace corvane::soak
