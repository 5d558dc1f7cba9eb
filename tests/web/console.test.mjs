import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openConsole, openNavigator, openPage } from './support/browser.mjs';
import { House, png, wav } from './support/house.mjs';

const toast = (page, text) => page.locator('.toast', { hasText: text }).waitFor();

describe('the console', () => {
  let house;
  beforeEach(async () => { house = await House.open(); });
  afterEach(() => house.close());
  after(closeBrowser);

  const everything = async () => (await house.request('GET', '/api/announcements')).announcements;

  test('says what to do first in an empty house', async () => {
    const page = await openConsole(house);
    await page.getByRole('link', { name: 'Make the first one' }).click();
    await page.getByRole('heading', { name: 'New announcement' }).waitFor();
    await page.goto(`${house.url}/#/media`);
    await page.getByRole('heading', { name: 'No sounds and no pictures yet' }).waitFor();
    await page.goto(`${house.url}/#/activity`);
    await page.getByText('Nothing has been played yet').waitFor();
    await closePage(page);
  });

  test('makes an announcement with all its fields', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(300));
    await house.request('PUT', '/api/media/dinner.png', png);
    const page = await openConsole(house, '#/announcements/new');
    await page.getByLabel('Name').fill('Dinner');
    await page.locator('select option[value="chime"]').waitFor({ state: 'attached' });
    await page.getByRole('combobox', { name: 'Sound' }).selectOption('chime');
    await page.getByLabel('Wait before it (seconds)').first().fill('0.5');
    await page.getByLabel('Text').fill('Dinner is ready 🍝\n<b>Come!</b>');
    await page.getByLabel('Picture').fill('dinner.png');
    await page.getByLabel('Show for (seconds)').fill('7');
    await page.getByLabel('Wait before it (seconds)').last().fill('1.5');
    await page.getByLabel(/OK button/).uncheck();
    await page.getByLabel('Kitchen', { exact: true }).check();
    await page.getByLabel('Volume in Kitchen').fill('55');
    await page.getByLabel('Bedroom', { exact: true }).check();
    await page.getByLabel('Bedroom screen').check();
    await page.getByRole('button', { name: 'Save' }).click();
    await toast(page, '“Dinner” is saved');
    assert.deepEqual(await everything(), [{
      id: 1,
      name: 'Dinner',
      audio: { file: 'chime', delay_ms: 500 },
      video: { image: 'dinner.png', text: 'Dinner is ready 🍝\n<b>Come!</b>', delay_ms: 1500, timeout_ms: 7000, ok_button: false, variable: null },
      rooms: [{ id: 1, volume: 55 }, { id: 2, volume: -1 }],
      navigators: [{ id: 12, room: 2, onscreen: true }],
    }]);
    await page.getByRole('heading', { name: 'Dinner' }).waitFor();
    await closePage(page);
  });

  test('changes an announcement and leaves alone what it was not asked to change', async () => {
    const stored = await house.add({
      name: 'Old', audio: { file: 'gone', delay_ms: 250 },
      video: { text: 'Old text', variable: { device: 77, variable: 3, name: 'elsewhere' }, timeout_ms: 4000 },
      rooms: [{ id: 1, volume: 20 }, { id: 99, volume: 30 }], navigators: [{ id: 98, room: 5, onscreen: false }],
    });
    const page = await openConsole(house, `#/announcements/${stored.id}`);
    await page.getByLabel('Name').fill('New');
    await page.getByRole('button', { name: 'Save' }).click();
    await toast(page, '“New” is saved');
    assert.deepEqual(await everything(), [{ ...stored, name: 'New' }]);
    await closePage(page);
  });

  test('says at the field what is wrong', async () => {
    const page = await openConsole(house, '#/announcements/new', { refusals: true });
    await page.getByRole('button', { name: 'Save' }).click();
    await page.getByText('Give it a name').waitFor();
    assert.equal(await page.getByLabel('Name').getAttribute('aria-invalid'), 'true');
    assert.equal(await page.evaluate(() => document.activeElement.placeholder), 'Dinner is ready');
    assert.deepEqual(await everything(), []);
    await closePage(page);
  });

  test('asks before it forgets what was not saved', async () => {
    const page = await openConsole(house, '#/announcements/new');
    await page.getByLabel('Name').fill('Half done');
    await page.getByRole('link', { name: 'Rooms & screens' }).click();
    await page.getByRole('dialog', { name: 'Leave without saving?' }).waitFor();
    await page.getByRole('button', { name: 'Cancel' }).click();
    assert.equal(await page.getByLabel('Name').inputValue(), 'Half done');
    await page.getByRole('link', { name: 'Rooms & screens' }).click();
    await page.getByRole('button', { name: 'Leave' }).click();
    await page.getByRole('heading', { name: 'Rooms & screens' }).waitFor();
    await closePage(page);
  });

  test('tells what playing would do without playing', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(1000));
    await house.add({ name: 'Dinner', audio: { file: 'chime', delay_ms: 500 }, video: { text: 'Dinner is ready', timeout_ms: 5000 },
      rooms: [{ id: 1, volume: 40 }], navigators: [{ id: 11, room: 1, onscreen: true }] });
    const page = await openConsole(house);
    await page.getByRole('button', { name: 'Preview Dinner' }).click();
    const dialog = page.getByRole('dialog', { name: 'If “Dinner” were played' });
    await dialog.getByText('Step by step').click();
    await dialog.getByText('The sound “chime” begins.').waitFor();
    await dialog.getByText('Kitchen is set to 40 %.').waitFor();
    await dialog.getByText('Kitchen screen shows “Dinner is ready”, with an OK button.').waitFor();
    await page.keyboard.press('Escape');
    await dialog.waitFor({ state: 'detached' });
    assert.equal((await house.request('GET', '/api/status')).playing, null);
    await closePage(page);
  });

  test('plays by the keyboard, shows what plays and waits, closes popups', async () => {
    const target = { navigators: [{ id: 11, room: 1, onscreen: true }] };
    await house.add({ name: 'First', video: { text: 'One', timeout_ms: 20000 }, ...target });
    await house.add({ name: 'Second', video: { text: 'Two', timeout_ms: 20000 }, ...target });
    const page = await openConsole(house);
    const screen = await openNavigator(house, 11);
    await page.getByRole('button', { name: 'Play First' }).focus();
    await page.keyboard.press('Enter');
    await page.locator('.now', { hasText: 'on Kitchen screen' }).waitFor();
    await page.getByRole('button', { name: 'Play Second' }).click();
    await page.locator('.now', { hasText: 'then Second' }).waitFor();
    await page.locator('.announcement', { hasText: 'Waiting, next' }).waitFor();
    assert.equal(await screen.locator('#message').textContent(), 'One');
    await page.getByRole('button', { name: 'Close popups' }).click();
    await eventually(async () => (await screen.locator('#message').textContent()) === 'Two', 'the second one is shown');
    await page.locator('.now strong', { hasText: 'Second' }).waitFor();
    await page.getByRole('button', { name: 'Close popups' }).click();
    await page.locator('.now').waitFor({ state: 'hidden' });
    await page.goto(`${house.url}/#/activity`);
    await eventually(async () => (await page.locator('.entry strong').allTextContents()).join() === 'Second,First', 'the history has both');
    await closePage(screen);
    await closePage(page);
  });

  test('says in the history why an announcement could not be heard', async () => {
    const { id } = await house.add({ name: 'Silent', audio: { file: 'missing' }, rooms: [{ id: 1, volume: 40 }] });
    const page = await openConsole(house, '#/activity');
    await house.play(id);
    const entry = page.locator('.entry', { hasText: 'Silent' });
    await entry.getByText('Failed', { exact: true }).waitFor();
    assert.match(await entry.locator('.reason').textContent(), /missing/);
    await closePage(page);
  });

  test('deletes after a question, and not without', async () => {
    await house.add({ name: 'Unwanted' });
    const page = await openConsole(house);
    await page.getByRole('button', { name: 'Delete Unwanted' }).click();
    await page.getByRole('button', { name: 'Cancel' }).click();
    assert.equal((await everything()).length, 1);
    await page.getByRole('button', { name: 'Delete Unwanted' }).click();
    await page.getByRole('dialog').getByRole('button', { name: 'Delete', exact: true }).click();
    await page.getByText('No announcements yet').waitFor();
    assert.deepEqual(await everything(), []);
    await closePage(page);
  });

  test('follows what others change', async () => {
    const page = await openConsole(house);
    const { id } = await house.add({ name: 'From elsewhere <b>', video: { text: '<img src=x onerror=alert(1)>' } });
    await page.getByRole('heading', { name: 'From elsewhere <b>' }).waitFor();
    await house.request('PUT', `/api/announcements/${id}`, { name: 'Renamed' });
    await page.getByRole('heading', { name: 'Renamed' }).waitFor();
    await house.request('DELETE', `/api/announcements/${id}`);
    await page.getByText('No announcements yet').waitFor();
    await page.goto(`${house.url}/#/house`);
    const slider = page.getByLabel('Volume of Kitchen');
    assert.equal(await slider.inputValue(), '40');
    await house.request('PUT', '/api/rooms/1/volume', { volume: 65 });
    await eventually(async () => (await slider.inputValue()) === '65', 'the slider has moved');
    await house.request('PUT', '/api/variables/9/4', { value: '5 °C' });
    await eventually(async () => (await page.getByLabel('Outside').inputValue()) === '5 °C', 'the value is shown');
    const screen = await openNavigator(house, 11);
    await page.locator('.screen', { hasText: 'Kitchen screen' }).getByText('Connected', { exact: true }).waitFor();
    await closePage(screen);
    await closePage(page);
  });

  test('sets volumes, never above the most that a room may have, and values', async () => {
    const page = await openConsole(house, '#/house');
    const slider = page.getByLabel('Volume of Kitchen');
    await slider.focus();
    await page.keyboard.press('End');
    await eventually(async () => (await house.request('GET', '/api/rooms/1')).volume === 80, 'the room is at its most');
    await page.getByLabel('Outside').fill('−3 °C');
    await page.keyboard.press('Enter');
    await toast(page, 'Outside is set');
    assert.equal((await house.request('GET', '/api/variables/9/4')).value, '−3 °C');
    await closePage(page);
  });

  test('takes sounds and pictures, and says kindly what it cannot take', async () => {
    const page = await openConsole(house, '#/media', { refusals: true });
    const file = (name, buffer) => ({ name, mimeType: '', buffer });
    await page.setInputFiles('#files', [
      file('Büro Gong (2).WAV', wav(1500)), file('dinner.png', png), file('no sound.wav', Buffer.from('hello')),
      file('long.wav', wav(21000)), file('cut.wav', wav(1000).subarray(0, 4000)), file('music.mp3', Buffer.from('ID3')),
    ]);
    await page.locator('.file', { hasText: 'Buro-Gong-2.wav' }).getByText('1.5 s').waitFor();
    await page.locator('.file', { hasText: 'dinner.png' }).waitFor();
    await eventually(async () => (await page.locator('.problems .problem').count()) === 4, 'four refusals');
    const complaints = await page.locator('.problems strong').allTextContents();
    assert.deepEqual(complaints, ['no sound.wav', 'long.wav', 'cut.wav', 'music.mp3']);
    const { media } = await house.request('GET', '/api/media');
    assert.deepEqual(media.map(({ name }) => name), ['Buro-Gong-2.wav', 'dinner.png']);
    await page.getByRole('button', { name: 'Delete Buro-Gong-2.wav' }).click();
    await page.getByRole('dialog').getByText('No announcement uses it.').waitFor();
    await page.getByRole('dialog').getByRole('button', { name: 'Delete', exact: true }).click();
    await page.locator('.file', { hasText: 'Buro-Gong-2.wav' }).waitFor({ state: 'detached' });
    await closePage(page);
  });

  test('takes files that are dropped, and plays a sound here', async () => {
    const page = await openConsole(house, '#/media');
    const bytes = [...wav(400)];
    const data = await page.evaluateHandle((content) => {
      const transfer = new DataTransfer();
      transfer.items.add(new File([new Uint8Array(content)], 'ding.wav', { type: 'audio/wav' }));
      return transfer;
    }, bytes);
    await page.dispatchEvent('.drop', 'drop', { dataTransfer: data });
    const listen = page.getByRole('button', { name: 'Listen to ding.wav' });
    await listen.click();
    await listen.getByText('Stop').waitFor();
    await listen.getByText('Listen').waitFor(); // at its end
    await closePage(page);
  });

  test('says when it is not connected, and comes back by itself with what is true then', async () => {
    await house.add({ name: 'Kept' });
    const page = await openConsole(house);
    page.isAway = true;
    await house.kill();
    await page.getByText('Not connected. What you see may be out of date').waitFor();
    await house.start();
    await house.add({ name: 'Added meanwhile' });
    await page.locator('#banner').waitFor({ state: 'hidden' });
    await page.getByRole('heading', { name: 'Added meanwhile' }).waitFor();
    await page.getByRole('heading', { name: 'Kept' }).waitFor();
    await closePage(page);
  });

  for (const [width, height] of [[360, 640], [820, 1180], [1440, 900]]) {
    test(`fits a screen of ${width} by ${height}`, async () => {
      await house.add({ name: 'Donaudampfschifffahrtsgesellschaftskapitänsmützenhalter', video: { text: 'w'.repeat(300) } });
      const page = await openConsole(house, '', { viewport: { width, height } });
      for (const hash of ['#/announcements', '#/announcements/1', '#/house', '#/media', '#/activity']) {
        await page.goto(`${house.url}/${hash}`);
        await page.locator('main h1').waitFor();
        const wide = await page.evaluate(() => document.documentElement.scrollWidth - window.innerWidth);
        assert.ok(wide <= 0, `${hash} is ${wide} px too wide`);
      }
      await closePage(page);
    });
  }
});

describe('the console of a house with tokens', () => {
  let house;
  beforeEach(async () => { house = await House.open({ tokens: ['admin', 'play', 'navigator:11'] }); });
  afterEach(() => house.close());
  after(closeBrowser);

  test('asks for a token, refuses a wrong one, keeps a good one', async () => {
    const page = await openConsole(house, '', { refusals: true });
    await page.getByLabel('Token').fill('wrong');
    await page.getByRole('button', { name: 'Come in' }).click();
    await page.locator('form .problem').waitFor();
    await page.getByLabel('Token').fill(house.tokens.admin);
    await page.getByRole('button', { name: 'Come in' }).click();
    await page.getByRole('heading', { name: 'No announcements yet' }).waitFor();
    await page.reload();
    await page.getByRole('heading', { name: 'No announcements yet' }).waitFor();
    await closePage(page);
  });

  test('offers those who may only play nothing that they may not do', async () => {
    await house.add({ name: 'Dinner' });
    const page = await openConsole(house, `#token=${house.tokens.play}`);
    await page.getByRole('button', { name: 'Play Dinner' }).click();
    await toast(page, 'Playing “Dinner”');
    for (const name of ['Edit Dinner', 'Delete Dinner', 'New announcement']) {
      assert.equal(await page.getByLabel(name).or(page.getByRole('link', { name })).filter({ visible: true }).count(), 0, name);
    }
    await closePage(page);
  });

  test('leads the token of a screen to its page', async () => {
    const page = await openPage(house, `/#token=${house.tokens['navigator:11']}`, { refusals: true });
    await page.getByRole('link', { name: 'Open the page of screen 11' }).click();
    await page.locator('body.connected').waitFor();
    await closePage(page);
  });
});
