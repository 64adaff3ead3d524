// The elements of the page, one for each control of the program's inventory, by its kind.
//
//   const controls = buildControls(inventory, program, root);
//   controls[place].apply({ text: '1', enabled: true });
//   controls.named('eje1').field.focus();
//
// The template says where each stands: an element with data-control is replaced by the control of that name, one with
// data-members takes all members of a group, and a frame's element becomes the frame. No rule of the program is here.

import { putCaption, pictureOf, plain } from './captions.js';
import { Entry, Listing } from './entries.js';
import { Editor } from './editor.js';
import { List } from './lists.js';
import { ProgramMap } from './map.js';

class Button {
  #caption = document.createElement('span');

  constructor(control, program) {
    const button = document.createElement('button');
    button.type = 'button';
    const picture = pictureOf(control.name);
    if (picture) button.append(picture);
    button.append(this.#caption);
    button.addEventListener('click', () => program.act('click', control.which, control.index));
    this.root = button;
    this.field = button;
  }
  show(record) { putCaption(this.#caption, record.text); }
}

/** A check box or option: it leaves its value to the record, and a click only tells. */
class Mark {
  #caption = document.createElement('span');
  #text = null;

  constructor(control, program) {
    const label = document.createElement('label');
    const field = document.createElement('input');
    field.type = control.kind === 'check' ? 'checkbox' : 'radio';
    if (control.kind === 'option') field.name = control.name.replace(/\(.*/, '');
    label.className = 'mark';
    label.append(field, this.#caption);
    field.addEventListener('change', () => {
      program.act('click', control.which, control.index);
      control.members.forEach((member) => member.apply({}));
    });
    field.addEventListener('keydown', (event) => {
      if (event.key === 'Enter') field.click();
    });
    this.root = label;
    this.field = field;
  }
  show(record) {
    this.field.checked = record.value;
    if (this.#text === record.text) return;
    this.#text = record.text;
    putCaption(this.#caption, record.text);
    this.#caption.hidden = record.text === '';
  }
}

class Label {
  #chars = 0;

  constructor(control, program) {
    // A value is read with its name, and is not told by itself whenever it changes.
    const label = document.createElement(control.isTitle ? 'span' : 'output');
    if (!control.isTitle) label.setAttribute('aria-live', 'off');
    label.className = 'label';
    this.content = document.createElement('span');
    this.content.append('');
    label.append(this.content);
    if (control.name === 'ciclos') label.addEventListener('dblclick', () => program.act('dblclick', control.which, 0));
    this.root = label;
    this.field = label;
  }
  show({ text }) {
    const { content, root } = this;
    if (content.textContent === text) return;
    // In place: another piece of text would be laid out anew, with all around it.
    if (content.childNodes.length === 1 && content.firstChild.nodeType === Node.TEXT_NODE) content.firstChild.data = text;
    else content.replaceChildren(text);
    if (this.#chars === text.length) return;
    this.#chars = text.length;
    root.style.setProperty('--chars', text.length);
  }
}

class Choice {
  constructor(control, program) {
    const field = document.createElement('select');
    field.addEventListener('change', () => {
      program.actWithText('pick', control.which, field.value);
      control.apply({});
    });
    // A key over the closed list would change the device, and forget what is unsaved, of someone who only wants to go
    // on: keys open the list.
    field.addEventListener('keydown', (event) => {
      const moves = event.key.startsWith('Arrow') || ['PageUp', 'PageDown', 'Home', 'End'].includes(event.key);
      const letter = event.key.length === 1 && event.key !== ' ' && !event.ctrlKey && !event.altKey && !event.metaKey;
      if (!moves && !letter) return;
      event.preventDefault();
      if (moves) field.showPicker?.();
    });
    this.root = field;
    this.field = field;
  }
  show(record) {
    if (record.rows && this.field.options.length !== record.rows.length)
      this.field.replaceChildren(...record.rows.map((row) => new Option(row, row)));
    this.field.value = record.text;
  }
}

class Frame {
  #title = document.createElement('h2');

  constructor(control, program, element) {
    element.setAttribute('role', 'group');
    element.prepend(this.#title);
    this.root = element;
    this.field = element;
  }
  show(record) {
    this.#title.textContent = record.text;
    this.#title.hidden = record.text === '';
  }
}

function makerOf(control) {
  if (control.name === 'source') return Editor;
  if (control.name === 'lst') return Listing;
  return { button: Button, check: Mark, option: Mark, label: Label, combo: Choice, frame: Frame, list: List, text: Entry,
    picture: ProgramMap }[control.kind];
}

class Control {
  record = { text: '', tip: '', visible: true, enabled: true, name: '', description: '' };
  byPerson = false;
  running = false;

  constructor(declared, place) {
    Object.assign(this, declared, { place, id: `c${place}`, members: [this] });
  }

  build(program, element) {
    this.view = new (makerOf(this))(this, program, element);
    const { root, field } = this.view;
    root.dataset.name = this.name;
    root.id ||= this.id;
    if (this.skipped) field.tabIndex = -1;
    if (this.kind === 'check' || this.kind === 'button' || this.kind === 'text') field.dataset.field = this.name;
    return root;
  }

  get root() { return this.view.root; }
  get field() { return this.view.field; }

  /** What changed in the record; nothing: the element may have changed by itself. */
  apply(changes) {
    const record = Object.assign(this.record, changes);
    this.view.show({ ...record, rows: changes.rows ?? (this.kind === 'combo' ? record.rows : undefined),
      chosen: 'row' in changes, byPerson: this.byPerson, running: this.running });
    this.root.classList.toggle('gone', !record.visible);
    for (const companion of this.companions ?? []) companion.classList.toggle('gone', !record.visible);
    if ('disabled' in this.field) this.field.disabled = !record.enabled;
    if (this.root.title !== record.tip) this.root.title = record.tip;
    this.#speak(record);
  }

  #speak({ name, description, text }) {
    const { field } = this;
    const spoken = name || plain(text) || this.name;
    // Where the name is what is shown, the element says it by itself.
    const says = ['button', 'check', 'option'].includes(this.kind) && spoken === plain(text);
    if (says || this.isTitle) field.removeAttribute('aria-label');
    else if (field.getAttribute('aria-label') !== spoken) field.setAttribute('aria-label', spoken);
    if (this.isTitle || !description) return;
    if (field.getAttribute('aria-description') !== description) field.setAttribute('aria-description', description);
  }
}

/** What stands in no control, and is seen only while one is. */
function companionsOf(name, root) {
  return root.querySelectorAll(`[data-with="${name}"]`);
}

export function buildControls(inventory, program, root) {
  const controls = inventory.map((declared, place) => new Control(declared, place));
  const byName = new Map(controls.map((control) => [control.name, control]));
  for (const control of controls) {
    const group = controls.filter((other) => other.which === control.which);
    if (control.kind === 'option') control.members = group;
    control.isTitle = control.kind === 'label' && titles.has(control.name);
    const place = root.querySelector(`[data-control="${CSS.escape(control.name)}"]`);
    const members = root.querySelector(`[data-members="${control.name.replace(/\(.*/, '')}"]`);
    if (control.kind === 'frame') {
      control.build(program, place);
    } else if (place) {
      const element = control.build(program);
      element.classList.add(...place.classList);
      place.replaceWith(element);
    } else if (members) {
      // Bit 7 stands leftmost, as in the binary views.
      if (members.dataset.order === 'down') members.prepend(control.build(program));
      else members.append(control.build(program));
    } else {
      throw new Error(`the template has no place for ${control.name}`);
    }
    control.companions = companionsOf(control.name, root);
  }
  controls.named = (name) => byName.get(name);
  controls.of = (element) => controls.find((control) => control.field === element);
  return controls;
}

/** Labels that only name what stands beside them, and are read as the text they are. */
const titles = new Set(['Label1', 'Label2', 'Label3', 'Label4', 'Label5', 'Label8', 'Label9', 'Label10', 'Label11',
  'Label12', 'Label13', 'Label14', 'Label15', 'Label16', 'Label19', 'Label20', 'Label22', 'Label33', 'rotulo']);
