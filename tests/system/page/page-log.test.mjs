import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp } from '../harness/browser.mjs';
import { House } from '../harness/page-house.mjs';

describe('the log', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  /** What it says of values, oldest first. */
  const values = async (page) =>
    (await page.locator('log-view li', { hasText: 'Outside is now' }).allTextContents())
      .map((line) => Number(/“(\d+)”/.exec(line)[1]))
      .reverse();
  const numbers = (first, last) => Array.from({ length: last - first + 1 }, (_none, index) => first + index);
  const setValues = async (first, last) => {
    for (const number of numbers(first, last))
      await house.request('PUT', '/api/variables/9/4', { value: String(number) });
  };

  test('opens with what happened before, and goes on in the same order', async () => {
    await house.add({ name: 'Supper' });
    await setValues(1, 150);
    const page = await openApp(house, '#/log');
    await page.getByText('“Supper” was saved').waitFor();
    await setValues(151, 155);
    await page.getByText('Outside is now “155”').waitFor();
    assert.deepEqual(await values(page), numbers(1, 155));
    await closePage(page);
  });

  test('has each event once after the connection was lost, also when the controller was started anew', async () => {
    await setValues(1, 3);
    const page = await openApp(house, '#/log');
    await page.getByText('Outside is now “3”').waitFor();
    page.isAway = true;
    await page.route('**/api/tickets', (route) => route.abort());
    await page.evaluate(() => window.dispatchEvent(new PageTransitionEvent('pageshow', { persisted: true })));
    await page.getByText('The connection is lost').waitFor();
    await setValues(4, 6);
    await page.unroute('**/api/tickets');
    await page.evaluate(() => window.dispatchEvent(new Event('online')));
    await page.getByText('Outside is now “6”').waitFor();
    assert.deepEqual(await values(page), numbers(1, 6));
    await house.kill();
    await eventually(async () => (await page.getByText('The connection is lost').count()) === 2, 'it is lost again');
    await house.start();
    await setValues(7, 8);
    await page.getByText('Outside is now “8”').waitFor();
    await eventually(async () => (await values(page)).length >= 8, 'everything is shown');
    assert.deepEqual(await values(page), numbers(1, 8));
    await closePage(page);
  });
});
