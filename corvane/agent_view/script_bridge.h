/// The two scripts that connect a page with its host, and the channel between them.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The channel on which pages post their messages to the agent view.
inline constexpr std::string_view agentEventChannel = "agentEventHandler";

/// Hands the messages that a document's window gets from its own origin to the host.
[[nodiscard]] std::string messageForwarderScript();

/// Defines the page's global `postAction`, which hands an action of the host to the agent tool. It goes to its frame
/// where the document has one, else to the document itself.
[[nodiscard]] std::string actionPosterScript();

/// The script that posts one action, given as JSON text. Whatever the texts in it hold, they stay texts: what ends a
/// line or a script element in some reader is escaped. The text becomes the script, so that a long one is not copied.
[[nodiscard]] std::string postActionScript(std::string action);

}  // namespace corvane
