import { listenForActions } from "./action_listener.js";
import { CallProducts } from "./call_products.js";
import { CallState } from "./call_state.js";
import { fillStatusSelect, selectedStatus, showCall } from "./call_view.js";
import { Cart } from "./cart.js";
import { HostActions } from "./host_actions.js";
import { HostState } from "./host_state.js";
import { showHostState } from "./host_state_view.js";
import { productBySku } from "./known_products.js";
import { logKeptBack, logPosted, logReceived } from "./message_log.js";
import {
  beginsByItself,
  booking,
  organisation,
  usesSsoLogin,
  wantsRealCall,
  wantsTour,
  wantsTourWithHost,
} from "./page_address.js";
import { pause } from "./pause.js";
import { needsReloadFor, reloadWith, troubleAtStart } from "./post_action_switch.js";
import { startPreview, stopPreview } from "./preview.js";
import { showCart, showProducts } from "./product_view.js";
import { CallStatus, EventType, postEvent } from "./protocol.js";
import { canHoldCalls, RealCall } from "./real_call.js";
import { showCustomer, showMuted, showNotice } from "./real_call_view.js";
import { requestsOf } from "./requests.js";
import { runTour } from "./tour.js";
import { troubleFrom, Troubles } from "./trouble.js";
import { fieldsAreUsable, showTrouble, wishOf } from "./trouble_view.js";

const timeToHangUp = 350;
// As many as the other side shows, and as fit into one message of the connection.
const mostProductsShared = 100;

const localeSelect = document.querySelector("#locale-select");

let tokenRequests = 0;
let signedOut = () => {};

function post(eventType, data) {
  postEvent(eventType, data);
  logPosted({ eventType, data });
}

function refreshProducts() {
  showProducts(callProducts.articles, localeSelect.value);
  refreshCart();
}

function refreshCart() {
  showCart(cart, localeSelect.value);
  realCall?.shareShop();
}

const callProducts = new CallProducts(() => refreshProducts());

const cart = new Cart(() => refreshCart());

const call = new CallState((status) => {
  post(EventType.callStatus, { status });
  showCall(call);
  if (status === CallStatus.starting) callProducts.reset();
  if (status === CallStatus.disconnecting) {
    cart.empty();
    stopPreview();
  }
});

const realCall = wantsRealCall && canHoldCalls ? makeRealCall() : null;

function makeRealCall() {
  document.body.dataset.call = "real";
  return new RealCall({
    booking,
    call,
    capture: captureForCall,
    showCustomer,
    customerCame(locale) {
      post(EventType.callStarted, { clientPlatform: { language: { locale } } });
    },
    heard: hearCustomer,
    shop: () => ({
      products: callProducts.articles.slice(0, mostProductsShared),
      lines: cart.lines.map(({ sku, quantity }) => ({ product: productBySku(sku), quantity })),
    }),
  });
}

async function captureForCall() {
  const stream = await startPreview();
  const isMadeUp = stream?.getVideoTracks().some(({ label }) => label.startsWith("fake_"));
  if (isMadeUp) showNotice("There is no camera here, so the engine makes up pictures and sound.");
  return stream;
}

// The customer fills the same cart, with what the page knows; the host hears of it as of the agent's own doing.
function hearCustomer({ change, remove }) {
  const sku = change?.sku ?? remove?.sku;
  if (!callProducts.has(sku) && cart.quantityOf(sku) === 0) return;
  if (change) changeQuantity(sku, Math.sign(Number(change.difference) || 0));
  else removeFromCart(sku);
}

const hostState = new HostState(() => {
  showHostState(hostState);
  if (hostState.signIn === "out") signedOut();
});

const troubles = new Troubles({
  post: ({ eventType, data }) => post(eventType, data),
  keepBack: logKeptBack,
  later: (work, milliseconds) => setTimeout(work, milliseconds),
  changed: () => showTrouble(troubles.current),
});

const hostActions = new HostActions({
  requests: requestsOf({ callProducts, cart, post }),
  hostState,
  troubles,
  log: logReceived,
});

function setTrouble(wish) {
  const trouble = troubleFrom(wish);
  if (needsReloadFor(trouble)) reloadWith(trouble);
  else troubles.choose(trouble);
}

function changeQuantity(sku, difference) {
  const quantity = cart.add(sku, difference);
  post(EventType.productUpdatedInCart, { sku, quantity });
}

function removeFromCart(sku) {
  cart.remove(sku);
  post(EventType.productRemovedFromCart, { sku, quantity: 0 });
}

const actions = {
  minimize() {
    post(EventType.minimize);
    hostState.askedToMinimize();
  },

  async startCall() {
    if (!realCall) return call.moveTo(CallStatus.starting);
    try {
      await realCall.start();
    } catch (error) {
      showNotice(`No customer can join: ${error.message}`);
    }
  },
  nextStep: () => call.moveToNextStep(),
  customerJoins() {
    post(EventType.callStarted, { clientPlatform: { language: { locale: localeSelect.value } } });
    call.moveTo(CallStatus.running);
  },
  pause: () => (realCall ? realCall.setPaused(true) : call.moveTo(CallStatus.paused)),
  resume: () => (realCall ? realCall.setPaused(false) : call.moveTo(CallStatus.running)),
  mute: () => showMuted(realCall.toggleSound()),
  loseConnection: () => call.moveTo(CallStatus.reconnecting),
  loseCustomer: () => call.moveTo(CallStatus.waitingButLostRemote),
  reconnect: () => call.moveTo(CallStatus.running),
  forward: () => call.moveTo(CallStatus.forwarding),
  async endCall() {
    if (realCall) return realCall.end();
    call.moveTo(CallStatus.disconnecting);
    await pause(timeToHangUp);
    if (call.status === CallStatus.disconnecting) call.moveTo(CallStatus.disconnected);
  },
  postStatus: () => call.moveTo(selectedStatus()),

  chooseLocale({ locale }) {
    localeSelect.value = locale;
    refreshProducts();
  },
  startPreview: () => startPreview(),
  stopPreview: () => stopPreview(),

  addToCart: ({ sku }) => changeQuantity(sku, 1),
  increaseInCart: ({ sku }) => changeQuantity(sku, 1),
  decreaseInCart: ({ sku }) => changeQuantity(sku, -1),
  removeFromCart: ({ sku }) => removeFromCart(sku),
  removeFromCall({ sku }) {
    callProducts.remove(sku);
    post(EventType.productRemovedFromCall, { sku, quantity: 1 });
  },

  refreshSsoToken() {
    tokenRequests += 1;
    post(EventType.refreshSsoToken, { responseId: `response-${tokenRequests}` });
  },
  reportUnauthorized: () => post(EventType.unauthorized),
  waitForSignOut: () => new Promise((resolve) => (signedOut = resolve)),

  setTrouble(details) {
    if (fieldsAreUsable(details)) setTrouble(wishOf(details));
  },
};

function perform(action, details) {
  return actions[action](details);
}

function showAddress() {
  document.querySelector("#organisation").textContent = organisation;
  document.querySelector("#booking").textContent = booking;
  for (const button of document.querySelectorAll("#sign-in-tools button")) {
    button.disabled = !usesSsoLogin;
  }
  document.querySelector("#sign-in-hint").hidden = usesSsoLogin;
}

document.addEventListener("click", (event) => {
  const button = event.target.closest("button[data-action]");
  if (button) perform(button.dataset.action, button.dataset);
});
localeSelect.addEventListener("change", refreshProducts);
listenForActions((action) => hostActions.receive(action));

showAddress();
fillStatusSelect();
showCall(call);
refreshProducts();
showHostState(hostState);
troubles.choose(troubleFrom(troubleAtStart()));

if (!canHoldCalls) showNotice("This engine cannot hold calls, so the states of one are played.");

// For whoever tests a host against this page.
window.agentTool = Object.freeze({
  setTrouble,
  connection: () => realCall?.connection ?? null,
  state: () => ({
    status: call.status,
    productsInCall: callProducts.skus,
    cart: Object.fromEntries(cart.lines.map(({ sku, quantity }) => [sku, quantity])),
    trouble: { ...troubles.current },
    receivedActions: hostActions.received,
    signIn: hostState.signIn,
    minimized: hostState.minimized,
  }),
});

// The host can hear this page only once the whole document has loaded.
if (realCall && beginsByItself) window.addEventListener("load", () => perform("startCall"));
if (wantsTour) window.addEventListener("load", () => runTour(perform, { withHost: wantsTourWithHost }));
