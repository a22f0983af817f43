const mostEntries = 200;

const list = document.querySelector("#message-list");
const count = document.querySelector("#message-count");
const latest = document.querySelector("#message-latest");

let total = 0;

function word(className, text) {
  const span = document.createElement("span");
  span.className = className;
  span.textContent = text;
  return span;
}

function add(direction, arrow, { eventType, data }) {
  const entry = document.createElement("li");
  entry.className = direction;
  entry.append(
    word("message-direction", `${arrow} ${direction}`),
    word("message-type", eventType),
  );
  if (data !== undefined) entry.append(word("message-data", JSON.stringify(data)));
  list.prepend(entry);
  if (list.children.length > mostEntries) list.lastElementChild.remove();

  total += 1;
  count.textContent = total;
  latest.textContent = `${arrow} ${eventType}`;
}

export function logPosted(message) {
  add("posted", "↑", message);
}

export function logReceived(message) {
  add("received", "↓", message);
}
