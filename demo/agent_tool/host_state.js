const charactersShown = 6;

// Enough to tell one token from the next, and too little to use it.
export function endOfToken(token) {
  return token.length > charactersShown ? `…${token.slice(-charactersShown)}` : "…";
}

// What the host has told this page about the sign-in and its own size. A host
// that minimizes the page by itself does not say so, only that it maximizes it.
export class HostState {
  signIn = "unknown";
  tokenEnd = "";
  minimized = false;
  #changed;

  constructor(changed) {
    this.#changed = changed;
  }

  askedToMinimize() {
    this.minimized = true;
    this.#changed();
  }

  maximized() {
    this.minimized = false;
    this.#changed();
  }

  tokenCame({ idToken }) {
    if (typeof idToken !== "string") return;
    this.signIn = "in";
    this.tokenEnd = endOfToken(idToken);
    this.#changed();
  }

  signedOut() {
    this.signIn = "out";
    this.tokenEnd = "";
    this.#changed();
  }
}
