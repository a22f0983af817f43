// The customer's side of a call: asks to be let in, answers, and tries again after a loss.
import { Mailbox } from "../agent_tool/mailbox.js";
import { Peer } from "../agent_tool/peer.js";

const pauseBetweenAttempts = 1500;

export class CustomerCall {
  #mailbox;
  #locale;
  #changed;
  #showAgent;
  #showOwn;
  #shopCame;
  #stream = null;
  #peer = null;
  #session = null;
  #timer = null;

  constructor({ booking, locale, changed, showAgent, showOwn, shopCame }) {
    this.#locale = locale;
    this.#changed = changed;
    this.#showAgent = showAgent;
    this.#showOwn = showOwn;
    this.#shopCame = shopCame;
    this.#mailbox = new Mailbox({
      room: booking,
      own: "customer",
      other: "agent",
      heard: (message) => this.#hear(message),
    });
  }

  get connection() {
    return this.#peer?.connection ?? null;
  }

  async join() {
    this.#changed("asking");
    try {
      this.#stream = await navigator.mediaDevices.getUserMedia({ video: true, audio: true });
      this.#showOwn(this.#stream);
      await this.#mailbox.open();
    } catch (error) {
      this.#end("outside", `The call cannot begin: ${error.message}`);
      return;
    }
    this.#changed("waiting");
    this.#askToBeLetIn();
  }

  leave() {
    if (this.#stream === null) return;
    this.#mailbox.send({ kind: "leave", session: this.#session });
    this.#end("left");
  }

  change(sku, difference) {
    this.#peer?.say({ change: { sku, difference } });
  }

  remove(sku) {
    this.#peer?.say({ remove: { sku } });
  }

  // Returns whether the other side hears nothing from now on.
  toggleSound() {
    const sounds = this.#stream?.getAudioTracks() ?? [];
    for (const sound of sounds) sound.enabled = !sound.enabled;
    return sounds.some(({ enabled }) => !enabled);
  }

  // Each visit has a session of its own, which tells old words from new ones.
  #askToBeLetIn() {
    this.#peer?.end();
    this.#peer = null;
    this.#session = String(Math.random()).slice(2);
    const ask = () => this.#mailbox.send({ kind: "join", session: this.#session, locale: this.#locale });
    clearInterval(this.#timer);
    this.#timer = setInterval(ask, pauseBetweenAttempts);
    ask();
  }

  async #hear(message) {
    if (message.kind === "end") return this.#end("ended");
    if (message.kind !== "offer" || message.session !== this.#session || this.#peer) return;
    clearInterval(this.#timer);
    const peer = new Peer({
      stream: this.#stream,
      changed: (state) => this.#peer === peer && this.#follow(state),
      showed: (stream) => this.#showAgent(stream),
      heard: ({ shop, isPaused }) => {
        if (shop) this.#shopCame(shop);
        if (isPaused !== undefined) this.#changed(isPaused ? "paused" : "connected");
      },
    });
    this.#peer = peer;
    const description = await peer.answer(message.description);
    await this.#mailbox.send({ kind: "answer", session: this.#session, description });
  }

  #follow(state) {
    if (state === "connected") this.#changed("connected");
    if (state === "disconnected") this.#changed("lost");
    if (state === "failed") {
      this.#changed("lost");
      this.#askToBeLetIn();
    }
  }

  #end(state, text) {
    clearInterval(this.#timer);
    this.#mailbox.close();
    this.#peer?.end();
    this.#peer = null;
    this.#session = null;
    for (const track of this.#stream?.getTracks() ?? []) track.stop();
    this.#stream = null;
    this.#showAgent(null);
    this.#showOwn(null);
    this.#changed(state, text);
  }
}
