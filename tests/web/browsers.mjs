// The browsers in which the page is tried, as Debian installs them.
//
//   const browser = await openChromium();
//   const page = await openPage(browser, file, { width: 1366, height: 900 });
import { existsSync } from 'node:fs';
import { pathToFileURL } from 'node:url';
import puppeteer from 'puppeteer-core';

/** Without the sandbox, which root has not; and with the same letters and sizes wherever it runs. */
export const chromiumArguments = ['--no-sandbox', '--force-device-scale-factor=1', '--hide-scrollbars=false', '--mute-audio',
  '--autoplay-policy=no-user-gesture-required', '--font-render-hinting=none'];

export async function openChromium(more = {}) {
  return puppeteer.launch({
    executablePath: process.env.CHROMIUM ?? '/usr/bin/chromium',
    headless: true,
    args: chromiumArguments,
    ...more,
  });
}

/** The page's address, which is a file's. */
export function addressOf(file) {
  if (!existsSync(file)) throw new Error(`there is no page: ${file}`);
  return pathToFileURL(file).href;
}

/** A tab with the page, once it has started; without the browser's own dialog for saving, which nobody could answer. */
export async function openPage(browser, file, { width, height, touch = false, dark = false, scale = 1, before } = {}) {
  const page = await browser.newPage();
  page.problems = [];
  page.on('pageerror', (problem) => page.problems.push(problem.stack ?? String(problem)));
  page.on('console', (said) => { if (said.type() === 'error') page.problems.push(said.text()); });
  page.on('dialog', (dialog) => dialog.accept());
  await page.setViewport({ width: width ?? 1366, height: height ?? 900, hasTouch: touch, isMobile: touch,
    deviceScaleFactor: scale });
  await page.emulateMediaFeatures([{ name: 'prefers-color-scheme', value: dark ? 'dark' : 'light' }]);
  await page.evaluateOnNewDocument(() => { delete window.showSaveFilePicker; });
  if (before) await page.evaluateOnNewDocument(before);
  await page.goto(addressOf(file));
  await page.waitForFunction(() => window.estructura !== undefined);
  return page;
}
