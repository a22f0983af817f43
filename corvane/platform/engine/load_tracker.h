/// What the web engine's load signals mean: which load of the host or the page ended, and how.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "corvane/platform/web/web_engine.h"

namespace corvane::engine {

struct LoadFinished {
  bool operator==(const LoadFinished&) const = default;
};
struct LoadFailed {
  LoadPhase phase = LoadPhase::provisional;
  WebError error;
  bool operator==(const LoadFailed&) const = default;
};
using LoadReport = std::variant<LoadFinished, LoadFailed>;

/// Follows the loads of one web view from event to event and says what there is to report, once for each load.
///
/// The engine's signals do not say which load they belong to, so that is worked out here. The host's newest load is
/// awaited until the engine has decided about its navigation. Whatever starts or ends before that belongs to a load
/// that it replaced, and is passed over in silence. The engine also says "finished" after each failure.
///
/// Ownership: owned by the page loader; it holds no resources. Threads: main thread only. Failure: none.
class LoadTracker {
 public:
  /// The host asks for a page. The address is in the engine's own spelling.
  void loadRequested(std::string url);
  /// Whatever is under way ends without a report; the host has replaced it with a load that never reaches the engine.
  void loadsCancelled();
  /// The engine has decided to begin a navigation, of the main frame or of another one. True for the first one while a
  /// cancelled load is held back. It may be that of the load's replacement, so settle the cancelled one later still.
  [[nodiscard]] bool navigationDecided(std::string_view url);
  /// A load has begun. True for one that the page itself began, by a link or a script.
  bool loadStarted();
  /// The first of the page has arrived, under this address.
  [[nodiscard]] std::optional<LoadReport> loadCommitted(std::string_view url);
  /// All of the page's own text is there; pictures and the like may still be on their way.
  void documentArrived();
  [[nodiscard]] std::optional<LoadReport> loadFinished();
  /// A cancelled load may have been replaced by the page itself, which cannot be known yet. It is held back, and
  /// `settleCancelledLoad` must be called a while later.
  [[nodiscard]] std::optional<LoadReport> loadFailed(LoadPhase phase, WebError error);
  [[nodiscard]] bool hasCancelledLoad() const { return cancelled_.has_value(); }
  /// What the page began came to nothing, and the page is as it was.
  void pageStays() { running_.reset(); }
  /// The report of the load that was cancelled; none when another load has taken its place since.
  [[nodiscard]] std::optional<LoadReport> settleCancelledLoad();
  /// The engine has nothing more to load. For a host's load that never started this is the end. Its address differs
  /// from the page's own only in the fragment, and the page has just moved there.
  [[nodiscard]] std::optional<LoadReport> engineBecameIdle();
  /// Nothing of the document has come for too long.
  [[nodiscard]] std::optional<LoadReport> loadTimedOut();
  /// The engine's process for the page has ended, and every load with it.
  [[nodiscard]] LoadReport processTerminated(std::string description);

  /// Whether there is a load that will still be reported, and of whose document something is still to come.
  [[nodiscard]] bool isDocumentAwaited() const;
  /// Whether this is the address that the host has asked for, and the engine has not begun to load.
  [[nodiscard]] bool isAwaited(std::string_view url) const { return awaited_ && awaited_->url == url; }
  /// The address that the host is waiting for; empty for none.
  [[nodiscard]] std::string hostUrl() const;
  /// Whether the host has asked for a page of which nothing has arrived yet.
  [[nodiscard]] bool isHostWaiting() const;
  /// Whether the host has asked for a page that the engine has not begun to load.
  [[nodiscard]] bool isBeginningAwaited() const { return awaited_ && !awaited_->isSilent; }
  /// Whether what the present document posts is for the host: not from the host's call for another page until that
  /// page is there.
  [[nodiscard]] bool isPageHeard() const { return isPageHeard_; }

 private:
  /// A load that the host has asked for and the engine has not begun.
  struct AwaitedLoad {
    std::string url;
    bool isDecided = false;
    bool isSilent = false;
  };
  struct RunningLoad {
    /// Empty for a load that the page began.
    std::string requestedUrl;
    LoadPhase phase = LoadPhase::provisional;
    bool isSilent = false;
    bool hasArrived = false;
  };
  struct CancelledLoad {
    LoadFailed failure;
    bool isReplacementDecided = false;
  };

  std::optional<AwaitedLoad> awaited_;
  std::optional<RunningLoad> running_;
  std::optional<CancelledLoad> cancelled_;
  bool isPageHeard_ = true;
};

}  // namespace corvane::engine
