import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp, openNavigator } from '../harness/browser.mjs';
import { House, memo } from '../harness/page-house.mjs';

describe('announcing now', () => {
  let house;
  beforeEach(async () => {
    house = await House.open({ isRecording: true });
  });
  afterEach(() => house.close());
  after(closeBrowser);

  const media = async () => (await house.request('GET', '/api/media')).media.map((one) => one.name);

  test('says in the kitchen what was typed, shows it, and begins the next time where it was', async () => {
    const page = await openApp(house);
    const screen = await openNavigator(house, 11);
    const box = page.locator('say-box');
    await box.getByRole('button', { name: 'Send' }).click();
    await box.getByText('What is to be said?').waitFor();
    await page.keyboard.type('Dinner is ready');
    await page.keyboard.press('Control+Enter');
    await box.getByText('Choose a room or a screen.').waitFor();
    await box.getByRole('button', { name: 'Kitchen', exact: true }).click();
    await box.getByRole('button', { name: 'Kitchen screen' }).click();
    await box.getByLabel('What is to be said').press('Control+Enter');
    await page.locator('now-bar strong', { hasText: 'Dinner is ready' }).waitFor();
    await house.untilHeard(1);
    assert.equal(await screen.locator('#message').textContent(), 'Dinner is ready');
    assert.equal(await box.getByLabel('What is to be said').inputValue(), '');
    await page.getByRole('button', { name: 'Stop Dinner is ready' }).first().click();
    await page.locator('now-bar section').waitFor({ state: 'detached' });
    const [{ name }] = (await house.request('GET', '/api/history')).history;
    assert.deepEqual([name, (await house.request('GET', '/api/announcements')).announcements], ['Dinner is ready', []]);
    await page.reload();
    const pressed = box.locator('.chip[aria-pressed="true"]');
    await pressed.first().waitFor();
    assert.deepEqual(
      (await pressed.allTextContents()).map((text) => text.trim()),
      ['Kitchen', 'Kitchen screen'],
    );
    await closePage(screen);
    await closePage(page);
  });

  test('plays in the kitchen what was recorded here, and keeps nothing of it', async () => {
    const page = await openApp(house, '', { permissions: ['microphone'] });
    const box = page.locator('say-box');
    await box.getByRole('button', { name: 'Kitchen', exact: true }).click();
    await box.getByRole('button', { name: 'Record', pressed: false }).click();
    await box.locator('sound-recorder').getByRole('button', { name: 'Record' }).click();
    const level = async () => Number(await box.getByRole('meter').getAttribute('aria-valuenow'));
    await eventually(async () => (await level()) > 50, 'the microphone hears something');
    await box.getByRole('button', { name: 'Stop' }).click();
    await box.locator('sound-trimmer').waitFor();
    await box.getByRole('button', { name: 'Send' }).click();
    await house.untilHeard(1);
    await page.locator('now-bar section').waitFor({ state: 'detached' });
    await eventually(async () => (await media()).length === 0, 'the recording is gone');
    await closePage(page);
  });

  test('plays an M4A from a phone', async () => {
    const page = await openApp(house, '#/media');
    await page.locator('media-drop input').setInputFiles([{ name: 'Voice memo.m4a', mimeType: '', buffer: memo }]);
    await page.locator('media-card', { hasText: 'Voice-memo.wav' }).waitFor();
    await page.getByRole('link', { name: 'Announcements' }).click();
    const box = page.locator('say-box');
    await box.getByRole('button', { name: 'Sound' }).click();
    await box.getByLabel('Which sound').selectOption('Voice-memo');
    await box.getByRole('button', { name: 'Kitchen', exact: true }).click();
    await box.getByRole('button', { name: 'Send' }).click();
    await house.untilHeard(1);
    await closePage(page);
  });

  test('has no recorder for those who may only play', async () => {
    await house.close();
    house = await House.open({ tokens: ['admin', 'play'] });
    const page = await openApp(house, `#token=${house.tokens.play}`);
    const box = page.locator('say-box');
    await box.getByRole('button', { name: 'Send' }).waitFor();
    assert.equal(await box.getByRole('button', { name: 'Record' }).count(), 0);
    await closePage(page);
  });
});
