// Pages in a real browser, which say what went wrong in them.

import assert from 'node:assert/strict';
import { existsSync, readFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { chromium } from 'playwright-core';

const BROWSER = process.env.CHROMIUM || '/usr/bin/chromium';
const PATIENCE = 45000;

const AXE = readFileSync(createRequire(import.meta.url).resolve('axe-core/axe.min.js'), 'utf8');

let browser = null;

export async function launch(options = {}) {
  if (!existsSync(BROWSER)) throw new Error(`there is no browser at ${BROWSER}; script/bootstrap installs it`);
  return chromium.launch({
    executablePath: BROWSER,
    ...options,
    args: [
      '--no-sandbox',
      '--disable-gpu',
      '--disable-quic',
      '--no-first-run',
      '--disable-background-networking',
      '--disable-component-update',
      '--disable-sync',
      '--use-fake-device-for-media-stream', // a microphone that hears a beep each second
    ],
  });
}

export async function closeBrowser() {
  if (browser) await browser.close();
  browser = null;
}

/**
 * Opens a page of the house in a browser of its own. `page.complaints` collects errors, warnings and violations of the
 * content policy; refusals by the controller, which the browser reports too, are left out with `refusals: true`.
 */
export async function openPage(house, path, { refusals = false, ...options } = {}) {
  browser ??= await launch();
  const context = await browser.newContext({ viewport: { width: 1024, height: 768 }, ...options });
  context.setDefaultTimeout(PATIENCE);
  const page = await context.newPage();
  page.complaints = [];
  page.isAway = false;
  page.on('pageerror', (error) => page.complaints.push(String(error)));
  page.on('console', (message) => {
    if (!['error', 'warning'].includes(message.type())) return;
    const text = message.text();
    if (page.isAway && /ERR_|WebSocket/.test(text)) return; // the server was taken away on purpose
    if (refusals && /the server responded with a status of 4/.test(text)) return;
    page.complaints.push(text);
  });
  await page.goto(house.url + path);
  return page;
}

export async function openNavigator(house, id, options) {
  const page = await openPage(house, `/navigator/${id}`, options);
  await page.locator('body.connected').waitFor();
  return page;
}

/** The page of the people who run the house, at one of its views. */
export async function openApp(house, hash = '', options = {}) {
  const page = await openPage(house, `/${hash}`, options);
  await page.locator('main h1').first().waitFor();
  return page;
}

export const toast = (page, text) => page.locator('.toast', { hasText: text }).waitFor();

/** What axe-core, with all of its rules, finds wrong with the page as it stands; in its words. */
export async function complaintsOfAxe(page) {
  await page.evaluate(AXE);
  return page.evaluate(async () => {
    const { violations } = await window.axe.run(document, { resultTypes: ['violations'] });
    return violations.flatMap(({ id, help, nodes }) =>
      nodes.map((node) => `${id}: ${help}: ${node.target.flat().join(' ')}: ${node.failureSummary}`),
    );
  });
}

/** Closes the page; it must have had nothing to complain of. */
export async function closePage(page) {
  const { complaints } = page;
  await page.context().close();
  assert.deepEqual(complaints, []);
}

/** Waits until `check` holds; says what it was about when it never does. */
export async function eventually(check, what) {
  const end = Date.now() + PATIENCE;
  while (Date.now() < end) {
    if (await check()) return;
    await new Promise((resolve) => {
      setTimeout(resolve, 25);
    });
  }
  assert.fail(`never: ${what}`);
}
