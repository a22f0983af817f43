import { CallStatus } from "./protocol.js";

const stepsBeforeCustomer = [
  CallStatus.starting,
  CallStatus.ready,
  CallStatus.waiting,
  CallStatus.connecting,
];

const notStarted = null;

const statusesAllowing = {
  startCall: [notStarted, CallStatus.disconnected],
  nextStep: stepsBeforeCustomer.slice(0, -1),
  customerJoins: [CallStatus.connecting],
  pause: [CallStatus.running],
  resume: [CallStatus.paused, CallStatus.forwarding],
  loseConnection: [CallStatus.running, CallStatus.paused],
  reconnect: [CallStatus.reconnecting, CallStatus.waitingButLostRemote],
  loseCustomer: [CallStatus.running, CallStatus.paused],
  forward: [CallStatus.running],
  mute: [CallStatus.running, CallStatus.reconnecting, CallStatus.waitingButLostRemote],
  endCall: Object.values(CallStatus).filter(
    (status) => status !== CallStatus.disconnecting && status !== CallStatus.disconnected,
  ),
};

export class CallState {
  #status = notStarted;
  #changed;

  constructor(changed) {
    this.#changed = changed;
  }

  get status() {
    return this.#status;
  }

  allows(action) {
    return statusesAllowing[action].includes(this.#status);
  }

  moveTo(status) {
    this.#status = status;
    this.#changed(status);
  }

  moveToNextStep() {
    const next = stepsBeforeCustomer[stepsBeforeCustomer.indexOf(this.#status) + 1];
    this.moveTo(next);
  }
}

export const callActions = Object.keys(statusesAllowing);
