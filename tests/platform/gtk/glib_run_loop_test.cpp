#include "corvane/platform/gtk/glib_run_loop.h"

#include "tests/support/real_run_loop_test.h"

namespace corvane::test {

INSTANTIATE_TYPED_TEST_SUITE_P(Glib, RealRunLoop, gtk::GlibRunLoop);

}  // namespace corvane::test
