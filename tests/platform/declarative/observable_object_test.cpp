#include "corvane/platform/declarative/observable_object.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {

class Counter : public ObservableObject {
 public:
  Published<int> count{*this};
};

TEST(ObservableObject, TellsBeforeTheValueChangesAlsoWhenItStaysTheSame) {
  Counter counter;
  std::vector<std::string> log;
  const auto note = [&](const std::string& what) { log.push_back(what + " " + std::to_string(counter.count.value())); };
  const Subscription object = counter.objectWillChange().subscribe([&] { note("object"); });
  const Subscription value = counter.count.subscribe([&](const int& next) { note(std::to_string(next)); });
  counter.count.set(1);
  counter.count.set(1);
  EXPECT_EQ(log, (std::vector<std::string>{"0 0", "object 0", "1 0", "object 1", "1 1"}));
}

TEST(Notifier, ListenersMayEndBeginAndOutliveTheNotifierWhileTheyAreCalled) {
  auto notifier = std::make_unique<Notifier<int>>();
  std::string log;
  Subscription second;
  Subscription late;
  Subscription first = notifier->subscribe([&, kept = std::string("first;")](int value) {
    first.end();
    second.end();
    late = notifier->subscribe([&](int) { log += "late;"; });
    if (value == 1) notifier->notify(2);
    notifier.reset();
    log += kept;
  });
  second = notifier->subscribe([&](int) { log += "second;"; });
  const Subscription third = notifier->subscribe([&](int value) { log += "third" + std::to_string(value) + ";"; });
  notifier->notify(1);
  EXPECT_EQ(log, "third2;late;first;third1;");
  late.end();
}

TEST(Notifier, AHandleEndsWhatItHeldWhenItTakesAnotherOne) {
  const Notifier<> notifier;
  int calls = 0;
  Subscription handle = notifier.subscribe([&] { calls += 100; });
  handle = notifier.subscribe([&] { ++calls; });
  notifier.notify();
  EXPECT_EQ(calls, 1);
}

}  // namespace
}  // namespace corvane
