// Takes the pictures of the page that the manual shows, one for each size of screen, in a real browser.
//
//   node docs/pictures/page.mjs [PAGE.html]
//
// Look at each: nothing else does. It needs what the page's tests need (tests/web).
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';
import { openChromium, openPage } from '../../tests/web/browsers.mjs';
import { control, load, pickDevice, press, states, step } from '../../tests/web/states.mjs';

const here = dirname(fileURLToPath(import.meta.url));
const file = process.argv[2] ?? join(here, '../../build/navegador/estructura.html');

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

const browser = await openChromium();
for (const [name, { state, ...screen }] of Object.entries(pictures)) {
  const page = await openPage(browser, file, screen);
  await state(page);
  await page.evaluate(() => new Promise((resolve) => setTimeout(resolve, 300)));
  await page.screenshot({ path: join(here, `${name}.png`) });
  await page.close();
  console.log(name);
}
await browser.close();
