#include "demo/gtk/picture.h"

#include <chrono>
#include <cstdio>
#include <system_error>

#include "corvane/platform/foundation/run_loop.h"
#include "corvane/platform/gtk/gtk_screenshot.h"
#include "demo/gtk/widgets.h"

namespace corvane::demo {

namespace {

constexpr int attemptsAtAPicture = 5;
constexpr std::chrono::milliseconds betweenAttempts{20};

void attempt(const WidgetHandle& widget, const std::filesystem::path& file, int attempts) {
  const bool isSaved = gtk::saveScreenshot(widget.get(), file);
  if (!isSaved && attempts > 1) {
    // There is nothing to see of a window that is about to be laid out.
    RunLoop::main().schedule(betweenAttempts, [widget, file, attempts] { attempt(widget, file, attempts - 1); });
    return;
  }
  std::printf("%s %s\n", isSaved ? "picture:" : "no picture could be saved as", file.c_str());
}

}  // namespace

void savePicture(GtkWidget* widget, const std::filesystem::path& folder, const std::string& name) {
  std::error_code ignored;  // saving then fails and says so
  std::filesystem::create_directories(folder, ignored);
  attempt(keep(widget), folder / (name + ".png"), attemptsAtAPicture);
}

}  // namespace corvane::demo
