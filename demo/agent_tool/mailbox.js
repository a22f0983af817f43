// Words for the other side of a call, before there is a connection to it. The server that both pages come from keeps them.
const pauseBetweenLooks = 250;

export class Mailbox {
  #own;
  #other;
  #heard;
  #next = null;
  #isOpen = false;

  // The sides are "agent" and "customer"; the room is the booking.
  constructor({ room, own, other, heard }) {
    this.#own = Mailbox.#address(room, own);
    this.#other = Mailbox.#address(room, other);
    this.#heard = heard;
  }

  static #address(room, side) {
    return new URL(`../mailbox/${encodeURIComponent(room)}/${side}`, window.location.href);
  }

  // What lies there from before is for somebody else. Throws where there is no mailbox.
  async open() {
    this.#next = (await this.#look()).next;
    this.#isOpen = true;
    this.#keepLooking();
  }

  close() {
    this.#isOpen = false;
  }

  async send(message) {
    // Also while the page is being left.
    await fetch(this.#other, { method: "POST", body: JSON.stringify(message), keepalive: true });
  }

  async #look() {
    const address = new URL(this.#own);
    if (this.#next !== null) address.searchParams.set("after", this.#next);
    const answer = await fetch(address, { cache: "no-store" });
    if (!answer.ok) throw new Error("This server has no mailbox for calls.");
    return answer.json();
  }

  async #keepLooking() {
    while (this.#isOpen) {
      try {
        const { next, messages } = await this.#look();
        this.#next = next;
        for (const message of messages) if (this.#isOpen) await this.#heard(message);
      } catch (error) {
        console.warn("The mailbox cannot be read now:", error);
      }
      await new Promise((resolve) => setTimeout(resolve, pauseBetweenLooks));
    }
  }
}
