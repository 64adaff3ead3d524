// The states in which the page is judged and pictured: how a person comes to each.
//
//   await states.program(page);      // an example, some steps, its marks of change
import { readFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const examples = join(dirname(fileURLToPath(import.meta.url)), '../../ejemplos');

export const control = (name) => `[data-name="${name}"]`;

export async function still(page) {
  await page.evaluate(async () => {
    await new Promise((resolve) => setTimeout(resolve));
    await window.estructura.program.still();
    await new Promise((resolve) => requestAnimationFrame(() => requestAnimationFrame(resolve)));
  });
}

/** A press on a button, wherever the page has been scrolled to. */
export async function press(page, selector) {
  await page.$eval(selector, (element) => element.scrollIntoView({ block: 'center' }));
  await page.click(selector);
  await still(page);
}

export async function pickDevice(page, name) {
  await page.select(control('PIC'), name);
  await still(page);
}

/** A file of the examples, chosen in the page's own dialog. */
export async function load(page, name) {
  await press(page, control(name.endsWith('.hex') ? 'cargar' : 'cargarasm'));
  await page.select('#file-list', `ejemplos/${name}`);
  await press(page, 'dialog [data-answer=ok]');
}

export async function step(page, times) {
  for (let at = 0; at < times; ++at) await page.keyboard.press('F8');
  await still(page);
}

export const states = {
  start: async () => {},
  program: async (page) => {
    await load(page, 'bancos.asm');
    await press(page, control('Ensamblar'));
    await page.focus(control('direc'));
    await page.keyboard.type('00B');
    await press(page, control('break'));
    await step(page, 60);
  },
  listing: async (page) => {
    await pickDevice(page, '16C54');
    await load(page, 'parpadeo.asm');
    await press(page, control('Ensamblar'));
    await press(page, `${control('sl(1)')} input`);
  },
  error: async (page) => {
    await pickDevice(page, '16C54');
    await page.focus(`${control('source')} textarea`);
    await page.keyboard.sendCharacter(readFileSync(join(examples, 'parpadeo.asm'), 'utf8').replace('MOVWF', 'MOVFW'));
    await press(page, control('Ensamblar'));
    await press(page, 'dialog [data-answer=ok]');
  },
  box: async (page) => {
    await pickDevice(page, '16C54');
    await page.focus(`${control('source')} textarea`);
    await page.keyboard.sendCharacter('NOP');
    await press(page, control('cargarasm'));
  },
  open: async (page) => {
    await pickDevice(page, '16C54');
    await press(page, control('cargar'));
  },
  save: async (page) => {
    await pickDevice(page, '16C54');
    await press(page, control('salvar'));
  },
  small: async (page) => {
    await pickDevice(page, '12C508');
    await load(page, 'despertar.asm');
    await press(page, control('Ensamblar'));
    await step(page, 12);
  },
  editing: async (page) => {
    await pickDevice(page, '16C54');
    await press(page, `${control('RE')} [role=option]:nth-child(2)`);
    await page.keyboard.type('5');
  },
  running: async (page) => {
    await pickDevice(page, '16C54');
    await load(page, 'parpadeo.hex');
    await page.keyboard.press('F5');
    await page.evaluate(() => new Promise((resolve) => setTimeout(resolve, 100)));
  },
  ended: async (page) => press(page, control('fin')),
};
