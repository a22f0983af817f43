/// What the body of a mounted view value depends on.
#pragma once

#include <vector>

#include "corvane/export.h"
#include "corvane/platform/declarative/notifier.h"

namespace corvane {

class ObservableObject;

/// Whoever evaluates bodies again when they are out of date.
class ViewUpdater {
 public:
  /// Asks for it to be done soon, and not inside this call.
  virtual void requestUpdate() = 0;

 protected:
  ~ViewUpdater() = default;
};

/// Follows the observable objects that were read in the last evaluation of a body.
///
/// Ownership: part of a mounted node, like which it neither moves nor outlives the updater.
/// Threads:   main thread only.
class CORVANE_EXPORT BodyObservation {
 public:
  explicit BodyObservation(ViewUpdater& updater) : updater_(updater) {}
  BodyObservation(const BodyObservation&) = delete;
  BodyObservation& operator=(const BodyObservation&) = delete;

  /// An evaluation, from its construction to its end. Evaluations inside it are for themselves.
  class CORVANE_EXPORT Evaluation {
   public:
    explicit Evaluation(BodyObservation& observation);
    Evaluation(const Evaluation&) = delete;
    Evaluation& operator=(const Evaluation&) = delete;
    ~Evaluation();

   private:
    BodyObservation& observation_;
    BodyObservation* outer_;
  };

  /// Whether anything that the last evaluation read has changed since, or is about to.
  [[nodiscard]] bool isOutdated() const { return isOutdated_; }

  /// A published value of an object is read, in an evaluation or elsewhere.
  static void noteRead(const ObservableObject& object);

 private:
  struct Followed {
    const void* object;
    bool isRead;
    Subscription subscription;
  };

  void follow(const ObservableObject& object);
  void becomeOutdated();

  ViewUpdater& updater_;
  std::vector<Followed> followed_;
  bool isOutdated_ = false;
};

}  // namespace corvane
