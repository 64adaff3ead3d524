// The browser behind `guion --navegador`: takes one request after another on its standard input, does what a person
// would do in the page, and answers on its standard output. A message is the number of its fields on a line, then each
// field as its size in bytes on a line and its bytes.
//
//   node driver.mjs PAGE.html
//
// Presses and keys go to the browser from outside, as those of a person do; nothing of the page is called to act, but
// for what the script prepares (the machine, files of the folder), the pause of a run after a counted yield, and the
// window's own close request, which a tab cannot make.
import { mkdtempSync, readFileSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { addressOf, chromiumArguments, openChromium, openPage } from './browsers.mjs';

const file = process.argv[2];
const inPage = readFileSync(join(dirname(fileURLToPath(import.meta.url)), 'in_page.js'), 'utf8');
const downloads = mkdtempSync(join(tmpdir(), 'guion-downloads-'));
let browser;
let page;
let protocol;
let finished = [];

const look = (name, ...parameters) =>
  page.evaluate((called, given) => window.look[called](...given), name, parameters);
const program = (name, ...parameters) =>
  page.evaluate((called, given) => window.estructura.program[called](...given), name, parameters);

async function start() {
  // One process for all tabs of the page: see open().
  browser = await openChromium({ args: [...chromiumArguments, '--process-per-site'] });
  protocol = await browser.target().createCDPSession();
  await protocol.send('Browser.grantPermissions', { permissions: ['clipboardReadWrite', 'clipboardSanitizedWrite'] });
  await protocol.send('Browser.setDownloadBehavior', { behavior: 'allowAndName', downloadPath: downloads, eventsEnabled: true });
  protocol.on('Browser.downloadProgress', ({ state, guid }) => {
    if (state === 'completed') finished.push(join(downloads, guid));
  });
}

/**
 * The page for one script, loaded anew in the tab of the script before. A second tab holds the page open and is never
 * touched: what the browser has compiled for it serves each load.
 */
async function open() {
  if (page) {
    page.problems.length = 0;
    await page.goto(addressOf(file));
    await page.waitForFunction(() => window.estructura !== undefined, { polling: 10 });
  } else {
    await openPage(browser, file);
    page = await openPage(browser, file, { before: inPage });
  }
  finished = [];
  await setClipboard('');
}

async function setClipboard(text) {
  await page.evaluate((copied) => navigator.clipboard.writeText(copied), text);
}

const press = (place, how) => page.mouse.click(...place, how);

async function type(name, text) {
  const typed = text.replaceAll('\r\n', '\n');
  await look('focus', name);
  if (await look('readOnly', name) || await look('value', name) === typed) return;
  await page.keyboard.down('Control');
  await page.keyboard.press('KeyA');
  await page.keyboard.up('Control');
  if (typed === '') return page.keyboard.press('Delete');
  if (!typed.includes('\n')) return page.keyboard.sendCharacter(typed);
  // Several lines are pasted: into a box of one line nothing else brings a line end.
  const kept = await page.evaluate(() => navigator.clipboard.readText());
  await setClipboard(typed);
  await page.keyboard.down('Control');
  await page.keyboard.press('KeyV');
  await page.keyboard.up('Control');
  await setClipboard(kept);
}

/**
 * A row of the map is thinner than a pixel: the pointer stands between two of them, as on a finer screen. Half between
 * two rows it stands on the side to which halves are rounded.
 */
async function pressMap(y) {
  const below = Math.floor(y);
  const half = y - below === 0.5;
  const aside = below % 2 === 0 ? -0.05 : 0.05;
  await press(await look('placeOnMap', half ? y + aside : y));
}

async function pick(name, entry) {
  await press(await look('place', name));
  const keys = ['Home', ...Array(entry).fill('ArrowDown'), 'Enter'];
  await Promise.all(keys.map((key) => page.keyboard.press(key)));
}

async function choose(path) {
  if (path === '') return press(await placeIn('dialog [data-answer=cancel]'));
  await page.focus('#file-name');
  await page.keyboard.down('Control');
  await page.keyboard.press('KeyA');
  await page.keyboard.up('Control');
  await page.keyboard.sendCharacter(path);
  await press(await placeIn('dialog [data-answer=ok]'));
}

const placeIn = (selector) => page.$eval(selector, (element) => {
  const box = element.getBoundingClientRect();
  return [box.left + box.width / 2, box.top + box.height / 2];
});

/** What a person does; each is followed by what became of it. */
const actions = {
  click: async (name) => press(await look('place', name)),
  click_text: async (name, caret) => press(await look('placeOfCharacter', name, Number(caret))),
  keyup_text: async (name, caret) => {
    await look('select', name, Number(caret), 0);
    await page.keyboard.up('ArrowRight');
  },
  dblclick: async (name) => press(await look('place', name), { count: 2 }),
  click_row: async (name, row, control) => {
    if (control) await page.keyboard.down('Control');
    await press(await look('placeOfRow', name, Number(row)));
    if (control) await page.keyboard.up('Control');
  },
  dblclick_row: async (name, row) => press(await look('placeOfRow', name, Number(row)), { count: 2 }),
  pick: (name, entry) => pick(name, Number(entry)),
  type,
  select: (name, start, length) => look('select', name, Number(start), Number(length)),
  enter: async (name) => {
    await look('focus', name);
    await page.keyboard.press('Enter');
  },
  focus: (name) => look('focus', name),
  press_map: (y) => pressMap(Number(y)),
  close: () => program('act', 'close'),
  refresh: () => program('act', 'refresh'),
  answer: async (answer) => press(await placeIn(`dialog [data-answer=${answer}]`)),
  choose,
  resume: () => page.evaluate(() => window.estructura.program.resume(0)),
};

/** Nothing takes so long, unless it has no end. */
async function soon(promise, problem) {
  const long_ms = 120000;
  let timer;
  const late = new Promise((_, reject) => { timer = setTimeout(() => reject(new Error(problem)), long_ms); });
  return Promise.race([promise, late]).finally(() => clearTimeout(timer));
}

async function act(name, [pause, ...parameters]) {
  // The browser takes them in this order; nobody has to wait for the first to ask for the second.
  await Promise.all([program('call', 'pause_after', Number(pause)), actions[name](...parameters)]);
  const told = await soon(look('still'), 'the page does not come to rest');
  if (page.problems.length > 0) throw new Error(page.problems.splice(0).join('\n'));
  return told;
}

async function takeDownloads() {
  const begun = await page.evaluate(() => window.downloads);
  const done = () => finished.length >= begun;
  while (!done()) await new Promise((resolve) => protocol.once('Browser.downloadProgress', resolve));
  await page.evaluate(() => { window.downloads = 0; });
  return finished.splice(0);
}

const lookers = {
  ready: async () => [],
  open: async () => { await open(); return []; },
  look: (name) => look('read', name),
  usable: async (name) => [String(await look('usable', name))],
  look_map: () => look('map'),
  focused: async () => [await look('focused')],
  ended: async () => [String(await look('ended'))],
  clipboard: async () => [(await page.evaluate(() => navigator.clipboard.readText())).replace(/\r\n|\r|\n/g, '\r\n')],
  set_clipboard: async (text) => { await setClipboard(text); return []; },
  documents: async () => (await program('ask', 'documents')).split('\n'),
  machine: async () => [Buffer.from(await page.evaluate(() => {
    const { program: behind } = window.estructura;
    const at = behind.call('machine');
    return btoa(String.fromCharCode(...behind.memory.slice(at, at + behind.call('machine_size'))));
  }), 'base64')],
  set_machine: async (bytes) => {
    await page.evaluate((text) => {
      const { program: behind } = window.estructura;
      behind.memory.set(Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0)), behind.call('machine'));
    }, bytes.toString('base64'));
    return [];
  },
  mirror: async (...files) => {
    await page.evaluate((list) => {
      const FS = window.estructura.program.files;
      // The devices of the machine that a script names.
      for (const name of ['zero', 'full'])
        if (!FS.analyzePath(`/dev/${name}`).exists) FS.createDevice('/dev', name, () => 0, () => {});
      for (const [path, text] of list) {
        if (!path.endsWith('/')) FS.writeFile(path, Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0)));
        else if (!FS.analyzePath(path).exists) FS.mkdir(path.slice(0, -1));
      }
    }, files.flatMap((path, at) => (at % 2 === 0 ? [[path.toString(), files[at + 1].toString('base64')]] : [])));
    return [];
  },
  downloads: takeDownloads,
};
const with_bytes = new Set(['set_machine', 'mirror']);

// --- Messages ---

let received = Buffer.alloc(0);
let wake = () => {};
process.stdin.on('data', (part) => { received = Buffer.concat([received, part]); wake(); });
process.stdin.on('end', async () => {
  await browser?.close();
  rmSync(downloads, { recursive: true, force: true });
  process.exit(0);
});

async function readBytes(enough) {
  for (let size = enough(); ; size = enough()) {
    if (size >= 0 && received.length >= size) {
      const part = received.subarray(0, size);
      received = received.subarray(size);
      return part;
    }
    await new Promise((resolve) => { wake = resolve; });
  }
}
const readNumber = async () => Number((await readBytes(() => received.indexOf(10) + 1 || -1)).toString());

async function readMessage() {
  const fields = [];
  for (let left = await readNumber(); left > 0; --left) {
    const size = await readNumber();
    fields.push(Buffer.from(await readBytes(() => size)));
  }
  return fields;
}

function writeMessage(fields) {
  const parts = fields.map((field) => Buffer.from(field));
  process.stdout.write(Buffer.concat([Buffer.from(`${parts.length}\n`),
    ...parts.flatMap((part) => [Buffer.from(`${part.length}\n`), part])]));
}

await start();
for (;;) {
  const [name, ...fields] = await readMessage();
  const verb = name.toString();
  try {
    const given = with_bytes.has(verb) ? fields : fields.map(String);
    writeMessage(['ok', ...(verb in actions ? await act(verb, given) : await lookers[verb](...given))]);
  } catch (problem) {
    writeMessage(['error', String(problem.message)]);
  }
}
