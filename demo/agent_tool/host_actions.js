import { endOfToken } from "./host_state.js";
import { ActionType, answerTypeOf } from "./protocol.js";
import { outcomeOf } from "./requests.js";

// A whole token has no business in a log that anybody sees on the screen.
function forTheLog({ eventType, data }) {
  if (typeof data?.idToken !== "string") return { eventType, data };
  return { eventType, data: { ...data, idToken: endOfToken(data.idToken) } };
}

// Does what the host's actions ask. An unknown action, or a request without an
// identifier to answer under, only shows in the log.
export class HostActions {
  #received = 0;
  #requests;
  #notices;
  #troubles;
  #log;

  constructor({ requests, hostState, troubles, log }) {
    this.#requests = requests;
    this.#troubles = troubles;
    this.#log = log;
    this.#notices = new Map([
      [ActionType.maximize, () => hostState.maximized()],
      [ActionType.refreshSsoToken, (data) => hostState.tokenCame(data)],
      [ActionType.ssoLogout, () => hostState.signedOut()],
    ]);
  }

  get received() {
    return this.#received;
  }

  receive(action) {
    this.#received += 1;
    this.#log(forTheLog(action));

    const { eventType } = action;
    const data = action.data ?? {};
    this.#notices.get(eventType)?.(data);
    const request = this.#requests.get(eventType);
    if (!request || typeof data._id !== "string") return;
    this.#troubles.answer(answerTypeOf(eventType), data._id, () => outcomeOf(request, data));
  }
}
