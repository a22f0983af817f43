/// Ownership at the border to the C libraries: references, other resources, and casts between object types.
#pragma once

#include <glib-object.h>

#include <memory>
#include <utility>

namespace corvane::gtk {

/// Views an object as another type of its class hierarchy. The libraries' own macros are C casts.
template <class To>
To* objectCast(gpointer object) {
  return static_cast<To*>(object);
}

/// One counted reference to an object, or none.
///
/// Ownership: shares the object with everyone else who holds a reference.
/// Threads:   that of the object.
template <class Object>
class GObjectHandle {
 public:
  GObjectHandle() = default;
  /// Takes over a reference that the caller owns.
  static GObjectHandle adopt(gpointer object) { return GObjectHandle(objectCast<Object>(object)); }
  /// Adds a reference to an object that somebody else owns.
  static GObjectHandle retain(gpointer object) { return adopt((g_object_ref)(object)); }
  /// Takes over the floating reference of a new object, or adds one if somebody has taken it already.
  static GObjectHandle sink(gpointer object) { return adopt((g_object_ref_sink)(object)); }

  GObjectHandle(const GObjectHandle& other) : object_(other.object_) {
    if (object_ != nullptr) (g_object_ref)(object_);
  }
  GObjectHandle(GObjectHandle&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
  GObjectHandle& operator=(GObjectHandle other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~GObjectHandle() {
    if (object_ != nullptr) g_object_unref(object_);
  }

  [[nodiscard]] Object* get() const { return object_; }
  /// Hands the reference over, for functions that take one.
  [[nodiscard]] Object* release() { return std::exchange(object_, nullptr); }
  explicit operator bool() const { return object_ != nullptr; }

 private:
  explicit GObjectHandle(Object* object) : object_(object) {}

  Object* object_ = nullptr;
};

/// A reference that does not keep its object alive.
template <class Object>
class GObjectWeakHandle {
 public:
  explicit GObjectWeakHandle(gpointer object) { g_weak_ref_init(&reference_, object); }
  GObjectWeakHandle(const GObjectWeakHandle&) = delete;
  GObjectWeakHandle& operator=(const GObjectWeakHandle&) = delete;
  ~GObjectWeakHandle() { g_weak_ref_clear(&reference_); }

  [[nodiscard]] GObjectHandle<Object> lock() { return GObjectHandle<Object>::adopt(g_weak_ref_get(&reference_)); }

 private:
  GWeakRef reference_;
};

template <auto release>
struct Releaser {
  template <class Resource>
  void operator()(Resource* resource) const {
    release(resource);
  }
};

/// Any other resource of a C library, with the function that gives it back.
template <class Resource, auto release>
using CHandle = std::unique_ptr<Resource, Releaser<release>>;

using GTextHandle = CHandle<char, g_free>;
using GErrorHandle = CHandle<GError, g_error_free>;

}  // namespace corvane::gtk
