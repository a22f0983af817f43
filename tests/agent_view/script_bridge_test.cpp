#include "corvane/agent_view/script_bridge.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace corvane {
namespace {

/// FNV-1a.
std::uint64_t fingerprint(std::string_view text) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char letter : text) hash = (hash ^ static_cast<unsigned char>(letter)) * 0x100000001b3U;
  return hash;
}

// Pages rely on these scripts as they are, white space included. The contract tests run them.
TEST(ScriptBridge, ScriptsAreToTheLetterWhatPagesExpect) {
  EXPECT_EQ(fingerprint(messageForwarderScript()), 5494661980323196183U);
  EXPECT_EQ(fingerprint(actionPosterScript()), 7072468057047751116U);
}

TEST(ScriptBridge, PostingEscapesWhatAScriptCouldEndAtAndNothingElse) {
  EXPECT_EQ(postActionScript("\"</script><!--\u2028\u2029\u2027\u20AC\xC3\xA9\""),
            R"(postAction("\u003c/script>\u003c!--\u2028\u2029)"
            "\u2027\u20AC\xC3\xA9\");");
  EXPECT_EQ(postActionScript("<\xE2"), "postAction(\\u003c\xE2);");
}

}  // namespace
}  // namespace corvane
