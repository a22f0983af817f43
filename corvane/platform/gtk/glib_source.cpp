#include "corvane/platform/gtk/glib_source.h"

#include <algorithm>
#include <atomic>
#include <memory>
#include <utility>

namespace corvane::gtk {

namespace {

using Function = std::function<void()>;

constexpr gint64 never = -1;

struct ReadySource {
  GSource base;
  /// In microseconds.
  std::atomic<gint64> readyTime;
};

ReadySource& readySource(GSource* source) { return *reinterpret_cast<ReadySource*>(source); }

gboolean check(GSource* source) noexcept {
  const gint64 time = readySource(source).readyTime;
  return time != never && time <= g_source_get_time(source) ? TRUE : FALSE;
}

gboolean prepare(GSource* source, gint* timeout) noexcept {
  constexpr gint64 inMilliseconds = 1000;
  const gint64 time = readySource(source).readyTime;
  const gint64 left = time - g_source_get_time(source);
  *timeout = time == never
                 ? -1
                 : static_cast<gint>(std::clamp<gint64>((left + inMilliseconds - 1) / inMilliseconds, 0, G_MAXINT));
  return time != never && left <= 0 ? TRUE : FALSE;
}

gboolean dispatch(GSource*, GSourceFunc callback, gpointer data) { return callback(data); }

// A ready time of the toolkit's own would write to the loop's descriptor whenever it is moved, and so cost a turn of
// the loop each time, on the loop's own thread as well.
GSourceFuncs functions{prepare, check, dispatch, nullptr, nullptr, nullptr};

gboolean call(gpointer function) noexcept {
  (*static_cast<Function*>(function))();
  return G_SOURCE_CONTINUE;
}

void destroy(gpointer function) noexcept { delete static_cast<Function*>(function); }

}  // namespace

std::chrono::nanoseconds monotonicTime() { return std::chrono::microseconds(g_get_monotonic_time()); }

GlibSource::GlibSource(std::function<void()> function) : source_(g_source_new(&functions, sizeof(ReadySource))) {
  std::construct_at(&readySource(source_).readyTime, never);
  g_source_set_callback(source_, call, new Function(std::move(function)), destroy);
  g_source_set_can_recurse(source_, TRUE);
  g_source_attach(source_, nullptr);
}

GlibSource::~GlibSource() {
  g_source_destroy(source_);
  g_source_unref(source_);
}

void GlibSource::setReadyTime(std::chrono::nanoseconds time) {
  moveReadyTime(std::chrono::ceil<std::chrono::microseconds>(time).count());
}

void GlibSource::setNeverReady() { moveReadyTime(never); }

void GlibSource::moveReadyTime(std::int64_t time) {
  readySource(source_).readyTime = time;
  // The loop looks at its sources before it waits again. Only a loop that waits meanwhile has to be woken.
  if (time != never && g_main_context_is_owner(nullptr) == FALSE) g_main_context_wakeup(nullptr);
}

}  // namespace corvane::gtk
