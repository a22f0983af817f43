/// Signal handlers that are C++ callables.
#pragma once

#include <utility>

#include "corvane/platform/gtk/gobject_handle.h"

namespace corvane::gtk {

namespace signal_detail {

/// No exception may unwind through the C library, so a handler that throws ends the program here.
template <class Signature, class Handler>
struct Trampoline;

template <class Result, class... Arguments, class Handler>
struct Trampoline<Result(Arguments...), Handler> {
  static Result call(Arguments... arguments, gpointer handler) noexcept {
    return (*static_cast<Handler*>(handler))(arguments...);
  }
  static void destroy(gpointer handler, GClosure*) noexcept { delete static_cast<Handler*>(handler); }
};

}  // namespace signal_detail

/// Connects a handler that lives as long as the object. The signature is the signal's, with the object first.
template <class Signature, class Handler>
gulong connectForLife(gpointer object, const char* signal, Handler handler) {
  using Trampoline = signal_detail::Trampoline<Signature, Handler>;
  return g_signal_connect_data(object, signal, reinterpret_cast<GCallback>(&Trampoline::call),
                               new Handler(std::move(handler)), &Trampoline::destroy, static_cast<GConnectFlags>(0));
}

/// A handler that is connected while this exists. It may be disconnected from inside its own call.
///
/// Ownership: keeps the object alive, so the handler must not own the connection.
/// Threads:   that of the object.
class SignalConnection {
 public:
  template <class Signature, class Handler>
  static SignalConnection make(gpointer object, const char* signal, Handler handler) {
    const gulong id = connectForLife<Signature>(object, signal, std::move(handler));
    return SignalConnection(GObjectHandle<GObject>::retain(object), id);
  }

  SignalConnection(SignalConnection&& other) noexcept
      : object_(std::move(other.object_)), id_(std::exchange(other.id_, 0)) {}
  SignalConnection& operator=(SignalConnection&& other) noexcept {
    std::swap(object_, other.object_);
    std::swap(id_, other.id_);
    return *this;
  }
  ~SignalConnection() {
    if (id_ != 0) g_signal_handler_disconnect(object_.get(), id_);
  }

 private:
  SignalConnection(GObjectHandle<GObject> object, gulong id) : object_(std::move(object)), id_(id) {}

  GObjectHandle<GObject> object_;
  gulong id_ = 0;
};

}  // namespace corvane::gtk
