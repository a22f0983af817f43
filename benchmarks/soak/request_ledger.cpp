#include "benchmarks/soak/request_ledger.h"

#include <utility>

#include "benchmarks/soak/outcome.h"

namespace corvane::soak {

std::size_t RequestLedger::asked(Request request) {
  entries_.push_back({.request = std::move(request)});
  return entries_.size() - 1;
}

void RequestLedger::completed(std::size_t number, std::string outcome) {
  if (!checks_.that(number < entries_.size(), "a completion is called when all was over")) return;
  Entry& entry = entries_[number];
  if (!checks_.that(++entry.completions == 1, "a completion is called again")) return;
  entry.outcome = std::move(outcome);
  order_.push_back(number);
}

bool RequestLedger::isSecondHalf(const Arrival& arrival) const {
  return arrival.type == wireName(Operation::updateProductInCart) && isForDecrements(arrival.sku);
}

std::size_t RequestLedger::findAsker(const Arrival& arrival) {
  if (isSecondHalf(arrival)) {
    if (secondHalves_.empty()) return entries_.size();
    const SecondHalf half = secondHalves_.front();
    secondHalves_.pop_front();
    const bool isSame = entries_[half.number].request.sku == arrival.sku && half.quantity == arrival.quantity;
    return isSame ? half.number : entries_.size();
  }
  if (nextFirst_ == entries_.size()) return entries_.size();
  const Request& next = entries_[nextFirst_].request;
  const bool isSame = wireName(next.operation) == arrival.type &&
                      (next.operation == Operation::decrementProductInCart || next.sku == arrival.sku) &&
                      next.quantity == arrival.quantity;
  return isSame ? nextFirst_++ : entries_.size();
}

void RequestLedger::receive(const Arrival& arrival, PageModel& model) {
  const std::size_t number = findAsker(arrival);
  if (!checks_.that(number < entries_.size(), "requests arrive in the order in which they were asked")) return;
  if (arrival.timesOut()) ++timeOutCount_;
  const Request& request = entries_[number].request;
  const bool isDecrement = request.operation == Operation::decrementProductInCart;
  if (!isDecrement || isSecondHalf(arrival)) {
    const auto carriedOut = isDecrement ? Operation::updateProductInCart : request.operation;
    return expected_.push_back({number, model.receive(arrival, carriedOut)});
  }
  std::string outcome = model.receive(arrival, Operation::decrementProductInCart);
  const bool isAnswered = outcome == noValue || outcome.starts_with('{');
  if (!isAnswered) return expected_.push_back({number, std::move(outcome)});
  const std::int64_t quantity = outcome == noValue ? 0 : model.quantityOf(request.sku);
  if (quantity < 1) return expected_.push_back({number, outcomeOf(AgentError::SkuNotFound{})});
  secondHalves_.push_back({number, quantity - 1});
}

void RequestLedger::compare(const std::vector<Arrival>& arrivals, PageModel& model) {
  for (const Arrival& arrival : arrivals) receive(arrival, model);
  checks_.that(nextFirst_ == entries_.size() && secondHalves_.empty(), "every request arrives");
  for (const Entry& entry : entries_) checks_.that(entry.completions == 1, "each completion is called once");
  if (checks_.that(expected_.size() == order_.size(), "as many requests end as have arrived")) {
    for (std::size_t place = 0; place < order_.size(); ++place) {
      const Expected& expected = expected_[place];
      if (!checks_.that(expected.number == order_[place], "requests end in the order in which they arrive")) break;
      checks_.areEqual(entries_[expected.number].outcome, expected.outcome, "the outcome fits what the page did");
    }
  }
  entries_.clear();
  order_.clear();
  expected_.clear();
  secondHalves_.clear();
  nextFirst_ = 0;
}

}  // namespace corvane::soak
