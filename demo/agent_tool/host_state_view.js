const signIn = document.querySelector("#sign-in-state");
const size = document.querySelector("#size-state");

const signInTexts = {
  in: ({ tokenEnd }) => `Signed in · token ${tokenEnd}`,
  out: () => "Signed out",
  unknown: () => "No token yet",
};

export function showHostState(state) {
  signIn.dataset.state = state.signIn;
  signIn.textContent = signInTexts[state.signIn](state);
  size.hidden = !state.minimized;
}
