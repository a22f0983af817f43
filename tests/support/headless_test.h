/// A test on the headless backend that fails when it leaves work behind.
#pragma once

#include <gtest/gtest.h>

#include <memory>

#include "corvane/declarative/agent_context_access.h"
#include "corvane/minimized/minimized_store.h"
#include "corvane/platform/headless/headless_backend.h"

namespace corvane {

class HeadlessTest : public testing::Test {
 protected:
  void TearDown() override {
    AgentContextAccess::reset(VelnorAgentContext::shared());
    MinimizedStore::shared().setAgentView(nullptr);
    MinimizedStore::shared().setRestoreAction(nullptr);
    EXPECT_EQ(backend_->runLoop().pendingTaskCount(), 0U) << "work was left behind";
  }

  headless::Backend& backend() { return *backend_; }
  headless::VirtualRunLoop& loop() { return backend_->runLoop(); }

 private:
  std::unique_ptr<headless::Backend> backend_ = headless::Backend::install();
};

}  // namespace corvane
