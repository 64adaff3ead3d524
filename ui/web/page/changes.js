// What changed in the last action: the lines of registers and memory, the bits and the counters whose text is another
// than before it. A view of the views: the record does not know of it.
//
//   const marks = new ChangeMarks(controls);
//   marks.look(running);            after each copy of the record
//
// An action that changes none of them leaves the marks where they are. While a program runs nothing is marked; when it
// stops, all that changed since it started is.

const watched = new Set(['RE', 'MDP', 'MD', 'PIL', 'OPT', 'TRISA', 'TRISB', 'TRISC', 'STATUS', 'BPA', 'BPB', 'BPC', 'INDF',
  'DIRFSR', 'PAGFSR', 'SENTIM', 'divtim', 'contawdt', 'ciclos']);

export class ChangeMarks {
  #views;
  #running = false;

  constructor(controls) {
    this.#views = controls.filter((control) => watched.has(control.name.replace(/\(.*/, '')))
      .map((control) => ({ control, before: content(control), marked: [] }));
  }

  look(running) {
    if (running) {
      if (!this.#running) this.#views.forEach((view) => mark(view, []));
      this.#running = true;
      return;
    }
    this.#running = false;
    let anotherDevice = false;
    const changed = this.#views.map((view) => {
      const now = content(view.control);
      const same = now.length === view.before.length;
      anotherDevice ||= !same && view.control.kind === 'list';
      const places = now.flatMap((text, at) => (same && text === view.before[at] ? [] : [at]));
      view.before = now;
      return places;
    });
    if (!anotherDevice && changed.every((places) => places.length === 0)) return;
    this.#views.forEach((view, at) => mark(view, anotherDevice ? [] : changed[at]));
  }
}

/** Its lines; of a label its characters. */
function content({ kind, view, record }) {
  return kind === 'list' ? view.texts : [...record.text];
}

function mark(view, places) {
  const { control } = view;
  if (control.kind === 'list') {
    for (const row of control.root.querySelectorAll('.news')) {
      row.classList.remove('news');
      row.removeAttribute('aria-description');
    }
    for (const at of places) {
      const row = control.view.rowElement(at);
      row?.classList.add('news');
      row?.setAttribute('aria-description', 'ha cambiado');
    }
    return;
  }
  const { content } = control.view;
  if (places.length === 0) {
    if (content.childElementCount > 0) content.replaceChildren(control.record.text);
    return;
  }
  content.replaceChildren(...[...control.record.text].map((letter, at) => {
    if (!places.includes(at)) return letter;
    const changed = document.createElement('b');
    changed.className = 'news';
    changed.textContent = letter;
    return changed;
  }));
}
