import { pause } from "./pause.js";

const pauseBetweenSteps = 350;

const steps = [
  { action: "startCall" },
  { action: "nextStep" },
  { action: "nextStep" },
  { action: "nextStep" },
  { action: "chooseLocale", locale: "de-CH" },
  { action: "customerJoins" },
  { action: "startPreview", longestWait: 3000 },
  { action: "addToCart", sku: "SHIRT-OXFORD-M-BLUE" },
  { action: "addToCart", sku: "JEANS-SLIM-32-INDIGO" },
  { action: "increaseInCart", sku: "SHIRT-OXFORD-M-BLUE" },
  { action: "removeFromCart", sku: "JEANS-SLIM-32-INDIGO" },
  { action: "removeFromCall", sku: "SCARF-MERINO-GREY" },
  { action: "waitForSignOut", longestWait: 30000 },
  { action: "refreshSsoToken" },
  { action: "reportUnauthorized" },
  { action: "loseConnection" },
  { action: "reconnect" },
  { action: "endCall" },
];

function buttonFor({ action, sku }) {
  const ofSku = sku ? `[data-sku="${sku}"]` : "";
  return document.querySelector(`button[data-action="${action}"]${ofSku}`);
}

// Most steps are done at once. A step with a longest wait may hang on an
// answer nobody gives, and the tour then goes on without it.
async function run(step, perform) {
  const done = perform(step.action, step);
  await (step.longestWait ? Promise.race([done, pause(step.longestWait)]) : done);
}

// A host that takes part in the tour does so before it signs out; without one
// there is nothing to wait for.
export async function runTour(perform, { withHost }) {
  for (const step of steps) {
    if (step.action === "waitForSignOut" && !withHost) continue;
    const button = buttonFor(step);
    button?.scrollIntoView({ block: "nearest" });
    button?.classList.add("pressed");
    await pause(pauseBetweenSteps);
    button?.classList.remove("pressed");
    await run(step, perform);
  }
}
