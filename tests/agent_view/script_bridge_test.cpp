#include "corvane/agent_view/script_bridge.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

struct Line {
  std::size_t spaces;
  std::string_view text;
};

std::string join(const std::vector<Line>& lines) {
  std::string script;
  for (const Line& line : lines) {
    if (!script.empty()) script += '\n';
    script.append(line.spaces, ' ').append(line.text);
  }
  return script;
}

// Pages rely on these scripts as they are, white space included.
TEST(ScriptBridge, ScriptsAreExactlyWhatPagesExpect) {
  const std::string forwarder = join({
      {8, "window.addEventListener('message', function(event)"},
      {8, "{"},
      {12, "if (event.origin === origin) {"},
      {16, "try {"},
      {20, "let data = event.data;"},
      {20, "if (typeof data === 'string') {"},
      {24, "data = JSON.parse(data);"},
      {20, "}"},
      {20, "window.webkit.messageHandlers.agentEventHandler.postMessage(data);"},
      {16, "} catch(e) {"},
      {16, "}"},
      {12, "}"},
      {8, "});"},
  });
  EXPECT_EQ(messageForwarderScript(), forwarder);
  EXPECT_EQ(messageForwarderScript().size(), 459U);
  const std::string poster = join({
      {8, "const postAction = (action) => {"},
      {10, "let message = action;"},
      {10, "if (typeof message !== 'string') {"},
      {12, "message = JSON.stringify(message);"},
      {10, "}"},
      {10, "var iFrame = document.getElementById('agent-tool');"},
      {10, "if (iFrame) {"},
      {12, "iFrame.contentWindow.postMessage(message, '*');"},
      {10, "} else if (window) {"},
      {12, "window.postMessage(message, '*');"},
      {10, "}"},
      {8, "}"},
  });
  EXPECT_EQ(actionPosterScript(), poster);
  EXPECT_EQ(actionPosterScript().size(), 421U);
}

}  // namespace
}  // namespace corvane
