// The boxes that wait for an answer: messages and questions, and what the file dialog (files.js) is made of.
//
//   await askBox({ kind: 'yesno', text: '¿Desea borrar la memoria de programa?' })    -> 'yes'
//   const dialog = newDialog('dialog', 'Cargar fichero');
//   await open(dialog, '');                                          what the dialog answers, '' for the way out

const captions = { yes: '&Sí', no: '&No', cancel: 'Cancelar', ok: 'Aceptar' };
const answersOf = {
  ok: ['ok'], 'ok-right': ['ok'], fault: ['ok'], yesno: ['yes', 'no'], yesnocancel: ['yes', 'no', 'cancel'],
};

import { accelerator, putCaption } from './captions.js';

/** Asked in each frame of a run: the document is not searched for it. */
const opened = new Set();
export const boxIsOpen = () => opened.size > 0;

/** Opens a dialog, and resolves with what closed it. Without a way out the Escape key does nothing. */
export function open(dialog, way_out) {
  return new Promise((resolve) => {
    dialog.answer = (value) => {
      dialog.close();
      dialog.remove();
      opened.delete(dialog);
      resolve(value);
    };
    dialog.addEventListener('cancel', (event) => {
      event.preventDefault();
      if (way_out !== undefined) dialog.answer(way_out);
    });
    // Some browsers close it on a second Escape, whatever was said to the first.
    dialog.addEventListener('keydown', (event) => {
      if (event.key !== 'Escape') return;
      event.preventDefault();
      if (way_out !== undefined) dialog.answer(way_out);
    });
    dialog.addEventListener('keydown', (event) => pressAnswer(dialog, event));
    document.body.append(dialog);
    dialog.showModal();
    opened.add(dialog);
  });
}

function pressAnswer(dialog, event) {
  if (event.ctrlKey || event.metaKey || event.target.matches('input, select')) return;
  const wanted = [...dialog.querySelectorAll('button')].find((button) => button.dataset.key === event.key.toLowerCase());
  if (!wanted) return;
  event.preventDefault();
  wanted.click();
}

export function newDialog(role, title) {
  const dialog = document.createElement('dialog');
  dialog.setAttribute('role', role);
  const heading = document.createElement('h2');
  heading.id = 'dialog-title';
  heading.textContent = title;
  dialog.setAttribute('aria-labelledby', heading.id);
  dialog.append(heading);
  return dialog;
}

export function newButton(caption, act) {
  const button = document.createElement('button');
  button.type = 'button';
  putCaption(button, caption);
  const key = accelerator(caption);
  if (key) button.dataset.key = key;
  button.addEventListener('click', act);
  return button;
}

export function askBox({ kind, text }) {
  const dialog = newDialog('alertdialog', 'Estructura');
  dialog.dataset.kind = kind;
  dialog.classList.add('box');
  const message = document.createElement('p');
  message.id = 'dialog-text';
  // Lines are divided by a carriage return.
  message.textContent = text.replaceAll('\r', '\n');
  dialog.setAttribute('aria-describedby', message.id);
  const buttons = document.createElement('div');
  buttons.className = 'answers';
  for (const answer of answersOf[kind]) {
    const button = newButton(captions[answer], () => dialog.answer(answer));
    button.dataset.answer = answer;
    buttons.append(button);
  }
  buttons.firstChild.autofocus = true;
  dialog.append(message, buttons);
  return open(dialog, { ok: 'ok', 'ok-right': 'ok', fault: 'ok', yesnocancel: 'cancel' }[kind]);
}
