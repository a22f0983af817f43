// One connection to the other side: pictures and sound both ways, and a channel for words about the shop.

// Both pages are on one machine, or in one house: no server of others is needed to find each other.
const configuration = { iceServers: [] };

// The words that a side says about itself at the beginning are complete only with its addresses.
async function complete(connection) {
  if (connection.iceGatheringState === "complete") return;
  await new Promise((resolve) => {
    connection.addEventListener("icegatheringstatechange", () => {
      if (connection.iceGatheringState === "complete") resolve();
    });
  });
}

export class Peer {
  #connection = new RTCPeerConnection(configuration);
  #channel = null;
  #heard;
  #opened;

  // `changed` gets the state of the connection, `showed` the other side's stream, `heard` its words, and `opened` is told
  // when words can be said. None of them is called after the end.
  constructor({ stream, changed, showed, heard, opened = () => {} }) {
    this.#heard = heard;
    this.#opened = opened;
    const connection = this.#connection;
    connection.addEventListener("connectionstatechange", () => changed(connection.connectionState));
    connection.addEventListener("track", ({ streams }) => showed(streams[0]));
    connection.addEventListener("datachannel", ({ channel }) => this.#use(channel));
    for (const track of stream.getTracks()) connection.addTrack(track, stream);
  }

  get connection() {
    return this.#connection;
  }

  async offer() {
    this.#use(this.#connection.createDataChannel("shop"));
    return this.#describe();
  }

  async answer(offer) {
    await this.#connection.setRemoteDescription(offer);
    return this.#describe();
  }

  async accept(answer) {
    await this.#connection.setRemoteDescription(answer);
  }

  say(words) {
    if (this.#channel?.readyState === "open") this.#channel.send(JSON.stringify(words));
  }

  end() {
    this.#heard = () => {};
    this.#opened = () => {};
    this.#connection.close();
  }

  async #describe() {
    await this.#connection.setLocalDescription();
    await complete(this.#connection);
    return this.#connection.localDescription;
  }

  #use(channel) {
    this.#channel = channel;
    channel.addEventListener("message", ({ data }) => this.#heard(JSON.parse(data)));
    channel.addEventListener("open", () => this.#opened());
  }
}
