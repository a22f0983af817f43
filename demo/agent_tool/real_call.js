// A call that takes place: with a camera, a microphone, and a customer on a page of their own.
import { Mailbox } from "./mailbox.js";
import { Peer } from "./peer.js";
import { CallStatus } from "./protocol.js";

export const canHoldCalls = typeof RTCPeerConnection === "function";

const statusesWithCustomer = [
  CallStatus.running,
  CallStatus.paused,
  CallStatus.reconnecting,
  CallStatus.waitingButLostRemote,
];
const statusesOpenToCustomer = [CallStatus.waiting, CallStatus.connecting, ...statusesWithCustomer];

export class RealCall {
  #call;
  #capture;
  #showCustomer;
  #customerCame;
  #heard;
  #shop;
  #mailbox;
  #stream = null;
  #peer = null;
  #session = null;
  #hasCustomer = false;

  // `capture` gives the agent's stream, or null; `customerCame` is told the customer's locale, once a call; `heard` gets
  // what the customer wants of the shop, and `shop` says what the customer is to see of it.
  constructor({ booking, call, capture, showCustomer, customerCame, heard, shop }) {
    this.#call = call;
    this.#capture = capture;
    this.#showCustomer = showCustomer;
    this.#customerCame = customerCame;
    this.#heard = heard;
    this.#shop = shop;
    this.#mailbox = new Mailbox({
      room: booking,
      own: "agent",
      other: "customer",
      heard: (message) => this.#hear(message),
    });
  }

  // False where the call cannot begin.
  async start() {
    this.#hasCustomer = false;
    this.#call.moveTo(CallStatus.starting);
    this.#stream = await this.#capture();
    if (this.#call.status !== CallStatus.starting) return true;
    if (this.#stream === null) {
      this.#call.moveTo(CallStatus.disconnected);
      return false;
    }
    this.#call.moveTo(CallStatus.ready);
    await this.#mailbox.open();
    if (this.#call.status === CallStatus.ready) this.#call.moveTo(CallStatus.waiting);
    return true;
  }

  async end() {
    this.#call.moveTo(CallStatus.disconnecting);
    this.#leavePeer();
    this.#mailbox.close();
    this.#stream = null;
    await this.#mailbox.send({ kind: "end" });
    if (this.#call.status === CallStatus.disconnecting) this.#call.moveTo(CallStatus.disconnected);
  }

  setPaused(isPaused) {
    for (const track of this.#stream?.getTracks() ?? []) track.enabled = !isPaused;
    this.#call.moveTo(isPaused ? CallStatus.paused : CallStatus.running);
    this.#peer?.say({ isPaused });
  }

  // Returns whether the other side hears nothing from now on.
  toggleSound() {
    const sounds = this.#stream?.getAudioTracks() ?? [];
    for (const sound of sounds) sound.enabled = !sound.enabled;
    return sounds.some(({ enabled }) => !enabled);
  }

  shareShop() {
    this.#peer?.say({ shop: this.#shop() });
  }

  // For whoever looks at how well the call goes.
  get connection() {
    return this.#peer?.connection ?? null;
  }

  async #hear(message) {
    if (message.kind === "join") await this.#welcome(message);
    if (message.session !== this.#session) return;
    if (message.kind === "answer") await this.#peer?.accept(message.description);
    if (message.kind === "leave" && statusesWithCustomer.includes(this.#call.status)) {
      this.#leavePeer();
      this.#call.moveTo(CallStatus.waitingButLostRemote);
    }
  }

  // A customer asks again and again until there is an offer; each visit has a session of its own.
  async #welcome({ session, locale }) {
    if (session === this.#session || !statusesOpenToCustomer.includes(this.#call.status)) return;
    this.#leavePeer();
    this.#session = session;
    if (!this.#hasCustomer) this.#call.moveTo(CallStatus.connecting);
    const peer = new Peer({
      stream: this.#stream,
      changed: (state) => this.#peer === peer && this.#follow(state, locale),
      showed: (stream) => this.#showCustomer(stream),
      heard: (words) => this.#heard(words),
      opened: () => this.shareShop(),
    });
    this.#peer = peer;
    const description = await peer.offer();
    if (this.#peer === peer) await this.#mailbox.send({ kind: "offer", session, description });
  }

  #follow(state, locale) {
    if (state === "connected") {
      if (!this.#hasCustomer) this.#customerCame(locale);
      this.#hasCustomer = true;
      if (this.#call.status !== CallStatus.paused) this.#call.moveTo(CallStatus.running);
    } else if (state === "disconnected" || state === "failed") {
      if (this.#hasCustomer) this.#call.moveTo(CallStatus.reconnecting);
    }
  }

  #leavePeer() {
    this.#peer?.end();
    this.#peer = null;
    this.#session = null;
    this.#showCustomer(null);
  }
}
