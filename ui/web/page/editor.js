// The source: a plain text area, which screen readers and telephones know, with its text
// drawn beneath it in colours, line numbers at its left, and the line with the error marked.
//
//   const editor = new Editor(control, program);
//   editor.show(record);
//
// What the program changes in the text can be undone as what was typed (history.js); another document begins a history
// of its own. Only the lines in sight are drawn: the time for a text does not depend on its length.

import { TextBox } from './entries.js';
import { History } from './history.js';

const parts = ['label', 'mnemonic', 'directive', 'number', 'comment'];
/** Longer than this is no line of a program, and not worth the time to draw it in colours. */
const longest_line = 2000;
/** Whoever types or walks on is not interrupted. */
const pause_ms = 500;

export class Editor extends TextBox {
  #numbers;
  #drawn;
  #documents = 0;
  #history = new History();
  /** The text as the record has it. */
  #told = '';
  #lines = [''];
  #linesOf = '';
  #read = new Map();
  #paper = null;
  #drawing = 0;
  #said = document.createElement('div');
  #saying = 0;

  constructor(control, program) {
    const field = document.createElement('textarea');
    field.wrap = 'off';
    super(control, program, field);
    const root = document.createElement('div');
    root.className = 'source';
    this.#numbers = this.#beneath('numbers');
    this.#drawn = this.#beneath('drawn');
    this.#said.className = 'unseen';
    this.#said.setAttribute('role', 'status');
    root.append(this.#numbers, this.#drawn, field, this.#said);
    this.root = root;
    this.#listenToUndoing();
    const draw = () => this.drawSoon();
    for (const event of ['scroll', 'input', 'select', 'keyup', 'click', 'focus']) field.addEventListener(event, draw);
    field.addEventListener('mousemove', (event) => this.#showTip(event));
    // Told again when the person comes back.
    field.addEventListener('blur', () => this.#said.replaceChildren());
    new ResizeObserver(draw).observe(field);
  }

  #beneath(name) {
    const sheet = document.createElement('div');
    sheet.className = name;
    sheet.setAttribute('aria-hidden', 'true');
    // Moved as a whole with the text: a line moved by itself would be a layer of its own in each frame.
    const lines = document.createElement('p');
    lines.className = 'lines';
    sheet.append(lines);
    return sheet;
  }

  show(record) {
    super.show(record);
    if (record.documents !== this.#documents) this.#history.clear();
    this.#documents = record.documents;
    this.drawSoon();
  }

  /** What the program changes can be undone; nobody comes back by undoing from one document to the other. */
  putText(text, record) {
    if (record.documents !== this.#documents) {
      this.#history.clear();
    } else {
      this.#history.close();
      this.#history.record(this.#told, text, this.field.selectionStart);
      this.#history.close();
    }
    this.field.value = text;
    this.#told = text;
  }

  typed(text) {
    this.#history.record(this.#told, text, this.field.selectionStart);
    this.#told = text;
    super.typed(text);
  }

  #undo(back) {
    const step = back ? this.#history.undo(this.field.value) : this.#history.redo(this.field.value);
    if (!step) return;
    this.field.value = step.text;
    this.field.setSelectionRange(step.caret, step.caret);
    this.#told = step.text;
    super.typed(step.text);
    this.reveal(step.caret);
  }

  #listenToUndoing() {
    this.field.addEventListener('keydown', (event) => {
      if (!(event.ctrlKey || event.metaKey) || event.altKey) return;
      const key = event.key.toLowerCase();
      if (key !== 'z' && key !== 'y') return;
      event.preventDefault();
      this.#undo(key === 'z' && !event.shiftKey);
    });
    // From a menu, or by a gesture.
    this.field.addEventListener('beforeinput', (event) => {
      if (event.inputType !== 'historyUndo' && event.inputType !== 'historyRedo') return;
      event.preventDefault();
      this.#undo(event.inputType === 'historyUndo');
    });
  }

  get #lineHeight() {
    return parseFloat(getComputedStyle(this.field).lineHeight);
  }

  /** The caret's line comes into sight. */
  reveal(unit) {
    const { field } = this;
    const height = this.#lineHeight;
    let line = 0;
    for (let at = field.value.indexOf('\n'); at >= 0 && at < unit; at = field.value.indexOf('\n', at + 1)) ++line;
    const top = line * height;
    if (top < field.scrollTop || top + height > field.scrollTop + field.clientHeight - height)
      field.scrollTop = Math.max(0, top - 4 * height);
    field.scrollLeft = 0;
  }

  drawSoon() {
    if (this.#drawing === 0) this.#drawing = requestAnimationFrame(() => this.#draw());
  }

  #draw() {
    this.#drawing = 0;
    const { field } = this;
    if (field.value !== this.#linesOf) {
      // A name that is defined or no more changes how other lines are read.
      this.#read.clear();
      this.#linesOf = field.value;
      this.#lines = field.value.split('\n');
    }
    const height = this.#lineHeight;
    const first = Math.floor(field.scrollTop / height);
    const last = Math.min(this.#lines.length, Math.ceil((field.scrollTop + field.clientHeight) / height) + 1);
    const current = field.value.slice(0, field.selectionStart).split('\n').length;
    const down = `${first * height - field.scrollTop}px`;
    const [numbers, lines] = [[], []];
    for (let at = first; at < last; ++at) {
      numbers.push(this.#number(at + 1, current));
      lines.push(this.#line(at));
    }
    this.#numbers.firstChild.replaceChildren(...numbers);
    this.#drawn.firstChild.replaceChildren(...lines);
    const digits = Math.max(3, String(this.#lines.length).length);
    this.root.style.setProperty('--digits', digits);
    for (const sheet of [this.#numbers, this.#drawn]) sheet.style.setProperty('--down', down);
    this.#drawn.style.setProperty('--left', `${-field.scrollLeft}px`);
    this.#saySoon(this.#lines[current - 1]);
  }

  /** The underlining of the caret's line in words, for who does not see it. */
  #saySoon(line) {
    clearTimeout(this.#saying);
    if (document.activeElement !== this.field) return;
    this.#saying = setTimeout(() => {
      const tips = line.length > longest_line ? [] : this.#readingOf(line).odd.map(([, , tip]) => tip);
      const sentence = [...new Set(tips)].join(' ');
      if (document.activeElement === this.field && this.#said.textContent !== sentence) this.#said.textContent = sentence;
    }, pause_ms);
  }

  #number(line, current) {
    const number = document.createElement('div');
    const wrong = line === this.control.record.line;
    number.textContent = wrong ? `!${String(line).padStart(3)}` : String(line);
    if (wrong) number.className = 'wrong';
    else if (line === current) number.className = 'current';
    return number;
  }

  #line(at) {
    const line = document.createElement('div');
    line.append(...this.#coloured(this.#lines[at]));
    if (at + 1 === this.control.record.line) line.className = 'wrong';
    return line;
  }

  #coloured(text) {
    if (text.length > longest_line || text === '') return [text || '\u200b'];
    const { parts: cut, odd } = this.#readingOf(text);
    // Where a colour begins or ends, or the line below what is read as something else than it looks.
    const edges = [...new Set([0, text.length, ...[...cut, ...odd].flatMap(([start, length]) => [start, start + length])])]
      .sort((one, other) => one - other);
    return edges.slice(1).map((to, at) => {
      const from = edges[at];
      const within = ([start, length]) => start <= from && to <= start + length;
      const part = cut.find(within);
      const piece = document.createElement('span');
      if (part) piece.className = parts[part[2]];
      if (odd.some(within)) piece.classList.add('odd');
      piece.textContent = text.slice(from, to);
      return piece;
    });
  }

  /** How a line is read, as the assembler cuts it. */
  #readingOf(text) {
    let known = this.#read.get(text);
    if (!known) {
      known = JSON.parse(this.program.askWithText('highlight', text));
      this.#read.set(text, known);
    }
    return known;
  }

  /** What the operand below the mouse is read as. */
  #showTip(event) {
    const { field } = this;
    const style = getComputedStyle(field);
    const box = field.getBoundingClientRect();
    const line = Math.floor((event.clientY - box.top + field.scrollTop) / parseFloat(style.lineHeight));
    const text = this.#lines[line] ?? '';
    const paper = (this.#paper ??= document.createElement('canvas').getContext('2d'));
    paper.font = style.font;
    const column = (event.clientX - box.left + field.scrollLeft - parseFloat(style.paddingLeft)) / paper.measureText('0').width;
    const unit = unitOfColumn(text, column);
    const odd = text.length > longest_line ? undefined
      : this.#readingOf(text).odd.find(([start, length]) => start <= unit && unit < start + length);
    field.title = odd?.[2] ?? '';
  }
}

/** The letter that stands at a column, tabs being as wide as eight stops have it. */
function unitOfColumn(text, wanted) {
  let column = 0;
  for (let at = 0; at < text.length; ++at) {
    column += text[at] === '\t' ? 8 - column % 8 : 1;
    if (column > wanted) return at;
  }
  return text.length;
}
