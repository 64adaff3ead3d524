// Lists: rows of text in columns, one or several of them selected. The selection is the record's: what the person
// chooses goes through the program and comes back from there.
//
//   const list = new List(control, program);
//   list.show({ rows: [' 000\tC05\tMOVLW 05'], row: 0, selected: [0], face: false }, true);
//
// In a list of one selection the arrow keys only walk, and Space or Enter is the click, since a click may take the
// focus away at once. In the program list they select, with Shift several; Enter is the double-click there.

/** Rows that are laid out together, with nothing around them; and not at all while none of them is in sight. */
const block_rows = 64;

const row_keys = { ArrowUp: -1, ArrowDown: 1, PageUp: -10, PageDown: 10, Home: -Infinity, End: Infinity };

export class List {
  #control;
  #program;
  #several;
  #rows = [];
  #texts = [];
  #next = null;
  #shownCursor = null;
  #current = -1;
  #selected = new Set();
  #cursor = -1;
  #anchor = 0;
  #top = 0;
  #height = 0;
  #rowHeight = 0;
  /** Not quite that of its rows, which are no whole pixels high. */
  #blockHeight = 0;
  /** The line that is to be brought into sight once the list has a size. */
  #unseen = -1;

  constructor(control, program) {
    this.#control = control;
    this.#program = program;
    this.#several = control.name === 'MP';
    const root = document.createElement('div');
    root.className = 'list';
    root.tabIndex = control.skipped ? -1 : 0;
    root.setAttribute('role', 'listbox');
    if (this.#several) root.setAttribute('aria-multiselectable', 'true');
    // Asked for anew in each frame of a run, these would have the page laid out anew each time.
    root.addEventListener('scroll', () => { this.#top = root.scrollTop; }, { passive: true });
    new ResizeObserver(() => this.#measure()).observe(root);
    root.addEventListener('click', (event) => this.#clicked(event));
    root.addEventListener('keydown', (event) => this.#pressed(event));
    this.root = root;
    this.field = root;
  }

  show(record) {
    if (record.rows) this.#putRows(record.rows);
    if (record.rows && record.spoken) this.#say(record.spoken);
    this.root.classList.toggle('face', record.face);
    // It may have been scrolled, and not yet told.
    if (this.#several && !record.running) this.#top = this.root.scrollTop;
    const chosen = new Set(record.selected);
    for (const row of this.#selected) if (!chosen.has(row)) this.#mark(row, false);
    for (const row of chosen) if (!this.#selected.has(row)) this.#mark(row, true);
    this.#selected = chosen;
    const moved = this.#current !== record.row || record.rows;
    this.#current = record.row;
    if (this.#several || record.row >= 0 || document.activeElement !== this.root) this.#cursor = record.row;
    if (record.row >= 0 && this.#several && (moved || record.chosen)) this.#bringIntoSight(record.row, record.byPerson);
    this.#showCursor();
  }

  /** The line of the instruction that is executed next. */
  showNext(row) {
    const next = this.#rows[row] ?? null;
    if (this.#next === next) return;
    this.#next?.classList.remove('next');
    next?.classList.add('next');
    this.#next = next;
  }

  get texts() { return this.#texts; }
  rowElement(row) { return this.#rows[row]; }

  #putRows(texts) {
    if (texts.length !== this.#rows.length) this.#newRows(texts);
    texts.forEach((text, at) => {
      if (this.#texts[at] === text) return;
      putCells(this.#rows[at], text.split('\t'));
      if (this.#several) this.#rows[at].classList.toggle('stop', text.startsWith('*'));
    });
    this.#texts = texts;
    if (this.#several && this.#rowHeight === 0) this.#measure();
  }

  #newRows(texts) {
    this.#rows = texts.map((_, at) => this.#newRow(at));
    this.#texts = [];
    this.#selected = new Set();
    this.#cursor = -1;
    this.#next = null;
    this.#shownCursor = null;
    this.#rowHeight = 0;
    // The stylesheet makes its size of these, so that a changed line moves nothing else.
    this.root.style.setProperty('--chars', Math.max(0, ...texts.map((text) => text.length)));
    this.root.replaceChildren(...blocksOf(this.#rows));
  }

  /** What is read aloud of each line, in place of what is shown, where it is more than that. */
  #say(texts) {
    texts.forEach((text, at) => {
      const row = this.#rows[at];
      if (!row || text === '') return;
      // A name must hold what is shown as it stands, for those who say it to the machine. A line of the program does
      // not, and has the text itself, out of sight.
      if (this.#several) putSpoken(row, text);
      else if (row.getAttribute('aria-label') !== text) row.setAttribute('aria-label', text);
    });
  }

  #newRow(at) {
    const row = document.createElement('div');
    row.id = `${this.#control.id}-${at}`;
    row.setAttribute('role', 'option');
    row.setAttribute('aria-selected', 'false');
    return row;
  }

  #mark(row, selected) {
    this.#rows[row]?.setAttribute('aria-selected', String(selected));
  }

  #showCursor() {
    const row = this.#rows[this.#cursor] ?? null;
    if (this.#shownCursor === row) return;
    this.#shownCursor?.classList.remove('cursor');
    row?.classList.add('cursor');
    this.#shownCursor = row;
    if (row) this.root.setAttribute('aria-activedescendant', row.id);
    else this.root.removeAttribute('aria-activedescendant');
  }

  #measure() {
    const bottom = this.#top + this.#height;
    const wasSeen = this.#several && this.#current >= 0 && this.#bottomOf(this.#current) <= bottom;
    this.#height = this.root.clientHeight;
    this.#rowHeight = this.#rows[0]?.getBoundingClientRect().height ?? 0;
    this.#blockHeight = this.#rows[0]?.parentElement.getBoundingClientRect().height ?? 0;
    if (this.#unseen >= 0) this.#bringIntoSight(this.#unseen, false);
    // A list that has become lower keeps the chosen line in sight.
    else if (wasSeen && this.#topOf(this.#current) >= this.#top) this.#bringIntoSight(this.#current, true);
  }

  #topOf(row) { return Math.floor(row / block_rows) * this.#blockHeight + row % block_rows * this.#rowHeight; }
  #bottomOf(row) { return this.#topOf(row) + this.#rowHeight; }

  /** A line that the program chooses out of sight comes to the middle, with what stands around it. */
  #bringIntoSight(at, nearest) {
    const [row, height] = [this.#rowHeight, this.#height];
    this.#unseen = row === 0 || height === 0 ? at : -1;
    if (this.#unseen >= 0) return;
    const [from, to] = [this.#topOf(at), this.#bottomOf(at)];
    if (from >= this.#top && to <= this.#top + height) return;
    const isNear = to > this.#top - row && from < this.#top + height + row;
    const edge = from < this.#top ? from : to - height;
    this.#top = Math.min(Math.max(0, nearest && isNear ? edge : from - height / 2), this.#topOf(this.#rows.length) - height);
    this.root.scrollTop = this.#top;
  }

  #rowOf(event) {
    const row = event.target.closest('[role=option]');
    return row ? this.#rows.indexOf(row) : -1;
  }

  #clicked(event) {
    const row = this.#rowOf(event);
    if (row < 0) return;
    if (this.#several && event.detail === 2 && !event.ctrlKey && !event.shiftKey) {
      this.#program.act('dblclick_row', this.#control.which, this.#control.index, row);
      return;
    }
    this.#cursor = row;
    if (this.#several && event.shiftKey) return this.#choose(row, this.#range(row));
    this.#anchor = row;
    if (!this.#several || !(event.ctrlKey || event.metaKey)) return this.#choose(row, [row]);
    // Turned over; the others stay.
    const selected = new Set(this.#selected);
    if (!selected.delete(row)) selected.add(row);
    this.#choose(row, [...selected]);
  }

  #range(to) {
    const [first, last] = [Math.min(this.#anchor, to), Math.max(this.#anchor, to)];
    return Array.from({ length: last - first + 1 }, (_, at) => first + at);
  }

  #choose(current, selected) {
    this.#control.byPerson = true;
    this.#program.actWithNumbers('choose_rows', selected, this.#control.which, this.#control.index, current);
    this.#control.byPerson = false;
  }

  #pressed(event) {
    if (event.altKey || event.metaKey) return;
    if (event.ctrlKey && event.key !== 'Home' && event.key !== 'End') return;
    if (event.key in row_keys) {
      event.preventDefault();
      this.#walk(row_keys[event.key], event.shiftKey);
    } else if (event.key === 'Enter' || event.key === ' ') {
      event.preventDefault();
      this.#pressedOnRow(event.key);
    }
  }

  #walk(by, extend) {
    const last = this.#rows.length - 1;
    if (last < 0) return;
    const from = this.#cursor >= 0 ? this.#cursor : this.#current;
    const to = from < 0 ? (by === Infinity ? last : 0) : Math.min(Math.max(from + by, 0), last);
    this.#cursor = to;
    if (!this.#several) {
      this.#showCursor();
      return;
    }
    if (!extend) this.#anchor = to;
    this.#choose(to, extend ? this.#range(to) : [to]);
  }

  #pressedOnRow(key) {
    if (this.#cursor < 0) return;
    if (this.#several && key === 'Enter')
      this.#program.act('dblclick_row', this.#control.which, this.#control.index, this.#cursor);
    else
      this.#choose(this.#cursor, [this.#cursor]);
  }
}

function blocksOf(rows) {
  const blocks = [];
  for (let from = 0; from < rows.length; from += block_rows) {
    const block = document.createElement('div');
    block.className = 'block';
    block.setAttribute('role', 'presentation');
    block.append(...rows.slice(from, from + block_rows));
    block.style.setProperty('--rows', block.childElementCount);
    blocks.push(block);
  }
  return blocks;
}

/** Texts are changed in place: another element would be laid out anew, with all around it. */
function putCells(row, parts) {
  const cells = row.getElementsByTagName('span');
  if (cells.length !== parts.length)
    row.replaceChildren(...parts.map(() => {
      const cell = document.createElement('span');
      cell.append('');
      return cell;
    }));
  parts.forEach((part, at) => {
    const text = cells[at].firstChild;
    if (text.data !== part) text.data = part;
  });
}

function putSpoken(row, text) {
  if (row.lastChild.className === 'spoken') {
    row.lastChild.textContent = text;
    return;
  }
  for (const cell of row.children) cell.setAttribute('aria-hidden', 'true');
  const spoken = document.createElement('i');
  spoken.className = 'spoken';
  spoken.textContent = text;
  row.append(spoken);
}
