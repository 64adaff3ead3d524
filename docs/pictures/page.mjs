// Takes the pictures of the page that the manual shows, one for each size of screen, in a real browser.
//
//   node docs/pictures/page.mjs [PAGE.html]
//   node docs/pictures/page.mjs --check [PAGE.html]     writes nothing; fails where a picture is not the page's any more
//
// Look at each new picture: nothing else does. It needs what the page's tests need (tests/web).
import { readFileSync, writeFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { openChromium, openPage } from '../../tests/web/browsers.mjs';
import { control, load, pickDevice, press, states, step } from '../../tests/web/states.mjs';

const here = dirname(fileURLToPath(import.meta.url));
const compares = process.argv[2] === '--check';
const file = process.argv[compares ? 3 : 2] ?? join(here, '../../build/navegador/estructura.html');

const pictures = {
  'pagina-1366': { width: 1366, height: 768, state: states.program },
  'pagina-1920-oscura': { width: 1920, height: 1080, dark: true, state: async (page) => {
    await load(page, 'temporizador.asm');
    await press(page, control('Ensamblar'));
    await step(page, 40);
  } },
  'pagina-820': { width: 820, height: 1180, touch: true, state: async (page) => {
    await pickDevice(page, '16C54');
    await load(page, 'parpadeo.asm');
    await press(page, control('Ensamblar'));
    await press(page, control('eje1'));
    await page.evaluate(() => scrollTo(0, 0));
  } },
  'pagina-360': { width: 360, height: 740, touch: true, state: async (page) => {
    await states.program(page);
    await page.$eval(control('Label13'), (title) => title.scrollIntoView());
  } },
};

/** How many pixels may be another: a letter that changes has dozens that turn from light to dark. */
const allowed = 20;

/**
 * Runs in a page: how many pixels of two pictures are another. Another release of the font renderer shades the edges of
 * letters a little otherwise.
 */
async function difference(one, other) {
  const farApart = 96; // of 255, in any channel
  const pixelsOf = async (data) => {
    const picture = await createImageBitmap(await (await fetch(`data:image/png;base64,${data}`)).blob());
    const paper = new OffscreenCanvas(picture.width, picture.height).getContext('2d');
    paper.drawImage(picture, 0, 0);
    return paper.getImageData(0, 0, picture.width, picture.height);
  };
  const [a, b] = [await pixelsOf(one), await pixelsOf(other)];
  if (a.width !== b.width || a.height !== b.height) return a.width * a.height;
  let different = 0;
  for (let at = 0; at < a.data.length; at += 4) {
    const distance = (part) => Math.abs(a.data[at + part] - b.data[at + part]);
    if (Math.max(distance(0), distance(1), distance(2)) > farApart) ++different;
  }
  return different;
}

const browser = await openChromium();
const judge = await browser.newPage();
let old = 0;
for (const [name, { state, ...screen }] of Object.entries(pictures)) {
  const page = await openPage(browser, file, screen);
  await state(page);
  await page.evaluate(() => new Promise((resolve) => setTimeout(resolve, 300)));
  const kept = join(here, `${name}.png`);
  const taken = await page.screenshot({ encoding: 'base64' });
  await page.close();
  if (!compares) writeFileSync(kept, Buffer.from(taken, 'base64'));
  const different = await judge.evaluate(difference, readFileSync(kept).toString('base64'), taken);
  console.log(`${name}: ${different} pixels differ, ${allowed} may`);
  if (different > allowed) ++old;
}
await browser.close();
if (old > 0) {
  console.error(`Pictures that do not show the page as it is: ${old}. Make them again with docs/pictures/page.mjs`);
  process.exit(1);
}
