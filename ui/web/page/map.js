// The map of program memory: its left half by address, yellow where there is a word and blue where there is a
// breakpoint; in its right half the marker. A press goes to the address at that height.
//
//   const map = new ProgramMap(control, program);
//   map.showMap({ scale: 2050, words: '0011200', marker: -1 });

const [word, stop] = ['1', '2'];
const ground = '#2c2e32';
/** What a breakpoint or the marker measures at least, in pixels of the page. */
const thick = 3;

export class ProgramMap {
  scale = 0;
  words = '';
  marker = -1;
  /** Kept: asked for in each frame it would have the page laid out anew. */
  #size = [0, 0];
  /** The picture without the marker, which moves in each frame of a run; null: to be painted anew. */
  #sheet = null;

  constructor(control, program) {
    const canvas = document.createElement('canvas');
    canvas.className = 'map';
    canvas.setAttribute('role', 'img');
    canvas.addEventListener('pointerdown', (event) => {
      if (event.button !== 0) return;
      const box = canvas.getBoundingClientRect();
      program.act('press_map', (event.clientY - box.top) * this.scale / box.height);
    });
    new ResizeObserver(() => {
      this.#size = [canvas.clientWidth, canvas.clientHeight];
      this.#sheet = null;
      this.#paint();
    }).observe(canvas);
    this.root = canvas;
    this.field = canvas;
  }

  show() {}

  showMap({ scale, words, marker }) {
    if (words === undefined && marker === this.marker) return;
    this.scale = scale ?? this.scale;
    this.words = words ?? this.words;
    this.marker = marker;
    if (words !== undefined) this.#sheet = null;
    this.#paint();
  }

  #paint() {
    const canvas = this.root;
    const pixel = window.devicePixelRatio;
    const [width, height] = this.#size.map((side) => Math.round(side * pixel));
    if (width === 0 || height === 0 || this.scale === 0) return;
    if (canvas.width !== width || canvas.height !== height) Object.assign(canvas, { width, height });
    this.#sheet ??= this.#newSheet(width, height, pixel);
    const paper = canvas.getContext('2d');
    paper.drawImage(this.#sheet, 0, 0);
    if (this.marker >= 0) this.#paintMarker(paper, width, height, pixel);
  }

  #newSheet(width, height, pixel) {
    const sheet = Object.assign(document.createElement('canvas'), { width, height });
    const paper = sheet.getContext('2d');
    paper.fillStyle = ground;
    paper.fillRect(0, 0, width, height);
    this.#paintWords(paper, width / 2, height, pixel);
    return sheet;
  }

  #paintWords(paper, half, height, pixel) {
    const rows = [...this.words.slice(0, this.scale)];
    const bar = (address) => {
      const from = Math.floor(address * height / this.scale);
      return [from, Math.max(from + 1, Math.floor((address + 1) * height / this.scale))];
    };
    paper.fillStyle = '#ff0';
    rows.forEach((what, address) => {
      if (what !== word) return;
      const [from, to] = bar(address);
      paper.fillRect(0, from, half, to - from);
    });
    // Breakpoints are thick, with a light edge that covers no word, and cover the words.
    const stops = rows.flatMap((what, address) => {
      if (what !== stop) return [];
      const [from, to] = bar(address);
      const more = Math.max(0, Math.round(thick * pixel) - (to - from));
      return [[from - Math.floor(more / 2), to + Math.ceil(more / 2)]];
    });
    paper.fillStyle = '#fff';
    for (const [from, to] of stops) paper.fillRect(0, from - pixel, half, to - from + 2 * pixel);
    paper.fillStyle = '#00f';
    for (const [from, to] of stops) paper.fillRect(0, from, half, to - from);
  }

  #paintMarker(paper, width, height, pixel) {
    const size = width / 4;
    const bar = Math.max(thick * pixel, height / this.scale);
    const top = Math.min(this.marker * height / this.scale, height - bar);
    const middle = Math.min(Math.max(top + bar / 2, size), height - size);
    paper.fillStyle = '#f00';
    paper.fillRect(width / 2, top, width / 2, bar);
    paper.beginPath();
    paper.moveTo(width - size, top + bar / 2);
    paper.lineTo(width, middle - size);
    paper.lineTo(width, middle + size);
    paper.fill();
  }
}
