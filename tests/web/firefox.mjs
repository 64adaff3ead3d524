// Firefox opens the page, runs an example and saves: what the other browser is tried with at length, once in this one.
//
//   node firefox.mjs PAGE.html
import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, readdirSync, rmSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import puppeteer from 'puppeteer-core';
import { addressOf } from './browsers.mjs';
import { control, load, press, step, still } from './states.mjs';

const scratch = mkdtempSync(join(tmpdir(), 'page-'));
const browser = await puppeteer.launch({
  browser: 'firefox',
  executablePath: process.env.FIREFOX ?? '/usr/bin/firefox-esr',
  headless: true,
  extraPrefsFirefox: {
    'browser.download.folderList': 2,
    'browser.download.dir': scratch,
    'browser.download.useDownloadDir': true,
    'browser.download.always_ask_before_handling_new_types': false,
  },
});
const page = await browser.newPage();
await page.setViewport({ width: 1366, height: 900 });
const problems = [];
page.on('pageerror', (problem) => problems.push(String(problem)));
await page.goto(addressOf(process.argv[2]));
await page.waitForFunction(() => window.estructura !== undefined);
const text = (name) => page.$eval(control(name), (element) => element.textContent);

await load(page, 'tabla.asm');
await press(page, control('Ensamblar'));
await step(page, 4);
assert.equal(await text('ciclos'), '6');
await page.keyboard.press('F5');
await page.waitForFunction(() => Number(document.querySelector('[data-name=ciclos]').textContent.replaceAll('.', '')) > 10000);
await page.keyboard.press('F5');
await still(page);
assert.equal(await text('ejecutar'), 'Ejecutar');

await page.focus(`${control('source')} textarea`);
await page.keyboard.down('Control');
await page.keyboard.press('Home');
await page.keyboard.up('Control');
await page.keyboard.type('X');
await press(page, control('tab'));
await page.keyboard.down('Control');
await page.keyboard.press('z');
await page.keyboard.up('Control');
await still(page);
assert.match(await page.$eval(`${control('source')} textarea`, (source) => source.value), /^X; tabla/);

await press(page, control('salvar'));
await page.click('#file-name', { count: 3 });
await page.keyboard.type('mio.hex');
await press(page, 'dialog [data-answer=ok]');
while (!readdirSync(scratch).includes('mio.hex')) await new Promise((resolve) => setTimeout(resolve, 50));
assert.match(readFileSync(join(scratch, 'mio.hex'), 'latin1'), /^:10[^]*\r\n:00000001FF\r\n$/);
assert.equal(await text('FILHEX'), 'mio.hex');
assert.deepEqual(problems, []);

await browser.close();
rmSync(scratch, { recursive: true, force: true });
console.log('Firefox opens the page, runs an example, undoes and saves');
