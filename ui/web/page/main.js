// The page: it starts the program, shows what the record says and tells it what the person does.

import { Program } from './program.js';
import { buildControls } from './controls.js';
import { ChangeMarks } from './changes.js';
import { boxIsOpen } from './dialogs.js';
import { makeHost } from './host.js';
import { PageFiles } from './files.js';
import { listenToKeys } from './keys.js';

const data = (id) => document.getElementById(id).textContent;

function bytesOf(base64) {
  const text = atob(base64);
  const bytes = new Uint8Array(text.length);
  for (let at = 0; at < text.length; ++at) bytes[at] = text.charCodeAt(at);
  return bytes;
}

const program = new Program();
let files;
const compiled = await program.open(createProgram, bytesOf(data('program')), makeHost(program, () => files));
files = new PageFiles(compiled.FS, JSON.parse(data('examples')));
program.call('watch');
const controls = buildControls(JSON.parse(program.ask('inventory')), program, document);
const texts = controls.filter(({ kind }) => kind === 'text');
const marks = new ChangeMarks(controls);
const map = controls.named('mapa').view;
const list = controls.named('MP').view;
const news = document.getElementById('news');
let state = { focus: -1 };

// --- The record on the page ---

function moveFocus(place) {
  const wanted = controls[place]?.field;
  if (wanted ? document.activeElement === wanted : !controls.of(document.activeElement)) return;
  if (wanted) wanted.focus({ preventScroll: true });
  else document.activeElement.blur();
}

program.onChanges = (changes) => {
  state = changes;
  for (const control of controls) control.running = changes.running;
  // An element that is disabled or hidden with the focus on it passes it on as it likes: the focus moves first.
  const focused = controls.of(document.activeElement);
  const late = changes.controls.filter(({ at }) => controls[at] === focused);
  for (const change of changes.controls) if (!late.includes(change)) controls[change.at].apply(change);
  if (!boxIsOpen()) moveFocus(changes.focus);
  for (const change of late) controls[change.at].apply(change);
  if (!boxIsOpen()) moveFocus(changes.focus);
  if (!changes.running) for (const box of texts) box.view.catchUp();
  map.showMap(changes);
  list.showNext(changes.pc);
  marks.look(changes.running);
  if (changes.said) tellNews(changes.said);
  document.body.classList.toggle('running', changes.running);
  if (changes.ended) document.body.classList.add('ended');
};

/** Told by screen readers; the same sentence again is told again. */
function tellNews(sentence) {
  const told = document.createElement('p');
  told.textContent = sentence;
  news.replaceChildren(told);
}

// --- What the person does ---

const textWithFocus = () => {
  const control = controls[state.focus];
  return control?.kind === 'text' ? control.view : null;
};
program.onActionBegins = (name) => {
  if (name !== 'select' && name !== 'type') textWithFocus()?.sync();
};
document.addEventListener('selectionchange', () => {
  const box = textWithFocus();
  if (box && box.field === document.activeElement && !program.copying) box.sync();
});

document.addEventListener('focusin', (event) => {
  const control = controls.of(event.target);
  if (!control || program.copying || control.place === state.focus) return;
  program.act('focus', control.which, control.index);
});
// What takes no focus takes it from nobody either.
document.addEventListener('mousedown', (event) => {
  if (!event.target.closest('button, input, select, textarea, label, [tabindex], a, dialog, .selectable'))
    event.preventDefault();
});

window.addEventListener('beforeunload', (event) => {
  if (state.unsaved && !state.ended) event.preventDefault();
});

for (const name of ['dragover', 'drop']) document.addEventListener(name, (event) => {
  if (event.dataTransfer.types.includes('Files')) event.preventDefault();
});
document.addEventListener('drop', async (event) => {
  const [file] = event.dataTransfer.files;
  const button = { hex: 'cargar', asm: 'cargarasm' }[file?.name.toLowerCase().split('.').at(-1)];
  if (!button || program.isModal) return;
  files.drop(file.name, new Uint8Array(await file.arrayBuffer()));
  program.act('click', controls.named(button).which, 0);
});

document.getElementById('again').addEventListener('click', () => location.reload());

listenToKeys(controls, program);
program.act('start');
document.body.classList.add('ready');
// What tests may ask of the program behind the page.
window.estructura = { program, controls, files, state: () => state };
