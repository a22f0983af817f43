/// What was asked, what the page says has arrived, and what the completions have told: do they fit?
#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

#include "benchmarks/soak/checks.h"
#include "benchmarks/soak/page_model.h"
#include "benchmarks/soak/requests.h"

namespace corvane::soak {

class RequestLedger {
 public:
  explicit RequestLedger(Checks& checks) : checks_(checks) {}

  /// Notes a request and gives its number, from 0 on until the next `compare`.
  std::size_t asked(Request request);
  /// Notes that the completion of a request was called.
  void completed(std::size_t number, std::string outcome);
  [[nodiscard]] std::size_t askedCount() const { return entries_.size(); }
  [[nodiscard]] std::size_t openCount() const { return entries_.size() - order_.size(); }

  /// Compares, and forgets everything.
  void compare(const std::vector<Arrival>& arrivals, PageModel& model);

  [[nodiscard]] std::int64_t timeOutCount() const { return timeOutCount_; }

 private:
  struct Entry {
    Request request;
    int completions = 0;
    std::string outcome{};
  };
  struct Expected {
    std::size_t number;
    std::string outcome;
  };
  struct SecondHalf {
    std::size_t number;
    std::int64_t quantity;
  };

  /// Whose request has arrived; the number of entries where nobody has asked it.
  std::size_t findAsker(const Arrival& arrival);
  void receive(const Arrival& arrival, PageModel& model);
  [[nodiscard]] bool isSecondHalf(const Arrival& arrival) const;

  Checks& checks_;
  std::vector<Entry> entries_;
  /// The numbers of those that have completed.
  std::vector<std::size_t> order_;
  std::vector<Expected> expected_;
  std::size_t nextFirst_ = 0;
  std::deque<SecondHalf> secondHalves_;
  std::int64_t timeOutCount_ = 0;
};

}  // namespace corvane::soak
