import { shortened } from "./shortened.js";

const mostEntries = 200;
const mostCharacters = 600;

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
  entry.className = direction.replace(" ", "-");
  entry.append(
    word("message-direction", `${arrow} ${direction}`),
    word("message-type", shortened(eventType)),
  );
  if (data !== undefined) {
    entry.append(word("message-data", shortened(JSON.stringify(data), mostCharacters)));
  }
  list.prepend(entry);
  if (list.children.length > mostEntries) list.lastElementChild.remove();

  total += 1;
  count.textContent = total;
  latest.textContent = `${arrow} ${shortened(eventType)}`;
}

export function logPosted(message) {
  add("posted", "↑", message);
}

export function logReceived(message) {
  add("received", "↓", message);
}

export function logKeptBack(message) {
  add("kept back", "×", message);
}
