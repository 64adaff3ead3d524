// How fast the page runs a program with every view live, against the program without a window on the same machine in the
// same run; how many frames it shows meanwhile, and how soon a click is served.
//
//   node bench/page_run.mjs [PAGE.html [BENCH_RUN_HEADLESS]]
//
// Asked for: at least half of the native speed, some 60 frames a second, a click within 16 ms. The machine should have
// nothing else to do. It needs what the page's tests need (tests/web).
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { openChromium, openPage } from '../tests/web/browsers.mjs';
import { control, still } from '../tests/web/states.mjs';

const top = join(dirname(fileURLToPath(import.meta.url)), '..');
const pageFile = process.argv[2] ?? join(top, 'build/release/navegador/estructura.html');
const native = process.argv[3] ?? join(top, 'build/release/bench/bench_run_headless');
const rounds = 5;

// The program `mixed` of bench/programs.cpp, as source.
const source = sourceOfMixed();

function sourceOfMixed() {
  const text = readFileSync(join(top, 'bench/programs.cpp'), 'utf8');
  const body = /mixed_lines = {([^}]*)}/.exec(text)?.[1];
  if (!body) throw new Error('bench/programs.cpp has no program called mixed');
  const lines = [...body.matchAll(/"([^"]+)"/g)].map(([, line]) => `        ${line}`);
  return ['        ORG 7FF', '        GOTO 0', '        ORG 0', ...lines, '        END', ''].join('\n');
}

function nativeStepsPerSecond() {
  const told = JSON.parse(execFileSync(native, ['--benchmark_filter=mixed', '--benchmark_format=json'], { stdio: ['ignore', 'pipe', 'ignore'] }));
  return told.benchmarks[0].items_per_second;
}

/** Runs in the page: yields in a second of a run, frames shown, and how long clicks waited. */
async function measure() {
  const { program } = window.estructura;
  const clicks = [];
  let frames = 0;
  let going = true;
  const frame = () => { ++frames; if (going) requestAnimationFrame(frame); };
  requestAnimationFrame(frame);
  const before = program.call('yields');
  const from = performance.now();
  while (performance.now() - from < 1000) await new Promise((resolve) => setTimeout(resolve, 20));
  const seconds = (performance.now() - from) / 1000;
  const steps = program.call('yields') - before;
  going = false;
  return { perSecond: steps / seconds, frames: frames / seconds, clicks };
}

const browser = await openChromium();
const page = await openPage(browser, pageFile);
await page.evaluate((text) => {
  const area = document.querySelector('[data-name=source] textarea');
  area.value = text;
  area.dispatchEvent(new Event('input'));
}, source);
await page.click(control('Ensamblar'));
await still(page);
if (await page.$('dialog')) throw new Error(await page.$eval('dialog p', (message) => message.textContent));
await page.click(control('por'));
await page.click(control('ejecutar'));

const ratios = [];
const waits = [];
for (let round = 0; round < rounds; ++round) {
  const { perSecond, frames } = await page.evaluate(measure);
  await page.evaluate(() => {
    window.waits = [];
    const label = document.querySelector('[data-name=PA] , [data-name="PA(0)"]');
    label.addEventListener('click', (event) => window.waits.push(performance.now() - event.timeStamp), { capture: true });
  });
  for (let at = 0; at < 20; ++at) await page.click(`${control('PA(0)')} input`);
  waits.push(...await page.evaluate(() => window.waits));
  // With the page at rest, for the native program to have the machine.
  await page.click(control('ejecutar'));
  await still(page);
  const nativePerSecond = nativeStepsPerSecond();
  await page.click(control('ejecutar'));
  ratios.push(perSecond / nativePerSecond);
  console.log(`${(perSecond / 1e6).toFixed(1)} against ${(nativePerSecond / 1e6).toFixed(1)} million steps a second: ` +
    `${(perSecond / nativePerSecond).toFixed(2)}; ${frames.toFixed(0)} frames a second`);
}
await page.click(control('ejecutar'));
await browser.close();
const sorted = (list) => [...list].sort((a, b) => a - b);
console.log(`ratio ${sorted(ratios)[Math.floor(rounds / 2)].toFixed(2)}; a click is served after ` +
  `${sorted(waits)[Math.floor(waits.length * 0.99)].toFixed(1)} ms at the 99th percentile`);
