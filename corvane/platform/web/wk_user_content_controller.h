/// The scripts and message channels of a web view.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "corvane/export.h"
#include "corvane/platform/web/wk_script_message.h"
#include "corvane/platform/web/wk_user_script.h"

namespace corvane {

/// What is injected into pages and who receives their messages.
///
/// It is filled before the web view that uses it is made: a web view takes what is there at that moment.
///
/// Ownership: shared by the configuration and its web view; it holds the message handlers strongly.
/// Threads:   main thread only.
class CORVANE_EXPORT WKUserContentController {
 public:
  /// Tells an engine which messages its receiver does not read: objects whose member of this name is a text that is
  /// not accepted. An engine may spare itself the reading of such messages, and may hand them over all the same.
  struct MessageFilter {
    std::string member;
    bool (*accepts)(std::string_view text);
    bool operator==(const MessageFilter&) const = default;
  };
  /// A name under which pages post, and what need not be read of it.
  struct MessageChannel {
    std::string name;
    std::optional<MessageFilter> filter{};
    bool operator==(const MessageChannel&) const = default;
  };
  /// A script or a channel, in the order in which they were added.
  using Content = std::variant<WKUserScript, MessageChannel>;

  void addUserScript(WKUserScript script);
  /// Receives what pages post to `window.webkit.messageHandlers` under this name. A name has one handler; a second one
  /// for the same name is a mistake of the caller and is not added.
  void addScriptMessageHandler(std::shared_ptr<WKScriptMessageHandler> handler, std::string name,
                               std::optional<MessageFilter> filter = std::nullopt);

  [[nodiscard]] std::span<const Content> contents() const { return contents_; }
  /// Hands a message to the handler of its channel; drops it where there is none. The caller keeps the controller
  /// alive.
  void deliver(const WKScriptMessage& message);

 private:
  std::vector<Content> contents_;
  /// Few enough that looking through them beats any map.
  std::vector<std::pair<std::string, std::shared_ptr<WKScriptMessageHandler>>> handlers_;
};

}  // namespace corvane
