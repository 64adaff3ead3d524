// What the page does beyond what guiones say: keys, undoing, files of the disk by picker and by dropping, leaving with
// unsaved work, keeping alive during a run, and that nothing leaves it.
//
//   node page.mjs PAGE.html
import assert from 'node:assert/strict';
import { mkdtempSync, readFileSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { addressOf, openChromium, openPage } from './browsers.mjs';
import { control, load, press, step, still } from './states.mjs';

const file = process.argv[2];
const scratch = mkdtempSync(join(tmpdir(), 'page-'));
const browser = await openChromium();
const source = `${control('source')} textarea`;

const text = (page, name) => page.$eval(control(name), (element) => element.textContent);
const value = (page, selector) => page.$eval(selector, (element) => element.value);
async function chord(page, ...keys) {
  for (const key of keys.slice(0, -1)) await page.keyboard.down(key);
  await page.keyboard.press(keys.at(-1));
  for (const key of keys.slice(0, -1).reverse()) await page.keyboard.up(key);
  await still(page);
}

const tests = {
  async function_keys_step_run_and_set_breakpoints(page) {
    await load(page, 'tabla.hex');
    await page.keyboard.press('F7');
    await page.keyboard.press('F8');
    await still(page);
    assert.equal(await text(page, 'ciclos'), '4');
    await page.keyboard.press('F9');
    await still(page);
    assert.match(await page.$eval(`${control('MP')} .next`, (row) => row.textContent), /^\*.*punto de parada/);
    await page.keyboard.press('F9');
    await page.keyboard.press('F5');
    await page.waitForFunction(() => document.querySelector('[data-name=ejecutar]').textContent === 'Parar');
    await page.keyboard.press('F5');
    await still(page);
    assert.equal(await text(page, 'ejecutar'), 'Ejecutar');
    await chord(page, 'Control', 'Digit0');
    assert.equal(await text(page, 'ciclos'), '0');
  },

  async the_line_of_the_next_instruction_is_in_sight_from_the_start(page) {
    const seen = await page.evaluate(() => {
      const list = document.querySelector('[data-name=MP]').getBoundingClientRect();
      const row = document.querySelector('[data-name=MP] .next').getBoundingClientRect();
      return row.top >= list.top && row.bottom <= list.bottom + 1;
    });
    assert.ok(seen);
  },

  async alt_and_the_underlined_letter_press_a_button(page) {
    await page.focus(source);
    await chord(page, 'Alt', 'Digit1');
    assert.equal(await page.evaluate(() => document.activeElement.dataset.name), 'eje1');
    await chord(page, 'Alt', 'KeyA');
    assert.equal(await page.$eval('dialog h2', (title) => title.textContent), 'Cargar fichero');
    await page.keyboard.press('Escape');
    await still(page);
    assert.equal(await page.$('dialog'), null);
  },

  async a_list_is_walked_and_chosen_from_by_keys(page) {
    await page.focus(control('RE'));
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('ArrowDown');
    await still(page);
    assert.equal(await text(page, 'dirdat'), '');
    await page.keyboard.press('Enter');
    await still(page);
    assert.equal(await text(page, 'dirdat'), 'W');
    assert.equal(await page.evaluate(() => document.activeElement.dataset.name), 'dat');
    await page.keyboard.type('1F');
    await page.keyboard.press('Enter');
    await still(page);
    assert.equal(await page.$eval(`${control('RE')} [role=option]:nth-child(2) span`, (value) => value.textContent), ' 1F');
    assert.ok(await page.$(`${control('RE')} .news:nth-child(2)`), 'what was entered is marked as changed');
  },

  async what_a_step_changed_is_told_and_lines_say_what_they_are(page) {
    await load(page, 'tabla.hex');
    assert.equal(await page.$eval('#news', (news) => news.getAttribute('aria-live')), 'polite');
    await step(page, 1);
    const told = await page.$eval('#news', (news) => news.textContent);
    assert.match(told, /^PC 00B, sigue MOVLW 00\.$/);
    assert.equal(await page.$eval(`${control('MD(1)')} [role=option]:nth-child(3)`, (row) => row.ariaLabel),
      'dirección 12, banco 1, valor 00');
  },

  async keys_do_not_change_the_device_behind_a_closed_list(page) {
    await page.focus(control('PIC'));
    await page.keyboard.press('KeyC');
    await page.keyboard.press('1');
    assert.equal(await value(page, control('PIC')), '16C57');
  },

  async undoing_survives_the_editing_buttons(page) {
    await page.focus(source);
    await page.keyboard.type('NOP');
    await press(page, control('tab'));
    await page.keyboard.type('X');
    await still(page);
    assert.equal(await value(page, source), `NOP${' '.repeat(15)}X`);
    await chord(page, 'Control', 'KeyZ');
    assert.equal(await value(page, source), `NOP${' '.repeat(15)}`);
    await chord(page, 'Control', 'KeyZ');
    assert.equal(await value(page, source), 'NOP');
    await chord(page, 'Control', 'KeyZ');
    assert.equal(await value(page, source), '');
    await chord(page, 'Control', 'KeyY');
    await chord(page, 'Control', 'Shift', 'KeyZ');
    assert.equal(await value(page, source), `NOP${' '.repeat(15)}`);
  },

  async another_document_begins_a_history_of_its_own(page) {
    await load(page, 'tabla.asm');
    const loaded = await value(page, source);
    await page.focus(source);
    await chord(page, 'Control', 'KeyZ');
    assert.equal(await value(page, source), loaded);
    assert.ok(loaded.startsWith('; tabla.asm'));
  },

  async the_source_is_drawn_in_colours_with_its_numbers(page) {
    await page.focus(source);
    await page.keyboard.sendCharacter('BUCLE: MOVLW 0F ; cuenta');
    await still(page);
    const parts = await page.$$eval('.drawn span[class]', (spans) => spans.map((span) => [span.className, span.textContent]));
    assert.deepEqual(parts, [['label', 'BUCLE:'], ['mnemonic', 'MOVLW'], ['number', '0F'], ['comment', '; cuenta']]);
    assert.deepEqual(await page.$$eval('.numbers div', (numbers) => numbers.map((number) => number.textContent)), ['1']);
  },

  async what_is_read_as_something_else_is_underlined_and_says_so(page) {
    await page.focus(source);
    await page.keyboard.sendCharacter('X EQU 0x10');
    await still(page);
    assert.deepEqual(await page.$$eval('.odd', (spans) => spans.map((span) => span.textContent)), ['0x10']);
    const place = await page.$eval('.odd', (span) => {
      const box = span.getBoundingClientRect();
      return [box.left + box.width / 2, box.top + box.height / 2];
    });
    await page.mouse.move(...place);
    await still(page);
    assert.match(await page.$eval(source, (field) => field.title), /se lee como 0\.$/);
    await page.mouse.move(place[0] + 100, place[1]);
    await still(page);
    assert.equal(await page.$eval(source, (field) => field.title), '');
  },

  async what_is_read_as_something_else_is_told_of_the_line_with_the_caret(page) {
    const told = `${control('source')} [role=status]`;
    const becomes = (wanted) => page.waitForFunction((where, pattern) =>
      new RegExp(pattern).test(document.querySelector(where).textContent), {}, told, wanted);
    await page.focus(source);
    await page.keyboard.sendCharacter('X EQU 0x10\nY EQU 10');
    await becomes('^$');
    await page.keyboard.press('ArrowUp');
    await becomes('^EQU .*se lee como 0\\.$');
    await page.keyboard.press('ArrowDown');
    await becomes('^$');
    await page.keyboard.press('ArrowUp');
    await becomes('se lee como 0');
    await page.focus(control('direc'));
    await becomes('^$');
    await page.focus(source);
    await becomes('se lee como 0');
  },

  async a_file_of_the_disk_is_picked(page) {
    const path = join(scratch, 'Uno.HEX');
    writeFileSync(path, ':0203FE00000AF3\n:00000001FF\n');
    await press(page, control('cargar'));
    const chooser = page.waitForFileChooser();
    await page.click('dialog [data-answer=disk]');
    await (await chooser).accept([path]);
    await page.waitForFunction(() => document.querySelector('[data-name=FILHEX]').textContent === 'uno.hex');
    await still(page);
    assert.equal(await page.$eval(`${control('MP')} .block:nth-child(8) > :nth-child(64) .spoken`, (row) => row.textContent),
      'dirección 1FF, código A00, GOTO 000');
  },

  async a_file_is_dropped_on_the_page(page) {
    const path = join(scratch, 'dos.asm');
    writeFileSync(path, '        NOP\r\n        END\r\n');
    const protocol = await page.createCDPSession();
    const data = { items: [], files: [path], dragOperationsMask: 1 };
    for (const type of ['dragEnter', 'dragOver', 'drop'])
      await protocol.send('Input.dispatchDragEvent', { type, x: 500, y: 300, data });
    await page.waitForFunction(() => document.querySelector('[data-name=FILASM]').textContent === 'dos.asm');
    assert.equal(await value(page, source), '        NOP\n        END');
  },

  async what_is_saved_is_downloaded_whole(page) {
    const protocol = await browser.target().createCDPSession();
    await protocol.send('Browser.setDownloadBehavior', { behavior: 'allow', downloadPath: scratch, eventsEnabled: true });
    const done = new Promise((resolve) => protocol.on('Browser.downloadProgress', ({ state }) => state === 'completed' && resolve()));
    await load(page, 'tabla.hex');
    await press(page, control('salvar'));
    assert.equal(await value(page, '#file-name'), 'ejemplos/tabla.hex');
    await page.click('#file-name', { count: 3 });
    await page.keyboard.type('salvado');
    await press(page, 'dialog [data-answer=ok]');
    await done;
    assert.match(readFileSync(join(scratch, 'salvado.hex'), 'latin1'), /^:10[^]*\r\n:00000001FF\r\n$/);
    assert.equal(await text(page, 'FILHEX'), 'salvado.hex');
  },

  async the_system_dialog_saves_where_there_is_one() {
    const before = () => {
      window.saved = [];
      window.showSaveFilePicker = async ({ suggestedName, types }) => {
        window.saved.push(suggestedName, JSON.stringify(types));
        return { name: 'Mio.ASM', createWritable: async () => ({
          write: async (bytes) => { window.saved.push(new TextDecoder().decode(bytes)); },
          close: async () => { window.saved.push('closed'); },
        }) };
      };
    };
    const page = await openPage(browser, file, { before });
    await page.focus(source);
    await page.keyboard.type('NOP');
    await press(page, control('salvarasm'));
    await page.waitForFunction(() => document.querySelector('[data-name=FILASM]').textContent === 'mio.asm');
    assert.deepEqual(await page.evaluate(() => window.saved), ['programa.asm',
      '[{"description":"Archivos de ensamblador (*.asm)","accept":{"text/plain":[".asm"]}}]', 'NOP\r\n', 'closed']);
    await page.close();
  },

  async a_file_that_cannot_be_handed_over_is_told_of() {
    const before = () => {
      window.showSaveFilePicker = async () => ({ name: 'a.hex', createWritable: async () => { throw new Error('full'); } });
    };
    const page = await openPage(browser, file, { before });
    await press(page, control('salvar'));
    await page.waitForSelector('dialog p');
    assert.equal(await page.$eval('dialog p', (message) => message.textContent), 'Error en escritura');
    await page.close();
  },

  async leaving_with_unsaved_work_asks(page) {
    const asked = [];
    page.removeAllListeners('dialog');
    page.on('dialog', (dialog) => { asked.push(dialog.type()); dialog.accept(); });
    await page.focus(source);
    await page.goto(addressOf(file));
    assert.deepEqual(asked, [], 'nothing is unsaved yet');
    await page.waitForFunction(() => window.estructura !== undefined);
    await page.click(source);
    await page.keyboard.type('NOP');
    await still(page);
    await page.goto('about:blank');
    assert.deepEqual(asked, ['beforeunload']);
  },

  async a_question_is_not_answered_by_the_escape_key(page) {
    await load(page, 'tabla.hex');
    await press(page, control('cargar'));
    assert.equal(await page.$eval('dialog', (dialog) => dialog.dataset.kind), 'yesno');
    await page.keyboard.press('Escape');
    await page.keyboard.press('Escape');
    await still(page);
    assert.ok(await page.$('dialog[open]'));
  },

  async a_run_goes_on_below_a_box_and_is_stopped_after_it(page) {
    await load(page, 'tabla.hex');
    await page.focus(source);
    await page.keyboard.type('NOP');
    await page.keyboard.press('F5');
    await page.waitForFunction(() => document.querySelector('[data-name=ejecutar]').textContent === 'Parar');
    await page.click(control('cargarasm'));
    await page.waitForSelector('dialog[open]');
    const stands = await text(page, 'ciclos');
    await page.evaluate(() => new Promise((resolve) => { requestAnimationFrame(() => requestAnimationFrame(resolve)); }));
    assert.equal(await text(page, 'ciclos'), stands, 'a run waits for the box');
    await page.click('dialog [data-answer=cancel]');
    await page.waitForFunction((before) => document.querySelector('[data-name=ciclos]').textContent !== before, {}, stands);
    await page.click(control('ejecutar'));
    await still(page);
    assert.equal(await text(page, 'ejecutar'), 'Ejecutar');
  },

  async nothing_leaves_the_page(page) {
    const asked = [];
    page.on('request', (request) => asked.push(request.url()));
    await page.setOfflineMode(true);
    await page.reload();
    await page.waitForFunction(() => window.estructura !== undefined);
    await load(page, 'bancos.asm');
    await press(page, control('Ensamblar'));
    await step(page, 5);
    assert.deepEqual(asked.filter((address) => !/^(file|data|blob):/.test(address)), []);
    const refused = await page.evaluate(async () => {
      const tries = [() => fetch('https://example.org/'), () => import('https://example.org/a.js'),
        () => new Promise((ok, fail) => Object.assign(new Image(), { onload: ok, onerror: fail, src: 'https://example.org/a.png' })),
        () => {
          document.head.append(Object.assign(document.createElement('script'), { textContent: 'window.ran = true;' }));
          if (!window.ran) throw new Error('refused');
        }];
      return Promise.all(tries.map((one) => Promise.resolve().then(one).then(() => 'allowed', () => 'refused')));
    });
    page.problems.length = 0;
    assert.deepEqual(refused, ['refused', 'refused', 'refused', 'refused']);
  },

  async a_finished_program_begins_anew(page) {
    await press(page, control('fin'));
    assert.ok(await page.$eval('.over', (over) => getComputedStyle(over).display !== 'none'));
    await page.click('#again');
    await page.waitForFunction(() => window.estructura !== undefined && !document.body.classList.contains('ended'));
  },
};

let failed = 0;
for (const [name, test] of Object.entries(tests)) {
  const page = test.length > 0 ? await openPage(browser, file) : null;
  try {
    await test(page);
    assert.deepEqual(page?.problems ?? [], []);
    console.log(`ok      ${name}`);
  } catch (problem) {
    ++failed;
    console.error(`FAILED  ${name}\n${problem.stack}`);
  }
  await page?.close();
}
await browser.close();
rmSync(scratch, { recursive: true, force: true });
console.log(`${Object.keys(tests).length - failed} passed, ${failed} failed`);
process.exit(failed === 0 ? 0 : 1);
