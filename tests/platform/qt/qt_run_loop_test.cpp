#include "corvane/platform/qt/qt_run_loop.h"

#include <QCoreApplication>

#include "tests/support/real_run_loop_test.h"

namespace corvane::test {

INSTANTIATE_TYPED_TEST_SUITE_P(Qt, RealRunLoop, qt::QtRunLoop);

}  // namespace corvane::test

int main(int count, char** arguments) {
  const QCoreApplication application(count, arguments);
  testing::InitGoogleTest(&count, arguments);
  return RUN_ALL_TESTS();
}
