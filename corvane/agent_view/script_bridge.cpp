#include "corvane/agent_view/script_bridge.h"

namespace corvane {

namespace {

constexpr std::string_view forwarderBeforeChannel =
    "        window.addEventListener('message', function(event)\n"
    "        {\n"
    "            if (event.origin === origin) {\n"
    "                try {\n"
    "                    let data = event.data;\n"
    "                    if (typeof data === 'string') {\n"
    "                        data = JSON.parse(data);\n"
    "                    }\n"
    "                    window.webkit.messageHandlers.";
constexpr std::string_view forwarderAfterChannel =
    ".postMessage(data);\n"
    "                } catch(e) {\n"
    "                }\n"
    "            }\n"
    "        });";
static_assert(forwarderBeforeChannel.size() == 350 && forwarderAfterChannel.size() == 92);

constexpr std::string_view poster =
    "        const postAction = (action) => {\n"
    "          let message = action;\n"
    "          if (typeof message !== 'string') {\n"
    "            message = JSON.stringify(message);\n"
    "          }\n"
    "          var iFrame = document.getElementById('agent-tool');\n"
    "          if (iFrame) {\n"
    "            iFrame.contentWindow.postMessage(message, '*');\n"
    "          } else if (window) {\n"
    "            window.postMessage(message, '*');\n"
    "          }\n"
    "        }";
static_assert(poster.size() == 421);

}  // namespace

std::string messageForwarderScript() {
  std::string script(forwarderBeforeChannel);
  script.append(agentEventChannel).append(forwarderAfterChannel);
  return script;
}

std::string actionPosterScript() { return std::string(poster); }

}  // namespace corvane
