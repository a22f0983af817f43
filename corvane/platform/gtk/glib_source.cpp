#include "corvane/platform/gtk/glib_source.h"

#include <utility>

namespace corvane::gtk {

namespace {

using Function = std::function<void()>;

gboolean dispatch(GSource*, GSourceFunc callback, gpointer data) { return callback(data); }

// The loop asks only the ready time; a source needs no checks of its own for that.
GSourceFuncs functions{nullptr, nullptr, dispatch, nullptr, nullptr, nullptr};

gboolean call(gpointer function) noexcept {
  (*static_cast<Function*>(function))();
  return G_SOURCE_CONTINUE;
}

void destroy(gpointer function) noexcept { delete static_cast<Function*>(function); }

}  // namespace

std::chrono::nanoseconds monotonicTime() { return std::chrono::microseconds(g_get_monotonic_time()); }

GlibSource::GlibSource(std::function<void()> function) : source_(g_source_new(&functions, sizeof(GSource))) {
  g_source_set_callback(source_, call, new Function(std::move(function)), destroy);
  g_source_set_can_recurse(source_, TRUE);
  g_source_attach(source_, nullptr);
}

GlibSource::~GlibSource() {
  g_source_destroy(source_);
  g_source_unref(source_);
}

void GlibSource::setReadyTime(std::chrono::nanoseconds time) {
  g_source_set_ready_time(source_, std::chrono::ceil<std::chrono::microseconds>(time).count());
}

void GlibSource::setNeverReady() { g_source_set_ready_time(source_, -1); }

}  // namespace corvane::gtk
