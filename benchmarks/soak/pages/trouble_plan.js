// Gives each request that the stand-in agent tool gets a trouble of its own, by chance, and keeps what came and what it
// met. Time-outs are dear, so that they come one in `perTimeOut` requests, and never two in a row.
(({ seed, perTimeOut }) => {
  let state = seed >>> 0 || 1;
  const below = (limit) => {
    state ^= state << 13;
    state ^= state >>> 17;
    state ^= state << 5;
    state >>>= 0;
    return state % limit;
  };
  const timingOut = [
    () => ({ kind: "never" }),
    () => ({ kind: "unknownIdentifier" }),
    () => ({ kind: "throws" }),
    () => ({ kind: "reverseOrder" }),
    () => ({ kind: "late", milliseconds: 5100 + below(400) }),
  ];
  let total = 0;
  let nextTimeOut = 1 + below(perTimeOut);
  let timeOuts = below(timingOut.length);

  const choose = () => {
    if (total === nextTimeOut) {
      nextTimeOut += Math.floor(perTimeOut / 2) + 2 + below(perTimeOut);
      timeOuts += 1;
      return timingOut[timeOuts % timingOut.length]();
    }
    const chance = below(100);
    if (chance < 15) return { kind: "twice" };
    if (chance < 25) return { kind: "errorText", text: `no ${total}` };
    if (chance < 35) return { kind: "wrongResultType" };
    if (chance < 45) return { kind: "late", milliseconds: below(20) };
    return { kind: "none" };
  };

  let arrivals = [];
  window.soak = { take: () => arrivals.splice(0) };
  // Before the page itself hears of it.
  const hear = ({ data: message }) => {
    if (typeof message !== "string") return;
    const { eventType, data } = JSON.parse(message);
    if (!eventType?.startsWith("SDK_INTERNAL_") || eventType.endsWith("_CALLBACK") || !data?._id) return;
    total += 1;
    const trouble = choose();
    agentTool.setTrouble(trouble.kind === "none" ? trouble : { ...trouble, count: 1 });
    arrivals.push({
      type: eventType.slice("SDK_INTERNAL_".length),
      sku: data.sku ?? data.data?.product?.variations?.[0].sku ?? "",
      quantity: data.quantity ?? 0,
      kind: trouble.kind,
      milliseconds: trouble.milliseconds ?? 0,
      text: trouble.text ?? "",
    });
  };
  addEventListener("message", hear, true);
})
