// Fills an outer page's frame with the agent tool of the same folder.

const otherLoopbackName = { "127.0.0.1": "localhost", localhost: "127.0.0.1" };

const frame = document.querySelector("#agent-tool");
const address = new URL("index.html", window.location.href);
address.search = window.location.search;
address.hash = window.location.hash;

// The same machine under its other name is another origin to the browser.
if ("otherOrigin" in frame.dataset) {
  address.hostname = otherLoopbackName[address.hostname] ?? address.hostname;
}

frame.src = address.href;
