/// Objects whose changes are followed by what shows them.
#pragma once

#include <cstdint>
#include <functional>
#include <utility>

#include "corvane/export.h"
#include "corvane/platform/declarative/notifier.h"
#include "corvane/platform/foundation/platform.h"

namespace corvane {

/// The base of objects with published values. A view value whose body reads one of them is evaluated again after it
/// has changed, also where the body was evaluated while the change was being told.
///
/// Threads: main thread only.
class CORVANE_EXPORT ObservableObject {
 public:
  ObservableObject(const ObservableObject&) = delete;
  ObservableObject& operator=(const ObservableObject&) = delete;

  /// Tells that something published is about to be set, also to what it is already: the old value can still be read.
  [[nodiscard]] const Notifier<>& objectWillChange() const CORVANE_LIFETIMEBOUND { return objectWillChange_; }

 protected:
  ObservableObject() = default;
  ~ObservableObject() = default;

 private:
  template <class Value>
  friend class Published;
  friend class BodyObservation;

  /// From a change's announcement until it is made.
  class Change {
   public:
    explicit Change(ObservableObject& object) : object_(object) { ++object_.changesUnderWay_; }
    Change(const Change&) = delete;
    Change& operator=(const Change&) = delete;
    ~Change() { --object_.changesUnderWay_; }

   private:
    ObservableObject& object_;
  };

  void noteRead() const;

  Notifier<> objectWillChange_;
  int changesUnderWay_ = 0;
};

/// A value of an observable object that tells before it changes.
///
/// Ownership: a member of its object.
/// Threads:   main thread only. Those who are told may read, but not end the object.
template <class Value>
class Published {
 public:
  explicit Published(ObservableObject& owner, Value value = {}) : owner_(owner), value_(std::move(value)) {}
  Published(const Published&) = delete;
  Published& operator=(const Published&) = delete;

  [[nodiscard]] const Value& value() const CORVANE_LIFETIMEBOUND {
    owner_.noteRead();
    return value_;
  }
  /// Tells those who follow the object, then those who follow this value, and then changes it.
  void set(Value value) {
    assertMainThread();
    const ObservableObject::Change change(owner_);
    owner_.objectWillChange_.notify();
    willSet_.notify(value);
    value_ = std::move(value);
  }
  /// Calls the handler now with the value as it is, and with each new value before it is set.
  [[nodiscard]] Subscription subscribe(std::function<void(const Value&)> handler) const {
    handler(value_);
    return willSet_.subscribe(std::move(handler));
  }

 private:
  ObservableObject& owner_;
  Value value_;
  Notifier<const Value&> willSet_;
};

}  // namespace corvane
