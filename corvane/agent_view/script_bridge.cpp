#include "corvane/agent_view/script_bridge.h"

#include <algorithm>
#include <array>
#include <utility>

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

/// A character that JSON allows as it is, but not every reader of scripts.
struct Escape {
  std::string_view character;
  std::string_view escape;
};
constexpr std::array escapes{Escape{"<", "\\u003c"}, Escape{"\u2028", "\\u2028"}, Escape{"\u2029", "\\u2029"}};

/// Where a text holds the next of such characters, looked for from one to the next.
class NextOf {
 public:
  NextOf(std::string_view text, const Escape& escape) : text_(text), escape_(escape) { moveTo(0); }
  [[nodiscard]] std::size_t position() const { return position_; }
  [[nodiscard]] const Escape& escape() const { return escape_; }
  void moveTo(std::size_t from) { position_ = text_.find(escape_.character, from); }

 private:
  std::string_view text_;
  const Escape& escape_;
  std::size_t position_ = 0;
};

/// Such characters can stand only inside the texts of a JSON text, so that they may be looked for without reading it.
void appendEscaped(std::string_view json, std::string& to) {
  std::array next{NextOf(json, escapes[0]), NextOf(json, escapes[1]), NextOf(json, escapes[2])};
  std::size_t done = 0;
  while (true) {
    NextOf& first = *std::ranges::min_element(next, {}, &NextOf::position);
    to += json.substr(done, first.position() - done);
    if (first.position() == std::string_view::npos) return;
    to += first.escape().escape;
    done = first.position() + first.escape().character.size();
    first.moveTo(done);
  }
}

}  // namespace

std::string messageForwarderScript() {
  std::string script(forwarderBeforeChannel);
  script.append(agentEventChannel).append(forwarderAfterChannel);
  return script;
}

std::string actionPosterScript() { return std::string(poster); }

std::string postActionScript(std::string action) {
  constexpr std::string_view before = "postAction(";
  constexpr std::string_view after = ");";
  const auto isIn = [&](const Escape& escape) { return action.find(escape.character) != std::string::npos; };
  if (!std::ranges::any_of(escapes, isIn)) return std::move(action.insert(0, before).append(after));
  std::string script;
  script.reserve(before.size() + action.size() + after.size());
  script += before;
  appendEscaped(action, script);
  script += after;
  return script;
}

}  // namespace corvane
