// What can go wrong between a request of the host and this page's answer. Only
// requests that wait for an answer meet a trouble, and each of them counts once.

export const TroubleKind = Object.freeze({
  none: "none",
  late: "late",
  never: "never",
  twice: "twice",
  unknownIdentifier: "unknownIdentifier",
  errorText: "errorText",
  wrongResultType: "wrongResultType",
  reverseOrder: "reverseOrder",
  throws: "throws",
  noPostAction: "noPostAction",
});

const noTrouble = Object.freeze({ kind: TroubleKind.none });
const longestDelay = 2 ** 31 - 1;

function isWholeNumber(value, least, most) {
  return Number.isInteger(value) && value >= least && value <= most;
}

// Returns the trouble that a wish means, without anything that its kind does
// not need. Throws a TypeError for a wish that is none.
export function troubleFrom(wish) {
  const { kind, milliseconds, text, count } = wish ?? {};
  if (!Object.values(TroubleKind).includes(kind)) throw new TypeError("Unknown kind of trouble");
  const trouble = { kind };
  if (kind === TroubleKind.late) {
    if (!isWholeNumber(milliseconds, 0, longestDelay)) {
      throw new TypeError("A late answer needs its milliseconds");
    }
    trouble.milliseconds = milliseconds;
  }
  if (kind === TroubleKind.errorText) {
    if (typeof text !== "string") throw new TypeError("An error text needs its text");
    trouble.text = text;
  }
  const meetsAnswers = kind !== TroubleKind.none && kind !== TroubleKind.noPostAction;
  if (meetsAnswers && count !== undefined) {
    if (!isWholeNumber(count, 1, Number.MAX_SAFE_INTEGER)) {
      throw new TypeError("The count of answers must be a whole number above 0");
    }
    trouble.count = count;
  }
  return Object.freeze(trouble);
}

// A list and a Boolean both become text, and a request without a result gets one.
function withWrongResult({ eventType, data }) {
  if ("error" in data) return { eventType, data };
  return { eventType, data: { ...data, result: JSON.stringify(data.result ?? null) } };
}

function withUnknownIdentifier({ eventType, data }) {
  return { eventType, data: { ...data, _id: `nobody-asked-${data._id}` } };
}

// Answers requests, as well or as badly as the chosen trouble wants it.
export class Troubles {
  #current = noTrouble;
  #held = [];
  #post;
  #keepBack;
  #later;
  #changed;

  // post(message) sends an answer. keepBack(message) hears of one that is not
  // sent for now, later(work, milliseconds) runs work after a time, changed()
  // follows every change of the current trouble.
  constructor({ post, keepBack, later, changed }) {
    this.#post = post;
    this.#keepBack = keepBack;
    this.#later = later;
    this.#changed = changed;
  }

  get current() {
    return this.#current;
  }

  choose(trouble) {
    this.#current = trouble;
    this.#changed();
  }

  // carryOut() does what was asked and returns { error } or { result }. It runs
  // at once for a late or lost answer. It does not run where the page throws
  // or refuses, as an agent tool in that trouble would behave.
  answer(eventType, id, carryOut) {
    const trouble = this.#take();
    if (trouble.kind === TroubleKind.throws) throw new Error("The trouble that was asked for");
    const refused = trouble.kind === TroubleKind.errorText;
    const outcome = refused ? { error: trouble.text } : carryOut();
    this.#deliver({ eventType, data: { _id: id, ...outcome } }, trouble);
  }

  // In reverse order the answer after a held one only lets it go, so that the
  // count is of the answers that are overtaken.
  #take() {
    const { kind, count } = this.#current;
    if (kind === TroubleKind.reverseOrder && this.#held.length > 0) return noTrouble;
    const taken = this.#current;
    if (count === 1) this.choose(noTrouble);
    else if (count > 1) this.choose(Object.freeze({ ...taken, count: count - 1 }));
    return taken;
  }

  #deliver(answer, { kind, milliseconds }) {
    switch (kind) {
      case TroubleKind.late:
        this.#later(() => this.#send(answer), milliseconds);
        break;
      case TroubleKind.never:
        this.#keepBack(answer);
        break;
      case TroubleKind.twice:
        this.#send(answer, answer);
        break;
      case TroubleKind.unknownIdentifier:
        this.#send(withUnknownIdentifier(answer));
        break;
      case TroubleKind.wrongResultType:
        this.#send(withWrongResult(answer));
        break;
      case TroubleKind.reverseOrder:
        this.#held.push(answer);
        this.#keepBack(answer);
        break;
      default:
        this.#send(answer);
    }
  }

  // A held answer goes out behind the next one that is sent, also when another
  // trouble has been chosen in between.
  #send(...answers) {
    for (const answer of [...answers, ...this.#held.splice(0)]) this.#post(answer);
  }
}
