const items = new URLSearchParams(window.location.search);

export const organisation = items.get("orgId") || "no organisation";
export const booking = items.get("connectId") || "no booking";
export const usesSsoLogin = items.get("ssoLogin") === "true";
export const wantsTourWithHost = window.location.hash === "#tour-with-host";
export const wantsTour = wantsTourWithHost || window.location.hash === "#tour";
// A call with a customer on a page of their own, which may begin by itself; otherwise the states are only played.
export const beginsByItself = window.location.hash === "#call-now";
export const wantsRealCall = beginsByItself || window.location.hash === "#call";
