import { shortened } from "./shortened.js";
import { TroubleKind } from "./trouble.js";

const mostCharacters = 24;

const current = document.querySelector("#trouble-current");
const section = document.querySelector("#trouble");
const buttons = [...section.querySelectorAll("button[data-kind]")];
const delay = document.querySelector("#trouble-milliseconds");
const text = document.querySelector("#trouble-text");
const count = document.querySelector("#trouble-count");

const names = {
  [TroubleKind.none]: () => "None",
  [TroubleKind.late]: ({ milliseconds }) => `${milliseconds / 1000} s late`,
  [TroubleKind.never]: () => "No answer",
  [TroubleKind.twice]: () => "Answers twice",
  [TroubleKind.unknownIdentifier]: () => "Unknown identifier",
  [TroubleKind.errorText]: (trouble) => `Error “${shortened(trouble.text, mostCharacters)}”`,
  [TroubleKind.wrongResultType]: () => "Wrong result type",
  [TroubleKind.reverseOrder]: () => "Reverse order",
  [TroubleKind.throws]: () => "Handler throws",
  [TroubleKind.noPostAction]: () => "No postAction",
};

function isPreset({ milliseconds }) {
  return buttons.some(({ dataset }) => Number(dataset.milliseconds) === milliseconds);
}

function means({ dataset }, trouble) {
  if (dataset.kind !== trouble.kind) return false;
  if (trouble.kind !== TroubleKind.late) return true;
  return "milliseconds" in dataset
    ? Number(dataset.milliseconds) === trouble.milliseconds
    : !isPreset(trouble);
}

// The wish that a pressed button and the fields beside it stand for; an empty
// count means until another trouble is chosen.
export function wishOf({ kind, milliseconds }) {
  return {
    kind,
    milliseconds: milliseconds === undefined ? delay.valueAsNumber : Number(milliseconds),
    text: text.value,
    count: count.value === "" ? undefined : count.valueAsNumber,
  };
}

// A field with something unusable says so itself, and nothing is chosen.
export function fieldsAreUsable({ kind, milliseconds }) {
  const needed = kind === TroubleKind.late && milliseconds === undefined ? [delay, count] : [count];
  return needed.every((field) => field.reportValidity());
}

export function showTrouble(trouble) {
  const left = trouble.count === undefined ? "" : `${trouble.count} × `;
  current.textContent = left + names[trouble.kind](trouble);
  section.dataset.active = trouble.kind !== TroubleKind.none;
  for (const button of buttons) button.setAttribute("aria-pressed", means(button, trouble));
}
