// What was changed in a text, to be undone and done again: what the person typed and what the program put there. The
// browser's own undoing forgets everything at a change by the program, or takes seconds for a long one.
//
//   const history = new History();
//   history.record('NOP', 'NOPS', 4);        from, to, and where the caret then stands
//   history.undo('NOPS')                      -> { text: 'NOP', caret: 3 }
//   history.redo('NOP')                       -> { text: 'NOPS', caret: 4 }
//
// Letters typed one behind the other are one step, up to a blank or a line end; so are letters deleted one by one.

import { difference } from './text.js';

const most_steps = 1000;

export class History {
  #steps = [];
  #at = 0;
  /** The next change begins a step of its own. */
  #closed = true;

  clear() {
    this.#steps = [];
    this.#at = 0;
    this.#closed = true;
  }

  close() {
    this.#closed = true;
  }

  record(before, after, caret) {
    const { start, end, text } = difference(before, after, Math.min(caret, before.length));
    const step = { start, removed: before.slice(start, end), inserted: text };
    this.#steps.length = this.#at;
    const last = this.#closed ? undefined : this.#steps.at(-1);
    if (!last || !joined(last, step)) this.#steps.push(step);
    if (this.#steps.length > most_steps) this.#steps.shift();
    this.#at = this.#steps.length;
    this.#closed = step.inserted.length > 1 || step.removed.length > 1 || /\s/.test(step.inserted);
  }

  undo(text) {
    if (this.#at === 0) return null;
    const { start, removed, inserted } = this.#steps[--this.#at];
    this.#closed = true;
    return replaced(text, start, inserted.length, removed);
  }

  redo(text) {
    if (this.#at === this.#steps.length) return null;
    const { start, removed, inserted } = this.#steps[this.#at++];
    this.#closed = true;
    return replaced(text, start, removed.length, inserted);
  }
}

function replaced(text, start, length, by) {
  return { text: text.slice(0, start) + by + text.slice(start + length), caret: start + by.length };
}

/** Adds a step to the one before, where both are of one kind and one continues the other. */
function joined(last, step) {
  const typing = step.removed === '' && step.inserted.length === 1 && last.inserted !== '';
  if (typing && step.start === last.start + last.inserted.length) {
    last.inserted += step.inserted;
    return true;
  }
  const deleting = step.inserted === '' && step.removed.length === 1 && last.inserted === '';
  if (deleting && step.start === last.start) last.removed += step.removed;
  else if (deleting && step.start === last.start - 1) Object.assign(last, { start: step.start, removed: step.removed + last.removed });
  else return false;
  return true;
}
