import { shortened } from "./shortened.js";

const mostCharacters = 24;

const signIn = document.querySelector("#sign-in-state");
const size = document.querySelector("#size-state");

const signInTexts = {
  in: ({ tokenEnd, responseId }) =>
    `Signed in · token ${tokenEnd}${responseId && ` · ${shortened(responseId, mostCharacters)}`}`,
  out: () => "Signed out",
  unknown: () => "No token yet",
};

export function showHostState(state) {
  signIn.dataset.state = state.signIn;
  signIn.textContent = signInTexts[state.signIn](state);
  size.hidden = !state.minimized;
}
