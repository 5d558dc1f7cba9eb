import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, openApp, openNavigator } from '../harness/browser.mjs';
import { House } from '../harness/page-house.mjs';

describe('the language', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  const languageOf = (page) => page.evaluate(() => document.documentElement.lang);

  test('is that of the browser, until one switches, which is kept; what is not saved is asked for first', async () => {
    const page = await openApp(house, '#/announcements/new', { locale: 'de-AT' });
    await page.getByRole('heading', { name: 'Neue Durchsage' }).waitFor();
    assert.equal(await languageOf(page), 'de');
    await page.getByLabel('Name', { exact: true }).fill('Abendessen');
    await page.getByRole('button', { name: 'English' }).click();
    await page.locator('sl-dialog').getByRole('button', { name: 'Abbrechen' }).click();
    await page.getByLabel('Name', { exact: true }).fill('');
    await page.getByRole('button', { name: 'English' }).click();
    await page.getByRole('heading', { name: 'New announcement' }).waitFor();
    await page.reload();
    await page.getByRole('heading', { name: 'New announcement' }).waitFor();
    assert.equal(await languageOf(page), 'en');
    await closePage(page);
  });

  test('is also that of a screen, its clock and its popups', async () => {
    const screen = await openNavigator(house, 11, { locale: 'de-DE' });
    assert.equal(await languageOf(screen), 'de');
    assert.equal(await screen.locator('#link-text').textContent(), 'Verbunden');
    const weekday = new Date().toLocaleDateString('de-DE', { weekday: 'long' });
    assert.ok((await screen.locator('#date').textContent()).startsWith(weekday));
    await house.pop({ text: 'Essen' });
    await screen.getByRole('alertdialog', { name: 'Durchsage' }).waitFor();
    await house.dismiss();
    await screen.locator('#popup').waitFor({ state: 'hidden' });
    await screen.getByRole('button', { name: 'English' }).click();
    await screen.locator('#link-text', { hasText: /^Connected$/ }).waitFor();
    await closePage(screen);
  });
});
