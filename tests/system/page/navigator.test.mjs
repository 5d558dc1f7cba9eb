import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openNavigator, openPage } from '../harness/browser.mjs';
import { House } from '../harness/page-house.mjs';
import { hidden, message, ok, popup, shown } from '../harness/navigator.mjs';

/** Cuts the page off from the controller, until `join`. */
async function cut(page) {
  page.isAway = true;
  await page.route('**/api/tickets', (route) => route.abort());
  await page.evaluate(() => window.dispatchEvent(new PageTransitionEvent('pageshow', { persisted: true })));
  await page.locator('body.disconnected').waitFor();
}

async function join(page) {
  await page.unroute('**/api/tickets');
  await page.locator('body.connected').waitFor();
}

describe('the page of a navigator', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('shows the time, the room and that it is connected while there is no announcement', async () => {
    const page = await openNavigator(house, 11);
    assert.match(await page.locator('#clock').textContent(), /^\d{1,2}:\d\d/);
    assert.equal(await page.locator('#room').textContent(), 'Kitchen');
    assert.equal(await page.locator('#link-text').textContent(), 'Connected');
    assert.equal(await page.title(), 'Kitchen · Test house');
    assert.ok(await popup(page).isHidden());
    await closePage(page);
  });

  test('shows message, remaining time and OK button, with the focus on the button', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Dinner is ready' });
    await shown(page);
    assert.equal(await message(page).textContent(), 'Dinner is ready');
    assert.match(await page.locator('#left').textContent(), /^(20|19|18|17|16|15) s$/);
    assert.equal(await page.evaluate(() => document.activeElement.id), 'ok');
    assert.equal(await popup(page).getAttribute('aria-describedby'), 'message');
    assert.equal(await page.locator('#idle').getAttribute('aria-hidden'), 'true');
    await closePage(page);
  });

  test('has no OK button that was not asked for, and keeps the focus in the popup', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Good morning', ok_button: false });
    await shown(page);
    assert.equal(await ok(page).count(), 0);
    assert.equal(await page.evaluate(() => document.activeElement.id), 'dialog');
    await page.keyboard.press('Escape');
    await page.keyboard.press('Tab');
    assert.ok(await popup(page).isVisible());
    await closePage(page);
  });

  test('closes the popup on every screen when OK is pressed on one', async () => {
    const [kitchen, bedroom] = [await openNavigator(house, 11), await openNavigator(house, 12)];
    await house.pop({ text: 'Somebody is at the door' });
    await shown(kitchen);
    await shown(bedroom);
    await ok(bedroom).click();
    await hidden(bedroom);
    await hidden(kitchen);
    const { popups } = await house.request('GET', '/api/status');
    assert.deepEqual(popups, []);
    await closePage(kitchen);
    await closePage(bedroom);
  });

  for (const key of ['Enter', ' ', 'Escape']) {
    test(`takes the key "${key}" for the OK button`, async () => {
      const page = await openNavigator(house, 11);
      await house.pop({ text: 'Dinner is ready' });
      await shown(page);
      await page.keyboard.press(key);
      await hidden(page);
      await eventually(async () => (await house.request('GET', '/api/status')).popups.length === 0, 'no popup stands');
      await closePage(page);
    });
  }

  test('hides the popup when it is dismissed elsewhere, and gives the focus back', async () => {
    const page = await openNavigator(house, 11);
    await page.locator('#idle').focus();
    await house.pop({ text: 'Dinner is ready' });
    await shown(page);
    await house.dismiss();
    await hidden(page);
    assert.equal(await page.evaluate(() => document.activeElement.id), 'idle');
    assert.equal(await page.locator('#idle').getAttribute('aria-hidden'), null);
    await closePage(page);
  });

  test('hides the popup when its time is up', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Dinner is ready', timeout_ms: 1500 });
    await shown(page);
    await hidden(page);
    await closePage(page);
  });

  test('that connects late shows what still stands, with the time that is left', async () => {
    await house.pop({ text: 'Dinner is ready', timeout_ms: 25000 });
    const page = await openNavigator(house, 11);
    await shown(page);
    const [{ popup: standing }] = (await house.request('GET', '/api/status')).popups;
    const left = parseInt(await page.locator('#left').textContent(), 10);
    assert.ok(Math.abs(left - standing.remaining_ms / 1000) <= 2, `${left} s shown of ${standing.remaining_ms} ms`);
    await closePage(page);
  });

  test('that was away shows at its return what still stands', async () => {
    const page = await openNavigator(house, 11);
    await cut(page);
    await house.pop({ text: 'While you were away' });
    assert.ok(await popup(page).isHidden());
    await join(page);
    await shown(page);
    assert.equal(await message(page).textContent(), 'While you were away');
    await closePage(page);
  });

  test('that was away does not show what was dismissed meanwhile', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Dismissed meanwhile' });
    await shown(page);
    await cut(page);
    assert.ok(await popup(page).isVisible(), 'it stands until its time is up, as far as this screen knows');
    await house.dismiss();
    await join(page);
    await hidden(page);
    await closePage(page);
  });

  test('lets the popup go in time without its controller, and shows nothing stale after its start anew', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Soon over', timeout_ms: 3000 });
    await shown(page);
    page.isAway = true;
    await house.kill();
    assert.ok(await popup(page).isVisible());
    await hidden(page);
    await house.start();
    await page.locator('body.connected').waitFor();
    assert.ok(await popup(page).isHidden());
    await house.pop({ text: 'New' }, [11]);
    await shown(page);
    assert.equal(await message(page).textContent(), 'New');
    await closePage(page);
  });

  test('does not show a popup that a controller started anew does not know', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Unknown after the crash', timeout_ms: 120000 });
    await shown(page);
    page.isAway = true;
    await house.kill();
    await house.start();
    await page.locator('body.connected').waitFor();
    const { popup: standing } = await house.request('GET', '/api/navigators/11');
    if (standing) await shown(page);
    else await hidden(page);
    await closePage(page);
  });

  test('delivers an OK that was pressed while the controller was away', async () => {
    const [kitchen, bedroom] = [await openNavigator(house, 11), await openNavigator(house, 12)];
    await house.pop({ text: 'Dinner is ready' });
    await shown(kitchen);
    await shown(bedroom);
    await cut(kitchen);
    await kitchen.route('**/ok', (route) => route.abort());
    await ok(kitchen).click();
    await hidden(kitchen);
    assert.ok(await popup(bedroom).isVisible());
    await kitchen.unroute('**/ok');
    await join(kitchen);
    await hidden(bedroom);
    assert.ok(await popup(kitchen).isHidden());
    await closePage(kitchen);
    await closePage(bedroom);
  });

  test('shows nothing stale when the device has slept, and asks what still stands', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'Before the sleep' });
    await shown(page);
    page.isAway = true;
    await page.route('**/api/tickets', (route) => route.abort());
    await page.evaluate(() => {
      const { now } = Date;
      Date.now = () => now.call(Date) + 3600000;
    });
    await hidden(page);
    await page.unroute('**/api/tickets');
    await shown(page); // the controller says that it still stands
    await closePage(page);
  });

  test("does not mind a clock that differs from the controller's", async () => {
    const page = await openPage(house, '/navigator/11');
    await page.addInitScript(() => {
      const { now } = Date;
      Date.now = () => now.call(Date) - 86400000;
    });
    await page.reload();
    await page.locator('body.connected').waitFor();
    await house.pop({ text: 'Yesterday' });
    await shown(page);
    assert.match(await page.locator('#left').textContent(), /^(20|19|18|17|16|15) s$/);
    await closePage(page);
  });

  test('follows the variable that the message is bound to', async () => {
    const page = await openNavigator(house, 11);
    await house.pop({ text: 'unused', variable: { device: 9, variable: 4, name: 'Outside' } });
    await shown(page);
    assert.equal(await message(page).textContent(), '21 °C');
    await house.request('PUT', '/api/variables/9/4', { value: '<b>22 °C</b> 🌞' });
    await eventually(async () => (await message(page).textContent()) === '<b>22 °C</b> 🌞', 'the new value is shown');
    assert.equal(await message(page).locator('b').count(), 0);
    await closePage(page);
  });
});
