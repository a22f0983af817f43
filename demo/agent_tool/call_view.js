import { callActions } from "./call_state.js";
import { CallStatus } from "./protocol.js";

// The step is the place on the progress line: a paused or interrupted call
// stays at "Running" and only changes its colour.
const appearances = new Map([
  [null, { label: "Not started", tone: "idle", step: -1 }],
  [CallStatus.starting, { label: "Starting", tone: "preparing", step: 0 }],
  [CallStatus.ready, { label: "Ready", tone: "preparing", step: 1 }],
  [CallStatus.waiting, { label: "Waiting for customer", tone: "preparing", step: 2 }],
  [CallStatus.connecting, { label: "Connecting", tone: "preparing", step: 3 }],
  [CallStatus.running, { label: "Running", tone: "running", step: 4 }],
  [CallStatus.paused, { label: "Paused", tone: "interrupted", step: 4 }],
  [CallStatus.reconnecting, { label: "Reconnecting", tone: "interrupted", step: 4 }],
  [CallStatus.waitingButLostRemote, { label: "Customer lost", tone: "interrupted", step: 4 }],
  [CallStatus.forwarding, { label: "Forwarding", tone: "preparing", step: 4 }],
  [CallStatus.disconnecting, { label: "Ending", tone: "ended", step: 5 }],
  [CallStatus.disconnected, { label: "Ended", tone: "ended", step: 5 }],
]);

// Each pair shares one place, so a button never moves under the finger.
const sharedPlaces = [
  ["pause", "resume"],
  ["loseConnection", "reconnect"],
];

const badge = document.querySelector("#call-badge");
const steps = [...document.querySelectorAll("#call-steps li")];
const statusSelect = document.querySelector("#status-select");

function buttonFor(action) {
  return document.querySelector(`button[data-action="${action}"]`);
}

// The button just pressed may be the one that goes; a keyboard user then
// continues on the one that took its place.
function swap(usual, counterpart, showCounterpart) {
  const [shown, hidden] = showCounterpart ? [counterpart, usual] : [usual, counterpart];
  const hadFocus = document.activeElement === hidden;
  shown.hidden = false;
  hidden.hidden = true;
  if (hadFocus) shown.focus();
}

export function fillStatusSelect() {
  for (const status of Object.values(CallStatus)) {
    statusSelect.add(new Option(status.replace("CALL_SESSION_STATUS_", ""), status));
  }
}

export function selectedStatus() {
  return statusSelect.value;
}

export function showCall(call) {
  const { label, tone, step } = appearances.get(call.status);
  document.body.dataset.tone = tone;
  badge.textContent = label;

  steps.forEach((item, index) => {
    item.classList.toggle("done", index < step);
    if (index === step) item.setAttribute("aria-current", "step");
    else item.removeAttribute("aria-current");
  });

  // A disabled button cannot take the focus and loses the one it has, so
  // buttons are switched on before the swap and off after it.
  for (const action of callActions) {
    if (call.allows(action)) buttonFor(action).disabled = false;
  }
  for (const [usual, counterpart] of sharedPlaces) {
    swap(buttonFor(usual), buttonFor(counterpart), call.allows(counterpart));
  }
  for (const action of callActions) {
    if (!call.allows(action)) buttonFor(action).disabled = true;
  }
}
