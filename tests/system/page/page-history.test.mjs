import assert from 'node:assert/strict';
import { readFile } from 'node:fs/promises';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp } from '../harness/browser.mjs';
import { House, wav } from '../harness/page-house.mjs';

describe('history and log', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  const row = (page, text) => page.locator('history-view tbody tr', { hasText: text });

  test('say what was played, where, how it ended, and why it could not be heard', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(200));
    const heard = await house.add({
      name: 'Heard',
      audio: { file: 'chime', delay_ms: 1 },
      rooms: [{ id: 2, volume: 40 }],
    });
    const silent = await house.add({ name: 'Silent', audio: { file: 'missing' }, rooms: [{ id: 1, volume: 40 }] });
    const page = await openApp(house, '#/history');
    await page.getByText('Nothing has been played yet').waitFor();
    await house.play(heard.id);
    await house.play(silent.id);
    await row(page, 'Heard').getByText('Played', { exact: true }).waitFor();
    await row(page, 'Heard').getByText('Bedroom').waitFor();
    await row(page, 'Silent').getByText('Failed', { exact: true }).waitFor();
    assert.match(await row(page, 'Silent').locator('.reason').textContent(), /missing/);
    await page.getByLabel('How it ended').selectOption('Failed');
    await row(page, 'Heard').waitFor({ state: 'detached' });
    await page.getByLabel('Where').selectOption('Bedroom');
    await page.getByText('Nothing in the history matches').waitFor();
    await page.getByLabel('How it ended').selectOption('Everything');
    await row(page, 'Heard').waitFor();
    const download = async (button) => {
      const [file] = await Promise.all([
        page.waitForEvent('download'),
        page.getByRole('button', { name: button }).click(),
      ]);
      return readFile(await file.path(), 'utf8');
    };
    const lines = (await download('Download what is shown as CSV')).trim().split('\r\n');
    assert.equal(lines.length, 2);
    assert.match(lines[1], /,1,Heard,chime,Bedroom,,(ended|played)$/);
    assert.deepEqual(
      JSON.parse(await download('Download what is shown as JSON')).history.map((one) => one.name),
      ['Heard'],
    );
    await closePage(page);
  });

  test('play again what is still there', async () => {
    const { id } = await house.add({ name: 'Gone' });
    await house.add({ name: 'Kept' });
    await house.play(id);
    await house.play(id + 1);
    const page = await openApp(house, '#/history');
    await row(page, 'Kept').waitFor();
    await house.request('DELETE', `/api/announcements/${id}`);
    await page.getByRole('button', { name: 'Play Gone again' }).waitFor({ state: 'detached' });
    await page.getByRole('button', { name: 'Play Kept again' }).click();
    await eventually(async () => (await row(page, 'Kept').count()) === 2, 'it was played again');
    await closePage(page);
  });

  test('go back further than one page', async () => {
    const { id } = await house.add({ name: 'Nothing' });
    const page = await openApp(house, '#/history');
    for (let played = 0; played < 3; played += 1) {
      await house.play(id);
      await eventually(async () => (await house.request('GET', '/api/status')).playing === null, 'it is over');
    }
    await eventually(async () => (await row(page, 'Nothing').count()) === 3, 'all are in the history');
    const { history } = await house.request('GET', '/api/history?limit=2');
    const older = (await house.request('GET', `/api/history?limit=2&before=${history[1].id}`)).history;
    assert.deepEqual(
      [...history, ...older].map((one) => one.id),
      [3, 2, 1],
    );
    await closePage(page);
  });

  test('tell what happens as it happens', async () => {
    const page = await openApp(house, '#/log');
    await page.getByText('Connected to the controller').waitFor();
    const { id } = await house.add({
      name: 'Dinner',
      video: { text: 'Ready', timeout_ms: 300 },
      navigators: [{ id: 11, room: 1, onscreen: true }],
    });
    await house.play(id);
    for (const text of [
      '“Dinner” was saved',
      '“Dinner” begins',
      'Kitchen screen shows “Ready”',
      'The message on Kitchen screen is gone: its time is up',
      '“Dinner” is over',
    ]) {
      await page.locator('log-view li', { hasText: text }).waitFor();
    }
    await page.getByLabel('Show').selectOption('Screens');
    await page.locator('log-view li', { hasText: 'was saved' }).waitFor({ state: 'detached' });
    await page.locator('log-view li', { hasText: 'Kitchen screen shows' }).waitFor();
    await closePage(page);
  });
});
