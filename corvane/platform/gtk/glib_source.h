/// A moment at which the GLib main loop calls us.
#pragma once

#include <glib.h>

#include <chrono>
#include <cstdint>
#include <functional>

namespace corvane::gtk {

/// The time as the main loop's sources see it, from an arbitrary beginning.
std::chrono::nanoseconds monotonicTime();

/// Calls a function from the default main context once its ready time has come, again and again until the ready time
/// is moved. Nested main loops call it too. Times are rounded up, so that it never calls early.
///
/// Ownership: owned by its maker; nothing is called once it is gone. The function may destroy it.
/// Threads:   made and destroyed on the main thread, which also runs the function; `setReadyTime` from any thread.
/// Failure:   none; the function must not throw.
class GlibSource {
 public:
  explicit GlibSource(std::function<void()> function);
  GlibSource(const GlibSource&) = delete;
  GlibSource& operator=(const GlibSource&) = delete;
  ~GlibSource();

  void setReadyTime(std::chrono::nanoseconds time);
  void setNeverReady();

 private:
  void moveReadyTime(std::int64_t time);

  GSource* source_;
};

}  // namespace corvane::gtk
