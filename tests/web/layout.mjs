// On each size of screen, in both palettes and in several states, nothing of the page is cut or lies upon something else,
// on touch screens everything that is pressed is large enough for a finger, and lines of lists are high enough for an unsteady
// mouse wherever there is room.
//
//   node layout.mjs PAGE.html
import { openChromium, openPage } from './browsers.mjs';
import { states } from './states.mjs';

const sizes = [
  { name: 'telephone', width: 360, height: 740, touch: true, scale: 2 },
  { name: 'tablet', width: 820, height: 1180, touch: true, scale: 2 },
  { name: 'laptop', width: 1366, height: 768, whole: true },
  { name: 'desktop', width: 1920, height: 1080, whole: true, pressable: 24 },
  // 1366 by 768 at 200 %.
  { name: 'laptop at 200 %', width: 683, height: 384, pressable: 24 },
];
const judged = ['program', 'small', 'listing', 'error', 'box', 'open', 'save', 'ended'];

/** Runs in the page: what is wrong with it, one line each. */
function problems({ touch, whole, pressable }) {
  const found = [];
  const least = 44;
  const seen = (element) => {
    const { visibility, display } = getComputedStyle(element);
    return visibility === 'visible' && display !== 'none' && element.getClientRects().length > 0;
  };
  const nameOf = (element) => element.dataset.name ?? element.dataset.answer ?? (element.id || element.textContent.slice(0, 20));
  const page = document.scrollingElement;
  if (page.scrollWidth > innerWidth) found.push(`the page is ${page.scrollWidth} wide, the screen ${innerWidth}`);
  if (whole && page.scrollHeight > innerHeight) found.push(`the page is ${page.scrollHeight} high, the screen ${innerHeight}`);

  const dialog = document.querySelector('dialog[open]');
  const ended = document.body.classList.contains('ended');
  const leaves = dialog ? [...dialog.querySelectorAll('button, input:not([hidden]), select, p, h2')]
    : ended ? [...document.querySelectorAll('.over > *')]
      : [...document.querySelectorAll('[data-name]:not([role=group]), h2, .faint')];
  const shown = leaves.filter(seen);
  if (shown.length < 2) found.push('there is nothing to judge');

  for (const element of shown) {
    const scrolls = element.matches('textarea, .source, [role=listbox], input, select') || element.closest('.source');
    const shortened = element.matches('.file');
    if (!scrolls && !shortened && (element.scrollWidth > element.clientWidth + 1) && getComputedStyle(element).display !== 'inline')
      found.push(`${nameOf(element)} is cut: ${element.scrollWidth} in ${element.clientWidth}`);
    const box = element.getBoundingClientRect();
    for (let outer = element.parentElement; outer && outer !== document.body; outer = outer.parentElement) {
      const { overflowX, overflowY } = getComputedStyle(outer);
      const room = outer.getBoundingClientRect();
      if (overflowX !== 'visible' && (box.left < room.left - 1 || box.right > room.right + 1) && overflowX !== 'auto')
        found.push(`${nameOf(element)} reaches out of ${outer.className}`);
      if (overflowY !== 'visible' && box.bottom > room.bottom + 1 && overflowY !== 'auto')
        found.push(`${nameOf(element)} reaches below ${outer.className}`);
    }
    if (box.left < -0.5 || box.right > innerWidth + 0.5) found.push(`${nameOf(element)} lies beside the screen`);
  }

  // What is fixed to the screen lies upon what scrolls beneath it.
  const fixed = (element) => getComputedStyle(element.closest('.run') ?? element).position === 'fixed';
  const boxes = shown.filter((element) => !fixed(element)).map((element) => [element, element.getBoundingClientRect()]);
  boxes.forEach(([one, a], at) => {
    for (const [other, b] of boxes.slice(at + 1)) {
      if (one.contains(other) || other.contains(one)) continue;
      const across = Math.min(a.right, b.right) - Math.max(a.left, b.left);
      const down = Math.min(a.bottom, b.bottom) - Math.max(a.top, b.top);
      if (across > 1 && down > 1) found.push(`${nameOf(one)} and ${nameOf(other)} overlap by ${across} x ${down}`);
    }
  });

  if (!dialog && !ended) {
    scrollTo(0, page.scrollHeight);
    const run = document.querySelector('.run').getBoundingClientRect();
    const last = document.querySelector('.offline').getBoundingClientRect();
    if (run.bottom > innerHeight + 1 || run.top < 0) found.push('the buttons that run are out of sight');
    if (Math.min(last.bottom, run.bottom) - Math.max(last.top, run.top) > 1 && last.right > run.left && last.left < run.right)
      found.push('the end of the page lies beneath the buttons that run');
    scrollTo(0, 0);
  }
  if (touch) {
    const pressed = [...document.querySelectorAll('button, .mark, select, .entry, [role=listbox]:not([tabindex="-1"]) [role=option]:first-child, canvas')]
      .filter((element) => seen(element) && (!dialog || dialog.contains(element)));
    for (const element of pressed) {
      const { width, height } = element.getBoundingClientRect();
      const thin = element.matches('canvas') ? width < least - 12 : width < least - 0.5;
      if (thin || height < least - 0.5)
        found.push(`${nameOf(element.closest('[role=listbox]') ?? element)} is too small for a finger: ${width} x ${height}`);
    }
  }
  for (const row of pressable && !dialog && !ended ? document.querySelectorAll('[role=option]:first-child') : []) {
    const { height } = row.getBoundingClientRect();
    if (seen(row) && height < pressable) found.push(`a line of ${nameOf(row.closest('[role=listbox]'))} is ${height} high`);
  }
  return found;
}

const browser = await openChromium();
let wrong = 0;
let looked = 0;
for (const size of sizes) {
  for (const state of judged) {
    const page = await openPage(browser, process.argv[2], size);
    await states[state](page);
    for (const dark of [false, true]) {
      await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: dark ? 'dark' : 'light' }]);
      const found = [...new Set(await page.evaluate(problems, size)), ...page.problems.splice(0)];
      ++looked;
      wrong += found.length;
      for (const problem of found) console.error(`${size.name}, ${state}${dark ? ', dark' : ''}: ${problem}`);
    }
    await page.close();
  }
}
await browser.close();
console.log(`${looked} pages looked at, ${wrong} faults`);
process.exit(wrong === 0 ? 0 : 1);
