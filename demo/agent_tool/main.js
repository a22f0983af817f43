import { listenForActions } from "./action_listener.js";
import { CallState } from "./call_state.js";
import { fillStatusSelect, selectedStatus, showCall } from "./call_view.js";
import { Cart } from "./cart.js";
import { products } from "./catalogue.js";
import { logPosted, logReceived } from "./message_log.js";
import { booking, organisation, usesSsoLogin, wantsTour } from "./page_address.js";
import { pause } from "./pause.js";
import { startPreview, stopPreview } from "./preview.js";
import { showCart, showProducts } from "./product_view.js";
import { CallStatus, EventType, postEvent } from "./protocol.js";
import { runTour } from "./tour.js";

const timeToHangUp = 350;

const localeSelect = document.querySelector("#locale-select");

let productsInCall = products;
let tokenRequests = 0;

function post(eventType, data) {
  postEvent(eventType, data);
  logPosted({ eventType, data });
}

function refreshProducts() {
  showProducts(productsInCall, localeSelect.value);
  showCart(cart, localeSelect.value);
}

const cart = new Cart(() => showCart(cart, localeSelect.value));

const call = new CallState((status) => {
  post(EventType.callStatus, { status });
  showCall(call);
  if (status === CallStatus.starting) {
    productsInCall = products;
    refreshProducts();
  }
  if (status === CallStatus.disconnecting) {
    cart.empty();
    stopPreview();
  }
});

function changeQuantity(sku, difference) {
  const quantity = cart.add(sku, difference);
  post(EventType.productUpdatedInCart, { sku, quantity });
}

const actions = {
  minimize: () => post(EventType.minimize),

  startCall: () => call.moveTo(CallStatus.starting),
  nextStep: () => call.moveToNextStep(),
  customerJoins() {
    post(EventType.callStarted, { clientPlatform: { language: { locale: localeSelect.value } } });
    call.moveTo(CallStatus.running);
  },
  pause: () => call.moveTo(CallStatus.paused),
  resume: () => call.moveTo(CallStatus.running),
  loseConnection: () => call.moveTo(CallStatus.reconnecting),
  loseCustomer: () => call.moveTo(CallStatus.waitingButLostRemote),
  reconnect: () => call.moveTo(CallStatus.running),
  forward: () => call.moveTo(CallStatus.forwarding),
  async endCall() {
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
  removeFromCart({ sku }) {
    cart.remove(sku);
    post(EventType.productRemovedFromCart, { sku, quantity: 0 });
  },
  removeFromCall({ sku }) {
    productsInCall = productsInCall.filter((product) => product.sku !== sku);
    refreshProducts();
    post(EventType.productRemovedFromCall, { sku, quantity: 1 });
  },

  refreshSsoToken() {
    tokenRequests += 1;
    post(EventType.refreshSsoToken, { responseId: `response-${tokenRequests}` });
  },
  reportUnauthorized: () => post(EventType.unauthorized),
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
listenForActions(logReceived);

showAddress();
fillStatusSelect();
showCall(call);
refreshProducts();

// The host can hear this page only once the whole document has loaded.
if (wantsTour) window.addEventListener("load", () => runTour(perform));
