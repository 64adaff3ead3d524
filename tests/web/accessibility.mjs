// In every state of the page, in both palettes, axe finds nothing; and what a screen reader is told of each control, as
// the browser works it out, is the name that the program has for it.
//
//   node accessibility.mjs PAGE.html
import { createRequire } from 'node:module';
import { readFileSync } from 'node:fs';
import { openChromium, openPage } from './browsers.mjs';
import { states } from './states.mjs';

const axe = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

async function findings(page) {
  await page.evaluate(axe);
  const { violations } = await page.evaluate(() => window.axe.run(document, {
    resultTypes: ['violations'],
    // Not on by itself: pressed things are 24 pixels high, or as far from each other.
    rules: { 'target-size': { enabled: true } },
  }));
  return violations.flatMap(({ id, nodes }) => nodes.map((node) => `${id}: ${node.target.join(' ')}: ${node.failureSummary}`));
}

/** Controls whose name, as the browser works it out, is not the program's. */
async function misnamed(page) {
  const protocol = await page.createCDPSession();
  await protocol.send('Accessibility.enable');
  const wanted = await page.evaluate(() => window.estructura.controls
    .filter(({ field }) => getComputedStyle(field).visibility === 'visible')
    .map(({ name, isTitle, record }) => ({ name, isTitle, said: record.name })));
  const wrong = [];
  for (const { name, isTitle, said } of wanted) {
    const { result } = await protocol.send('Runtime.evaluate', { expression: `window.estructura.controls.named(${JSON.stringify(name)}).field` });
    const { nodes } = await protocol.send('Accessibility.getPartialAXTree', { objectId: result.objectId, fetchRelatives: false });
    // A title is read as the text it is, and has no name besides.
    const told = isTitle ? await page.evaluate((it) => window.estructura.controls.named(it).field.textContent, name) : nodes[0].name?.value;
    if (!said) wrong.push(`${name} has no name in the program's table`);
    else if (told !== said) wrong.push(`${name} is called ${JSON.stringify(told)}, and should be ${JSON.stringify(said)}`);
  }
  if (wanted.length < 60) wrong.push(`only ${wanted.length} controls are seen`);
  return wrong;
}

const browser = await openChromium();
let wrong = 0;
let looked = 0;
const tell = (state, found) => {
  wrong += found.length;
  for (const problem of found) console.error(`${state}: ${problem}`);
};
for (const state of Object.keys(states)) {
  const page = await openPage(browser, process.argv[2]);
  await states[state](page);
  for (const dark of [false, true]) {
    await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: dark ? 'dark' : 'light' }]);
    tell(`${state}${dark ? ', dark' : ''}`, await findings(page));
    ++looked;
  }
  if (process.argv[3] !== '--without-names' && ['program', 'small', 'listing'].includes(state)) tell(state, await misnamed(page));
  tell(state, page.problems);
  await page.close();
}
await browser.close();
console.log(`${looked} states looked at, ${wrong} findings`);
process.exit(wrong === 0 ? 0 : 1);
