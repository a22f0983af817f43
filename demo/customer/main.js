import { CustomerCall } from "./customer_call.js";
import { showShop } from "./shop_view.js";

const address = new URLSearchParams(window.location.search);
const booking = address.get("booking") || "no booking";
const locale = address.get("locale") || navigator.language;

const texts = {
  outside: "You are not in the call yet.",
  asking: "Asking for camera and microphone…",
  waiting: "Your adviser will be with you in a moment.",
  connected: "You are talking to your adviser.",
  paused: "Your adviser has paused the call.",
  lost: "The connection is lost. Trying again…",
  left: "You have left the call.",
  ended: "Your adviser has ended the call. Thank you for your visit.",
};

const [state, agentPicture, ownPicture, join, mute, leave] = [
  "state",
  "agent-picture",
  "own-picture",
  "join",
  "mute",
  "leave",
].map((id) => document.getElementById(id));

function showState(name, text = texts[name]) {
  const isInside = ["waiting", "connected", "paused", "lost"].includes(name);
  document.body.dataset.state = name;
  state.textContent = text;
  join.hidden = isInside || name === "asking";
  mute.hidden = leave.hidden = !isInside;
}

async function play(picture, stream) {
  if (picture.srcObject === stream) return;
  picture.srcObject = stream;
  // A page that nobody has touched may be kept silent; it shows its pictures all the same.
  if (stream) await picture.play().catch(() => {});
}

const call = new CustomerCall({
  booking,
  locale,
  changed: showState,
  showAgent: (stream) => play(agentPicture, stream),
  showOwn: (stream) => play(ownPicture, stream),
  shopCame: ({ products, lines }) => showShop({ products, lines, locale }),
});

const wishes = {
  add: (sku) => call.change(sku, 1),
  less: (sku) => call.change(sku, -1),
  remove: (sku) => call.remove(sku),
};

join.addEventListener("click", () => call.join());
leave.addEventListener("click", () => call.leave());
mute.addEventListener("click", () => {
  mute.textContent = call.toggleSound() ? "Unmute" : "Mute";
});
document.addEventListener("click", ({ target }) => {
  const button = target.closest("button[data-wish]");
  if (button) wishes[button.dataset.wish](button.dataset.sku);
});
window.addEventListener("pagehide", () => call.leave());

showShop({ products: [], lines: [], locale });

// For whoever tests a host against this page.
window.customer = Object.freeze({
  state: () => document.body.dataset.state,
  connection: () => call.connection,
});

if (window.location.hash === "#auto") call.join();
