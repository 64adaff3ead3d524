// Text boxes: those of one line, the listing, and what they have in common with the source (editor.js). The text and
// the selection are the record's; what the person did goes through the program.
//
//   const box = new Entry(control, program);
//   box.show(record);
//   box.sync();         the caret may have moved since: the record is told

import { shown, recorded, unitOfChar, charOfUnit } from './text.js';

export class TextBox {
  #shownSelections = 0;

  constructor(control, program, field) {
    this.control = control;
    this.program = program;
    this.field = field;
    this.root = field;
    field.spellcheck = false;
    field.autocomplete = 'off';
    field.setAttribute('autocapitalize', 'off');
    field.setAttribute('autocorrect', 'off');
    field.addEventListener('input', () => this.typed(field.value));
  }

  typed(text) {
    this.control.record.text = recorded(text);
    const caret = charOfUnit(text, this.field.selectionStart ?? text.length);
    this.program.actWithText('type', this.control.which, recorded(text), caret);
  }

  /** Tells the record of a selection that is another than its own. */
  sync() {
    const { control, field } = this;
    if (field.readOnly && document.activeElement !== field) return;
    const text = field.value;
    if (recorded(text) !== control.record.text) return;
    const start = charOfUnit(text, field.selectionStart);
    const length = charOfUnit(text, field.selectionEnd) - start;
    if (start === control.record.start && length === control.record.length) return;
    this.program.act('select', control.which, start, length);
  }

  show(record) {
    const text = shown(record.text);
    const changed = this.field.value !== text;
    if (changed) this.putText(text, record);
    // Setting a selection has the page laid out anew: during a run only where it is seen.
    if (record.running && document.activeElement !== this.field) {
      this.late = true;
      return;
    }
    this.late = false;
    this.putSelection(record, changed);
  }

  /** The run is over: what was left for later. */
  catchUp() {
    if (this.late) this.show({ ...this.control.record, running: false });
  }

  putText(text) {
    this.field.value = text;
  }

  putSelection(record, changed) {
    const start = unitOfChar(this.field.value, record.start);
    const end = unitOfChar(this.field.value, record.start + record.length);
    if (this.field.selectionStart !== start || this.field.selectionEnd !== end)
      this.field.setSelectionRange(start, end, 'backward');
    if (changed || this.#shownSelections !== record.shown) this.reveal(start);
    this.#shownSelections = record.shown;
  }

  reveal() {}
}

export class Entry extends TextBox {
  constructor(control, program) {
    const field = document.createElement('input');
    field.type = 'text';
    field.className = 'entry';
    super(control, program, field);
    field.addEventListener('keydown', (event) => {
      if (event.key === 'Enter' && !event.isComposing) program.act('enter', control.which);
    });
    // The click that brings the focus selects the whole text where the record says so; it does not undo that.
    field.addEventListener('mousedown', (event) => {
      if (document.activeElement === field || event.button !== 0) return;
      event.preventDefault();
      field.focus();
    });
    // An element of one line drops line ends; what they mean is for the program to say.
    field.addEventListener('paste', (event) => {
      const pasted = event.clipboardData.getData('text/plain');
      if (!/[\r\n]/.test(pasted)) return;
      event.preventDefault();
      const before = field.value.slice(0, field.selectionStart);
      this.typed(before + pasted + field.value.slice(field.selectionEnd));
    });
  }
}

export class Listing extends TextBox {
  constructor(control, program) {
    const field = document.createElement('textarea');
    field.className = 'listing';
    field.readOnly = true;
    field.wrap = 'off';
    super(control, program, field);
    const caret = () => charOfUnit(field.value, field.selectionStart);
    field.addEventListener('click', () => program.act('click_text', control.which, caret()));
    field.addEventListener('keyup', () => {
      if (document.activeElement === field) program.act('keyup_text', control.which, caret());
    });
  }
}
