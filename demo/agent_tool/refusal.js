// A request that this page does not carry out; the message is for the host.
export class Refusal extends Error {}
