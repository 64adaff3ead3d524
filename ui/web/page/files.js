// Files. The program reads and writes them in memory, in a folder of the page: there lie the examples and what the
// person has opened or saved since. A file of the disk comes in through the browser's picker or by being dropped; one
// that was written goes out through the browser's own dialog for saving where there is one, and as a download
// elsewhere. Nothing goes anywhere else.
//
//   const files = new PageFiles(program.FS, examples);
//   await files.choose({ save: false, filter: 'Archivos (*.hex)|*.hex', extension: 'hex', proposed: '' })
//   await files.handOver('Uno.hex', 'uno.hex')

import { newButton, newDialog, open } from './dialogs.js';

const folder = '/archivos';
const nameOf = (path) => path.replace(/.*[\\/]/, '');

export class PageFiles {
  #fs;
  #handles = new Map();
  #dropped = null;

  constructor(fs, examples) {
    this.#fs = fs;
    fs.mkdir(folder);
    fs.mkdir(`${folder}/ejemplos`);
    fs.chdir(folder);
    for (const [name, text] of Object.entries(examples)) fs.writeFile(`ejemplos/${name}`, text);
  }

  /** A file of the person's; the next choice of a file to open is this one. */
  drop(name, bytes) {
    this.put(name, bytes);
    this.#dropped = name;
  }
  put(name, bytes) {
    this.#fs.writeFile(name, bytes);
  }

  /** The path chosen, empty for none. */
  async choose(what) {
    const dropped = this.#dropped;
    this.#dropped = null;
    if (!what.save && dropped) return dropped;
    if (what.save && window.showSaveFilePicker) return this.#chooseWithPicker(what);
    return this.#chooseInPage(what);
  }

  async #chooseWithPicker({ filter, extension, proposed }) {
    try {
      const handle = await window.showSaveFilePicker({
        suggestedName: nameOf(proposed) || `programa.${extension}`,
        types: [{ description: filter.split('|')[0], accept: { 'text/plain': [`.${extension}`] } }],
      });
      this.#handles.set(handle.name, handle);
      // Whether a file is replaced the browser has asked already.
      if (this.#fs.analyzePath(handle.name).exists) this.#fs.unlink(handle.name);
      return handle.name;
    } catch (problem) {
      if (problem.name === 'AbortError') return '';
      return this.#chooseInPage({ save: true, filter, extension, proposed });
    }
  }

  /** Gives a file that was written to the person who chose a path for it; whether that went well. */
  async handOver(chosen, written) {
    const handle = this.#handles.get(chosen);
    this.#handles.delete(chosen);
    // Longer names no disk takes.
    const most_bytes = 255;
    if (new TextEncoder().encode(nameOf(written)).length > most_bytes) return false;
    try {
      const bytes = this.#fs.readFile(written);
      if (handle) {
        const stream = await handle.createWritable();
        await stream.write(bytes);
        await stream.close();
      } else {
        download(nameOf(written), bytes);
      }
      return true;
    } catch {
      return false;
    }
  }

  // --- The dialog of the page ---

  #list(pattern) {
    const fits = (name) => pattern === '*.*' || name.toLowerCase().endsWith(pattern.slice(1));
    const within = (path) => this.#fs.readdir(path)
      .filter((name) => !name.startsWith('.') && !this.#fs.isDir(this.#fs.stat(`${path}/${name}`).mode) && fits(name));
    return [...within('.').sort(), ...within('ejemplos').map((name) => `ejemplos/${name}`).sort()];
  }

  #chooseInPage({ save, filter, extension, proposed }) {
    const dialog = newDialog('dialog', save ? 'Salvar fichero' : 'Cargar fichero');
    dialog.classList.add('files');
    Object.assign(dialog.dataset, { save, filter, extension, proposed });
    const name = labelled('Nombre', document.createElement('input'), 'file-name');
    name.field.value = save ? proposed : '';
    name.field.spellcheck = false;
    name.field.autocomplete = 'off';
    const accept = () => {
      const path = name.field.value.trim();
      if (path === '') return;
      const whole = nameOf(path).includes('.') || this.#fs.analyzePath(path).exists;
      dialog.answer(whole ? path : `${path}.${extension}`);
    };
    name.field.addEventListener('keydown', (event) => { if (event.key === 'Enter') accept(); });
    dialog.append(...(save ? this.#savePart(name) : this.#openPart(name, filter, extension, dialog, accept)));
    const buttons = document.createElement('div');
    buttons.className = 'answers';
    const ok = newButton(save ? 'Salvar' : 'Cargar', accept);
    ok.dataset.answer = 'ok';
    const cancel = newButton('Cancelar', () => dialog.answer(''));
    cancel.dataset.answer = 'cancel';
    buttons.append(ok, cancel);
    dialog.append(buttons);
    return open(dialog, '');
  }

  #savePart(name) {
    const note = document.createElement('p');
    note.textContent = 'El navegador lo guarda en su carpeta de descargas, o pregunta dónde.';
    name.field.autofocus = true;
    return [name.label, note];
  }

  #openPart(name, filter, extension, dialog, accept) {
    const parts = filter.split('|');
    const patterns = parts.flatMap((part, at) => (at % 2 === 0 ? [[part, parts[at + 1]]] : []));
    const kinds = labelled('Tipo', document.createElement('select'), 'file-kind');
    kinds.field.append(...patterns.map(([text, pattern]) => new Option(text, pattern)));
    const list = labelled('Ficheros de la página', document.createElement('select'), 'file-list');
    list.field.size = 10;
    const fill = () => list.field.replaceChildren(...this.#list(kinds.field.value).map((path) => new Option(path, path)));
    kinds.field.addEventListener('change', fill);
    fill();
    list.field.addEventListener('change', () => { name.field.value = list.field.value; });
    list.field.addEventListener('dblclick', accept);
    list.field.addEventListener('keydown', (event) => { if (event.key === 'Enter') accept(); });
    const disk = this.#diskButton(dialog, kinds.field);
    return [disk, list.label, kinds.label, name.label];
  }

  #diskButton(dialog, kinds) {
    const picker = document.createElement('input');
    picker.type = 'file';
    picker.hidden = true;
    picker.addEventListener('change', async () => {
      const [file] = picker.files;
      if (!file) return;
      this.put(file.name, new Uint8Array(await file.arrayBuffer()));
      dialog.answer(file.name);
    });
    const button = newButton('Elegir un fichero del disco…', () => {
      picker.accept = kinds.value === '*.*' ? '' : kinds.value.slice(1);
      picker.click();
    });
    button.dataset.answer = 'disk';
    button.autofocus = true;
    const row = document.createElement('div');
    row.append(button, picker);
    return row;
  }
}

function labelled(text, field, id) {
  const label = document.createElement('label');
  label.className = 'labelled';
  const caption = document.createElement('span');
  caption.textContent = text;
  field.id = id;
  label.append(caption, field);
  return { label, field };
}

function download(name, bytes) {
  const link = document.createElement('a');
  const address = URL.createObjectURL(new Blob([bytes], { type: 'application/octet-stream' }));
  Object.assign(link, { href: address, download: name });
  link.click();
  const after_the_click_ms = 10000;
  setTimeout(() => URL.revokeObjectURL(address), after_the_click_ms);
}
