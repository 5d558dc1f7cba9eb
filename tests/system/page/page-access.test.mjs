import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp, openNavigator, openPage } from '../harness/browser.mjs';
import { House, png, wav } from '../harness/page-house.mjs';

describe('the connection', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('is always in sight, and comes back by itself with what is true then', async () => {
    await house.add({ name: 'Kept' });
    const page = await openApp(house);
    await page.locator('link-state').getByText('Connected', { exact: true }).waitFor();
    page.isAway = true;
    await house.kill();
    await page.locator('link-state').getByText('Not connected').waitFor();
    await page.getByText('What you see may be out of date').waitFor();
    await house.start();
    await house.add({ name: 'Added meanwhile' });
    await page.locator('link-state').getByText('Connected', { exact: true }).waitFor();
    await page.getByRole('heading', { name: 'Added meanwhile' }).waitFor();
    await page.getByRole('heading', { name: 'Kept' }).waitFor();
    await page.getByText('What you see may be out of date').waitFor({ state: 'detached' });
    await closePage(page);
  });

  test('shows what there is, and what is opened, though a part of the page could not be fetched the first time', async () => {
    await house.add({ name: 'Kept' });
    const page = await openNavigator(house, 11); // whose parts are others
    const refused = new Set();
    await page.route(/\/assets\/page-[a-z]+(-[a-z]+)*-[0-9a-f]{16}\.js$/, async (route) => {
      const part = route.request().url();
      if (refused.has(part) || part.includes('page-english-')) return route.continue();
      refused.add(part);
      return route.abort('connectionrefused');
    });
    page.isAway = true;
    await page.goto(house.url);
    await page.getByRole('heading', { name: 'Kept' }).waitFor();
    await page.getByRole('button', { name: 'Record' }).click();
    await page.locator('sound-recorder').getByRole('button').first().waitFor();
    await page.getByRole('link', { name: 'House' }).click();
    await page.locator('room-card').first().waitFor();
    assert.ok(refused.size >= 2, [...refused].join());
    await closePage(page);
  });

  test('brings what views show that were opened without it', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    await house.request('PUT', '/api/media/dinner.png', png);
    await house.add({
      name: 'Kept',
      audio: { file: 'chime' },
      video: { text: 'Now', image: 'dinner.png', timeout_ms: 100 },
      navigators: [{ id: 11, room: 1, onscreen: true }],
    });
    await house.play(1);
    await eventually(async () => (await house.request('GET', '/api/history')).history.length === 1, 'it was played');
    const opened = {
      '#/media': 'sound-wave rect',
      '#/announcements/1': 'announcement-outlook .lane',
      '#/history': 'tbody tr',
    };
    for (const [view, sign] of Object.entries(opened)) {
      const page = await openApp(house);
      page.isAway = true;
      await house.kill();
      await page.locator('link-state').getByText('Not connected').waitFor();
      await page.goto(`${house.url}/${view}`);
      await page.getByText('This is shown as soon as there is a connection.').waitFor();
      await house.start();
      // The longer the house was away, the later the next try: not before a slow machine's patience ends.
      await page.evaluate(() => window.dispatchEvent(new Event('online')));
      await page.locator('link-state').getByText('Connected', { exact: true }).waitFor();
      await page.locator(sign).first().waitFor();
      await page.getByText('This is shown as soon as there is a connection.').waitFor({ state: 'detached' });
      await page.getByText('The controller cannot be reached').first().waitFor({ state: 'detached' });
      await closePage(page);
    }
  });

  test('brings the picture of what will happen, and the way to save, back to an editor that stood open', async () => {
    const page = await openApp(house, '#/announcements/new');
    await page.getByLabel('Name', { exact: true }).fill('Supper');
    await page.getByText('Nothing would happen').waitFor();
    page.isAway = true;
    await house.kill();
    await page.locator('link-state').getByText('Not connected').waitFor();
    await page.getByLabel('Text', { exact: true }).fill('Come');
    await page.getByRole('switch', { name: 'Kitchen screen' }).press('Space');
    await page.locator('announcement-outlook').getByText('The controller cannot be reached').waitFor();
    await page.getByRole('button', { name: 'Save', exact: true }).click();
    await page.locator('footer .problem').getByText('The controller cannot be reached').waitFor();
    await house.start();
    await page.locator('announcement-outlook [data-kind="popup"]').waitFor();
    await page.locator('footer .problem:not(:empty)').waitFor({ state: 'detached' });
    await page.getByRole('button', { name: 'Save', exact: true }).click();
    await page.getByRole('heading', { name: 'Supper' }).waitFor();
    await closePage(page);
  });
});

describe('a house with tokens', () => {
  let house;
  beforeEach(async () => {
    house = await House.open({ tokens: ['admin', 'play', 'navigator:11'] });
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('asks for a token, refuses a wrong one, keeps a good one until one signs out', async () => {
    const page = await openApp(house, '', { refusals: true });
    const field = page.getByLabel('Token', { exact: true });
    const enter = () => page.getByRole('button', { name: 'Sign in' }).click();
    await field.fill('wrong');
    await enter();
    await page.getByText('This token is not known here').waitFor();
    await field.fill(house.tokens.admin);
    await enter();
    await page.getByRole('heading', { name: 'No announcements yet' }).waitFor();
    await page.reload();
    await page.getByRole('heading', { name: 'No announcements yet' }).waitFor();
    await page.getByRole('button', { name: 'Sign out' }).click();
    await page.getByRole('heading', { name: 'Sign in' }).waitFor();
    assert.equal(await page.evaluate(() => JSON.stringify([{ ...localStorage }, { ...sessionStorage }])), '[{},{}]');
    await closePage(page);
  });

  test('takes the token out of the address', async () => {
    const page = await openApp(house, `#token=${house.tokens.admin}`);
    await page.getByRole('heading', { name: 'No announcements yet' }).waitFor();
    assert.equal(await page.evaluate(() => location.hash), '');
    await closePage(page);
  });

  test('shows those who may only play only what they may play', async () => {
    await house.add({
      name: 'Dinner',
      video: { text: 'Ready', timeout_ms: 120000 },
      navigators: [{ id: 11, room: 1, onscreen: true }],
    });
    const page = await openApp(house, `#token=${house.tokens.play}`);
    await page.getByRole('button', { name: 'Play Dinner' }).click();
    await page.getByRole('button', { name: 'What Dinner will do' }).click();
    await page.locator('announcement-outlook [data-kind="popup"]').waitFor();
    for (const name of ['Edit', 'Delete', 'New', 'House', 'Media', 'History', 'Log', 'Duplicate']) {
      assert.equal(
        await page.getByLabel(name).or(page.getByRole('link', { name })).or(page.getByRole('button', { name })).count(),
        0,
        name,
      );
    }
    await page.evaluate(() => {
      location.hash = '#/house';
    });
    await page.getByRole('heading', { name: 'Announcements' }).waitFor();
    await page.getByRole('button', { name: /^Dismiss what plays/ }).click();
    await eventually(async () => (await house.request('GET', '/api/status')).playing === null, 'it is dismissed');
    await closePage(page);
  });

  test('says what the token of a screen is when somebody signs in with it here', async () => {
    const page = await openApp(house, '', { refusals: true });
    await page.getByLabel('Token', { exact: true }).fill(house.tokens['navigator:11']);
    await page.getByRole('button', { name: 'Sign in' }).click();
    await page.getByRole('heading', { name: 'This token belongs to a screen' }).waitFor();
    assert.equal(await page.getByText('This token is not known here').count(), 0);
    await page.locator('link-state').getByText('Not connected').waitFor();
    await page.getByRole('link', { name: 'Open the page of screen 11' }).click();
    await page.locator('body.connected').waitFor();
    await closePage(page);
  });

  test('leads the token of a screen to its page', async () => {
    const page = await openPage(house, `/#token=${house.tokens['navigator:11']}`, { refusals: true });
    await page.getByRole('link', { name: 'Open the page of screen 11' }).click();
    await page.locator('body.connected').waitFor();
    await closePage(page);
  });
});
