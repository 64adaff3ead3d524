// The program behind the page: its actions, the order in which those that wait go on, and the copying of what they
// changed.
//
//   const program = new Program();
//   await program.open(createProgram, wasm, host);
//   program.onChanges = (changes) => { ... };
//   program.act('click', which, index);
//
// An action may wait for the person (a box) or give the thread back for a moment (a run). Those that wait end in the
// reverse order of their beginning, as calls within calls do. While a box is open nothing else is done; a run that
// waits below another action goes on when that one has ended.

/** What only the person ends, and what the browser ends by itself; meanwhile nothing else is done. */
const asked = new Set(['box', 'dialog']);
const modal = new Set([...asked, 'hand-over', 'clipboard']);

export class Program {
  onChanges = () => {};
  onActionBegins = () => {};
  copying = false;
  /** Actions begun and not ended, with what they wait for, the innermost last. */
  waiting = [];
  actions = 0;

  #program = null;
  #listeners = [];
  #frame = 0;
  #sleeper = null;

  async open(createProgram, wasm, host) {
    this.#program = await createProgram({
      wasmBinary: wasm,
      noInitialRun: true,
      page: {
        wait: (kind, start, wake) => this.#wait(kind, start, wake),
        actionDone: () => { --this.actions; },
        ...host,
        turn: (reason) => this.#turn(reason),
      },
    });
    return this.#program;
  }

  get files() { return this.#program.FS; }
  get isModal() { return modal.has(this.waiting.at(-1)?.kind); }

  /** One action of the person. Dropped while the record is being copied: the elements change, and nobody did it. */
  act(name, ...parameters) {
    if (this.copying || this.isModal) return;
    this.onActionBegins(name);
    this.#call(name, ...parameters);
    this.#sleeper?.();
    this.update();
  }

  /** The same, with a list of numbers behind the parameters. */
  actWithNumbers(name, numbers, ...parameters) {
    const place = this.#program._malloc(4 * numbers.length + 4);
    numbers.forEach((number, at) => this.#program.HEAP32.set([number], (place >> 2) + at));
    this.act(name, ...parameters, place, numbers.length);
    this.#program._free(place);
  }

  /** The same, with a text; `size` says whether its size goes with it. */
  actWithText(name, which, text, ...more) {
    const size = this.#program.lengthBytesUTF8(text);
    const place = this.#program._malloc(size + 1);
    this.#program.stringToUTF8(text, place, size + 1);
    this.act(name, which, place, ...(name === 'type' ? [size, ...more] : more));
    this.#program._free(place);
  }

  /** A question to the program that changes nothing: the text that it answers. */
  ask(name, ...parameters) {
    return this.#program.UTF8ToString(this.#program[`_estructura_${name}`](...parameters));
  }
  askWithText(name, text) {
    const size = this.#program.lengthBytesUTF8(text);
    const place = this.#program._malloc(size + 1);
    this.#program.stringToUTF8(text, place, size + 1);
    const answer = this.ask(name, place, size);
    this.#program._free(place);
    return answer;
  }
  call(name, ...parameters) { return this.#program[`_estructura_${name}`](...parameters); }
  get memory() { return this.#program.HEAPU8; }

  /** Brings the page up to date with the record. */
  update() {
    if (this.copying || this.isModal) return;
    const before = this.actions;
    this.#call('bring_up_to_date');
    if (this.actions === before) this.copy();
    this.#tell();
  }

  /** Copies what changed, as the record stands. */
  copy() {
    const changes = JSON.parse(this.ask('changes'));
    this.copying = true;
    try {
      this.onChanges(changes);
    } finally {
      this.copying = false;
    }
    if (changes.running && this.#frame === 0) this.#frame = requestAnimationFrame(() => this.#nextFrame());
  }

  /** Resolves when nothing goes on, or what goes on waits for the person or for a test. */
  async still() {
    for (;;) {
      const kind = this.waiting.at(-1)?.kind;
      if (this.actions === 0 || asked.has(kind) || kind === 'paused') return kind ?? 'idle';
      await new Promise((resolve) => this.#listeners.push(resolve));
    }
  }

  #call(name, ...parameters) {
    ++this.actions;
    this.#program[`_estructura_${name}`](...parameters);
  }

  #nextFrame() {
    this.#frame = 0;
    this.update();
  }

  #wait(kind, start, wake) {
    const entry = { kind, wake, done: false, value: 0 };
    this.waiting.push(entry);
    // The action's calls return first.
    Promise.resolve().then(start).then((value) => {
      entry.done = true;
      entry.value = value;
      this.#goOn();
    });
    this.#tell();
  }

  #goOn() {
    let went = false;
    while (this.waiting.at(-1)?.done) {
      const { wake, value, kind } = this.waiting.pop();
      wake(value);
      went ||= kind !== 'turn';
    }
    if (went || this.actions === 0) this.update();
    this.#tell();
  }

  #tell() {
    for (const listener of this.#listeners.splice(0)) listener();
  }

  // --- The turns of a run ---

  #turn(reason) {
    const [forEvents, sleeping] = [0, 1];
    if (reason === forEvents) return new Promise((resolve) => nextTask(resolve));
    if (reason === sleeping) return this.#nap();
    return new Promise((resolve) => { this.resume = resolve; });
  }

  /** While the chip sleeps nobody but the person can change it. */
  #nap() {
    const nap_ms = 50;
    return new Promise((resolve) => {
      const timer = setTimeout(() => { this.#sleeper = null; resolve(0); }, nap_ms);
      this.#sleeper = () => { this.#sleeper = null; clearTimeout(timer); resolve(0); };
    });
  }
}

const channel = new MessageChannel();
const tasks = [];
channel.port1.onmessage = () => tasks.shift()(0);

/** After the events that are pending; a timer would be held back by 4 ms. */
function nextTask(task) {
  tasks.push(task);
  channel.port2.postMessage(0);
}
