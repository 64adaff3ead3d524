// What the driver looks at, from within the page: elements, as a person finds them. Put into each page before it starts.
//
//   look.read('INS')        -> ['MOVLW 5', 'Instrucción en ensamblador', 'true', ...]
//   look.place('eje1')      -> [683, 412]: where to press
window.look = (() => {
  const root = (name) => {
    const found = document.querySelector(`[data-name="${CSS.escape(name)}"]`);
    if (!found) throw new Error(`there is no element of ${name}`);
    return found;
  };
  /** What takes the focus and is pressed. */
  const field = (name) => {
    const whole = root(name);
    return whole.matches('label, .source') ? whole.querySelector('input, textarea') : whole;
  };
  const withMark = (element) =>
    [...element.childNodes].map((node) => (node.nodeName === 'U' ? '&' : '') + node.textContent).join('');
  const recorded = (text) => text.replaceAll('\n', '\r\n');
  const chars = (text) => [...text].reduce((count, letter) => count + (letter === '\n' ? 2 : 1), 0);
  const unit = (text, char) => {
    let [at, count] = [0, 0];
    for (const letter of text) {
      count += letter === '\n' ? 2 : 1;
      if (count > char) break;
      at += letter.length;
    }
    return at;
  };

  const rowsIn = (element) => [...element.querySelectorAll('[role=option]')];

  function textOf(name) {
    const element = field(name);
    if (element.matches('textarea, input[type=text]')) return recorded(element.value);
    if (element.matches('select')) return element.value;
    if (element.matches('button')) return withMark(element.querySelector('span'));
    if (element.matches('input')) return withMark(element.nextElementSibling);
    if (element.matches('[role=group]')) return element.querySelector(':scope > h2').textContent;
    return element.matches('[role=listbox], canvas') ? '' : element.textContent;
  }

  function rowsOf(element) {
    if (element.matches('select')) return [...element.options].map((option) => option.text);
    if (!element.matches('[role=listbox]')) return [];
    return rowsIn(element).map((row) => [...row.querySelectorAll(':scope > span')].map((cell) => cell.textContent).join('\t'));
  }

  function currentRow(element) {
    const current = element.getAttribute('aria-activedescendant');
    return current ? rowsIn(element).findIndex((row) => row.id === current) : -1;
  }

  function selectionOf(element) {
    if (!element.matches('textarea, input[type=text]')) return [0, 0];
    const { value, selectionStart, selectionEnd } = element;
    return [chars(value.slice(0, selectionStart)), chars(value.slice(selectionStart, selectionEnd))];
  }

  /** What lies at a point has to be the element that is to be pressed there. */
  function pointOn(element, x, y) {
    const there = document.elementFromPoint(x, y);
    if (there !== element && !element.contains(there) && !there?.closest('label')?.contains(element))
      throw new Error(`${element.dataset.name ?? element.textContent} is covered by ${there?.outerHTML.slice(0, 80)}`);
    return [x, y];
  }
  function middle(element) {
    element.scrollIntoView({ block: 'nearest', inline: 'nearest' });
    let box = element.getBoundingClientRect();
    const hidden = box.bottom > innerHeight || box.top < 0;
    if (hidden) {
      element.scrollIntoView({ block: 'center' });
      box = element.getBoundingClientRect();
    }
    return pointOn(element, box.left + box.width / 2, box.top + box.height / 2);
  }

  return {
    update() { window.estructura.program.update(); },
    read(name) {
      this.update();
      const [whole, element] = [root(name), field(name)];
      const rows = element.matches('[role=listbox]') ? rowsIn(element) : [];
      const selected = rows.flatMap((row, at) => (row.getAttribute('aria-selected') === 'true' ? [at] : []));
      return [textOf(name), recorded(whole.title), !element.disabled, !whole.classList.contains('gone'),
        element.checked === true, currentRow(element), selected.join(' '), element.classList.contains('face'),
        ...selectionOf(element), ...rowsOf(element)].map(String);
    },
    usable(name) {
      this.update();
      const element = field(name);
      return !element.disabled && getComputedStyle(element).visibility === 'visible';
    },
    place(name) { this.update(); return middle(field(name)); },
    placeOfRow(name, row) { this.update(); return middle(rowsIn(root(name))[row]); },
    /** A point at a character of a text in letters of one width. */
    placeOfCharacter(name, char) {
      this.update();
      const element = field(name);
      const at = unit(element.value, char);
      const before = element.value.slice(0, at).split('\n');
      let column = 0;
      for (const letter of before.at(-1)) column += letter === '\t' ? 8 - column % 8 : 1;
      const style = getComputedStyle(element);
      const paper = document.createElement('canvas').getContext('2d');
      paper.font = style.font;
      const width = paper.measureText('0'.repeat(100)).width / 100;
      const height = parseFloat(style.lineHeight);
      element.scrollIntoView({ block: 'nearest' });
      element.scrollTop = (before.length - 1) * height - element.clientHeight / 2;
      element.scrollLeft = column * width - element.clientWidth / 2;
      const box = element.getBoundingClientRect();
      return pointOn(element,
        box.left + element.clientLeft + parseFloat(style.paddingLeft) + column * width - element.scrollLeft,
        box.top + element.clientTop + parseFloat(style.paddingTop) + (before.length - 0.5) * height - element.scrollTop);
    },
    placeOnMap(y) {
      this.update();
      const canvas = root('mapa');
      canvas.scrollIntoView({ block: 'nearest' });
      const box = canvas.getBoundingClientRect();
      const { scale } = window.estructura.controls.named('mapa').view;
      return [box.left + box.width / 2, box.top + y * box.height / scale];
    },
    focus(name) { this.update(); field(name).focus(); },
    value(name) { return field(name).value; },
    readOnly(name) { return field(name).readOnly === true; },
    select(name, start, length) {
      const element = field(name);
      element.focus();
      const end = unit(element.value, start + length);
      element.setSelectionRange(unit(element.value, start), end, 'backward');
    },
    focused() {
      this.update();
      return document.activeElement?.closest('[data-name]:not([role=group])')?.dataset.name ?? '';
    },
    ended: () => document.body.classList.contains('ended'),
    map() {
      this.update();
      const { scale, marker, words } = window.estructura.controls.named('mapa').view;
      return [scale, marker, words].map(String);
    },
    /** When nothing goes on any more, or what goes on waits for somebody: what that is, and what it shows. */
    async still() {
      // Events that the browser owes come first.
      await new Promise((resolve) => setTimeout(resolve));
      const { program } = window.estructura;
      const kind = await program.still();
      const dialog = document.querySelector('dialog[open]');
      const shown = kind === 'box' ? [dialog.dataset.kind, dialog.querySelector('p').textContent.replaceAll('\n', '\r')]
        : kind === 'dialog' ? ['save', 'filter', 'extension', 'proposed'].map((part) => dialog.dataset[part]) : [];
      return [kind, program.actions, program.call('yields'), window.beeps, ...shown].map(String);
    },
  };
})();
// A beep is only heard: whoever starts a tone is counted.
window.beeps = 0;
window.downloads = 0;
{
  const { start } = OscillatorNode.prototype;
  OscillatorNode.prototype.start = function (...when) { ++window.beeps; return start.apply(this, when); };
  const { click } = HTMLAnchorElement.prototype;
  HTMLAnchorElement.prototype.click = function () { if (this.download) ++window.downloads; return click.call(this); };
}
