// Fills an outer page's frame with the agent tool of the same folder.

import { setPostActionMissing } from "./post_action_switch.js";

const otherLoopbackName = { "127.0.0.1": "localhost", localhost: "127.0.0.1" };

const frame = document.querySelector("#agent-tool");
const address = new URL("index.html", window.location.href);
address.search = window.location.search;
address.hash = window.location.hash;

// The same machine under its other name is another origin to the browser.
if ("otherOrigin" in frame.dataset) {
  address.hostname = otherLoopbackName[address.hostname] ?? address.hostname;
}

// The inner page cannot take away the postAction that the host calls: it is
// this document's, which may be of another origin.
window.addEventListener("message", ({ source, data }) => {
  if (source !== frame.contentWindow || typeof data?.postActionMissing !== "boolean") return;
  setPostActionMissing(data.postActionMissing);
  window.location.reload();
});

frame.src = address.href;
