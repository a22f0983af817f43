import { isActionType } from "./protocol.js";

// This window also hears its own events and whatever the engine or an outer
// page posts. So everything that is not plainly an action is passed over.
function actionIn(message) {
  if (typeof message !== "string") return null;
  try {
    const content = JSON.parse(message);
    return isActionType(content?.eventType) ? content : null;
  } catch {
    return null;
  }
}

export function listenForActions(receive) {
  window.addEventListener("message", (event) => {
    const action = actionIn(event.data);
    if (action) receive(action);
  });
}
