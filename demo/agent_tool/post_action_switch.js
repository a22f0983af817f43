// Takes the host's postAction away and puts it back; both need a reload, for
// the reason that missing_post_action.js gives.

import { TroubleKind } from "./trouble.js";

const missingKey = "agentTool.postActionMissing";
const afterReloadKey = "agentTool.troubleAfterReload";

function isMissing() {
  return sessionStorage.getItem(missingKey) !== null;
}

export function needsReloadFor({ kind }) {
  return (kind === TroubleKind.noPostAction) !== isMissing();
}

export function setPostActionMissing(missing) {
  if (missing) sessionStorage.setItem(missingKey, "yes");
  else sessionStorage.removeItem(missingKey);
}

// The host talks to the outermost page. Inside a frame it is therefore the page
// around this one that has to lose its postAction, and it reloads both.
export function reloadWith(trouble) {
  const missing = trouble.kind === TroubleKind.noPostAction;
  setPostActionMissing(missing);
  if (!missing) sessionStorage.setItem(afterReloadKey, JSON.stringify(trouble));
  if (window.parent === window) window.location.reload();
  else window.parent.postMessage({ postActionMissing: missing }, "*");
}

// The wish for the trouble with which this document starts.
export function troubleAtStart() {
  if (isMissing()) return { kind: TroubleKind.noPostAction };
  const stored = sessionStorage.getItem(afterReloadKey);
  sessionStorage.removeItem(afterReloadKey);
  return stored === null ? { kind: TroubleKind.none } : JSON.parse(stored);
}
