import assert from 'node:assert/strict';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp, openNavigator, toast } from '../harness/browser.mjs';
import { House, loudest, wav } from '../harness/page-house.mjs';

describe('the list of announcements', () => {
  let house;
  beforeEach(async () => {
    house = await House.open({ isRecording: true });
  });
  afterEach(() => house.close());
  after(closeBrowser);

  const everything = async () => (await house.request('GET', '/api/announcements')).announcements;

  test('leads from the first visit to the first announcement heard', async () => {
    const page = await openApp(house);
    await page.getByRole('link', { name: 'Make the first one' }).click();
    await page.getByLabel('Name', { exact: true }).fill('Dinner');
    const [chooser] = await Promise.all([
      page.waitForEvent('filechooser'),
      page.locator('draft-sound').getByRole('button', { name: 'Choose a file' }).click(),
    ]);
    await chooser.setFiles({ name: 'My chime.wav', mimeType: 'audio/wav', buffer: wav(3000) });
    await page.locator('draft-sound select').filter({ hasText: 'My-chime, 3 s' }).waitFor();
    await page.getByRole('switch', { name: 'Kitchen', exact: true }).press('Space');
    await page.getByRole('switch', { name: 'Bedroom', exact: true }).press('Space');
    await page.getByRole('switch', { name: 'Keep the room’s volume: Bedroom' }).press('Space');
    await page.getByLabel('Volume in Bedroom: 30 %').fill('60');
    await page.getByRole('button', { name: 'Save', exact: true }).click();
    await toast(page, '“Dinner” is saved');
    assert.equal((await everything())[0].audio.file, 'My-chime');
    await page.getByRole('button', { name: 'Play Dinner' }).click();
    await page.locator('now-bar').getByText('♪ My-chime in Kitchen and Bedroom').waitFor();
    await page.locator('now-bar section').waitFor({ state: 'detached' });
    const [kitchen, bedroom] = [await house.heard(1, 1), await house.heard(2, 1)];
    assert.ok(loudest(kitchen) > 0.003, `the kitchen has heard ${loudest(kitchen)}`);
    // The volumes' law: a share of v percent is a gain of (v/100)³.
    assert.ok(
      Math.abs(loudest(bedroom) / loudest(kitchen) - (60 / 40) ** 3) < 0.3,
      `${loudest(bedroom)} and ${loudest(kitchen)}`,
    );
    await closePage(page);
  });

  test('plays by the keyboard, shows what plays and waits, and is dismissed from a screen', async () => {
    const target = { navigators: [{ id: 11, room: 1, onscreen: true }] };
    await house.add({ name: 'First', video: { text: 'One', timeout_ms: 120000 }, ...target });
    await house.add({ name: 'Second', video: { text: 'Two', timeout_ms: 120000 }, ...target });
    const page = await openApp(house);
    const screen = await openNavigator(house, 11);
    await page.getByRole('button', { name: 'Play First' }).focus();
    await page.keyboard.press('Enter');
    await page.locator('now-bar').getByText('on Kitchen screen').waitFor();
    await page.getByRole('button', { name: 'Play Second' }).click();
    await page.locator('now-bar').getByText('then Second').waitFor();
    await page.locator('announcement-row', { hasText: 'Second' }).getByText('Next').waitFor();
    await page.locator('announcement-row', { hasText: 'First' }).getByText('Playing').waitFor();
    assert.equal(await screen.locator('#message').textContent(), 'One');
    await screen.locator('#ok').click();
    await eventually(async () => (await screen.locator('#message').textContent()) === 'Two', 'the second one is shown');
    await page.locator('now-bar strong', { hasText: 'Second' }).waitFor();
    await page.getByRole('button', { name: /^Dismiss what plays/ }).click();
    await page.locator('now-bar section').waitFor({ state: 'detached' });
    await closePage(screen);
    await closePage(page);
  });

  test('stops in mid-sound, and offers to dismiss only where there is a popup', async () => {
    await house.request('PUT', '/api/media/long.wav', wav(15000));
    await house.add({ name: 'Long', audio: { file: 'long' }, rooms: [{ id: 1, volume: 100 }] });
    const page = await openApp(house);
    await page.getByRole('button', { name: 'Play Long' }).click();
    await house.untilHeard(1);
    assert.equal(await page.getByRole('button', { name: /^Dismiss/ }).count(), 0);
    await page.locator('announcement-row').getByRole('button', { name: 'Stop Long' }).waitFor();
    await page.locator('now-bar').getByRole('button', { name: 'Stop Long' }).click();
    await page.locator('now-bar').getByText('Stopped').waitFor();
    await page.locator('now-bar section').waitFor({ state: 'detached' });
    const heard = await house.heard(1, 1);
    const end = heard.length - [...heard].reverse().findIndex((sample) => Math.abs(sample) > 0.001);
    assert.ok(end < 14 * 48000, `it was heard for ${end / 48000} s`);
    const [{ outcome }] = (await house.request('GET', '/api/history')).history;
    assert.equal(outcome, 'stopped');
    await closePage(page);
  });

  test('shows what waits in order, moves it by the keyboard, and takes it back', async () => {
    const target = { navigators: [{ id: 11, room: 1, onscreen: true }] };
    for (const name of ['First', 'Second', 'Third', 'Fourth']) {
      const { id } = await house.add({ name, video: { text: name, timeout_ms: 120000 }, ...target });
      await house.play(id);
    }
    const page = await openApp(house);
    const queue = async () => (await house.request('GET', '/api/queue')).queue.map((one) => one.name);
    await page.getByRole('button', { name: '3 waiting' }).click();
    const later = page.getByRole('button', { name: 'Second: later' });
    await later.press('Enter');
    await page.locator('queue-list li', { hasText: 'Second' }).getByText('2.').waitFor();
    await later.press('Enter');
    await page.locator('queue-list li', { hasText: 'Second' }).getByText('3.').waitFor();
    await page.getByRole('button', { name: 'Third: take it back' }).click();
    await toast(page, '“Third” is taken back');
    assert.deepEqual(await queue(), ['Fourth', 'Second']);
    await page.locator('now-bar').getByRole('button', { name: 'Stop First' }).click();
    await page.locator('now-bar strong', { hasText: 'Fourth' }).waitFor();
    await page.getByRole('button', { name: '1 waiting' }).waitFor();
    await closePage(page);
  });

  test('says what is not heard, while it plays and after, and does not stack what it says', async () => {
    await house.add({
      name: 'Broken',
      audio: { file: 'gone' },
      video: { text: 'Broken', timeout_ms: 120000 },
      rooms: [{ id: 1, volume: 20 }],
      navigators: [{ id: 11, room: 1, onscreen: true }],
    });
    await house.add({ name: 'Other', rooms: [{ id: 2, volume: 20 }] });
    const why = 'The sound “gone” could not be played: there is no sound file "gone.wav" in the media folder';
    const page = await openApp(house, '', { viewport: { width: 390, height: 844 } });
    await page.getByRole('button', { name: 'Play Broken' }).click();
    await page.locator('now-bar section.failing').getByText(why).waitFor();
    await page.locator('announcement-row').getByText('Failed', { exact: true }).waitFor();
    await page.getByRole('button', { name: 'Play Other' }).click();
    await page.getByRole('button', { name: 'Play Other' }).click();
    await page.locator('now-bar').getByText('then Other').waitFor();
    assert.equal(await page.locator('.toast').count(), 0);
    await page.getByRole('button', { name: /^Dismiss what plays/ }).click();
    await toast(page, `“Broken”: ${why}`);
    await closePage(page);
  });

  test('tells that what the house does not have is neither heard nor seen', async () => {
    await house.add({
      name: 'Elsewhere',
      audio: { file: 'gone' },
      video: { text: 'Hello', timeout_ms: 4000 },
      rooms: [
        { id: 1, volume: 30 },
        { id: 99, volume: 30 },
      ],
      navigators: [
        { id: 12, room: 2, onscreen: true },
        { id: 98, room: 1, onscreen: true },
      ],
    });
    const page = await openApp(house);
    await page.getByRole('button', { name: 'What Elsewhere will do' }).click();
    const row = page.locator('announcement-row');
    await row.locator('[data-kind="popup"]').waitFor();
    assert.deepEqual((await row.locator('.missing li').allTextContents()).map((text) => text.trim()).sort(), [
      'Nothing is heard: there is no sound file "gone.wav" in the media folder.',
      'Room 99 is not in this house: nothing is heard there.',
      'Screen 98 is not in this house: nothing is shown there.',
    ]);
    assert.deepEqual(
      (await row.locator('.row .name').allTextContents()).map((text) => text.trim()),
      ['Kitchen', 'Bedroom screen'],
    );
    assert.equal(await row.locator('[data-kind="sound"]').count(), 0);
    await closePage(page);
  });

  test('tells what playing would do without playing', async () => {
    await house.request('PUT', '/api/media/chime.wav', wav(1000));
    await house.add({
      name: 'Dinner',
      audio: { file: 'chime', delay_ms: 500 },
      video: { text: 'Dinner is ready', timeout_ms: 5000 },
      rooms: [{ id: 1, volume: 40 }],
      navigators: [{ id: 11, room: 1, onscreen: true }],
    });
    const page = await openApp(house);
    await page.getByRole('button', { name: 'What Dinner will do' }).click();
    const row = page.locator('announcement-row');
    await row.locator('[data-kind="sound"]').waitFor();
    const drawn = await row
      .locator('[data-kind]')
      .evaluateAll((bars) => bars.map((bar) => bar.querySelector('title').textContent));
    assert.deepEqual(drawn.slice(1), [
      'Delay: 0 s to 0.5 s',
      'Sound: 0.5 s to 1.5 s',
      'Restore: 1.5 s to 3.5 s',
      'Popup: 0 s to 5 s',
    ]);
    await row.getByText('Step by step').click();
    for (const step of [
      'The sound “chime” begins.',
      'Kitchen is set to 40 %.',
      'Kitchen screen shows “Dinner is ready”, with an OK button.',
    ]) {
      await row.getByText(step).waitFor();
    }
    assert.equal((await house.request('GET', '/api/status')).playing, null);
    await closePage(page);
  });

  test('finds by any word, with or without marks, and says when there is none', async () => {
    await house.add({ name: 'Café is open', video: { text: 'Croissants' } });
    await house.add({ name: 'Bus', rooms: [{ id: 2, volume: -1 }] });
    const page = await openApp(house);
    await page.getByText('2 announcements').waitFor();
    const search = page.getByLabel('Search announcements');
    await search.fill('cafe crois');
    await page.getByText('1 of 2 announcements').waitFor();
    await page.getByRole('heading', { name: 'Café is open' }).waitFor();
    await search.fill('bedroom');
    await page.getByRole('heading', { name: 'Bus' }).waitFor();
    await search.fill('nowhere');
    await page.getByText('Nothing here matches “nowhere”').waitFor();
    await page.getByRole('button', { name: 'Show all' }).click();
    await page.getByText('2 announcements').waitFor();
    await closePage(page);
  });

  test('says at a row what is wrong with it before anybody plays it, and no longer when it is mended', async () => {
    await house.add({
      name: 'Broken',
      audio: { file: 'gone' },
      video: { text: 'Hello' },
      rooms: [{ id: 7, volume: -1 }],
      navigators: [{ id: 19, room: 1 }],
    });
    await house.add({ name: 'Idle' });
    const page = await openApp(house);
    const faults = (name) =>
      page.locator('announcement-row', { hasText: name }).locator('.faults li').allTextContents();
    await eventually(async () => (await faults('Broken')).length === 3, 'three faults');
    assert.deepEqual(await faults('Broken'), [
      'The sound “gone” is missing',
      'Room 7 is not in this house',
      'Screen 19 is not in this house',
    ]);
    assert.match((await faults('Idle')).join(), /^It would do nothing/);
    await house.request('PUT', '/api/media/gone.wav', wav(100));
    await eventually(async () => (await faults('Broken')).length === 2, 'its sound is there');
    await closePage(page);
  });

  test('has favourites first, an order and tags, and is the same when one comes back to it', async () => {
    for (let number = 1; number <= 20; number += 1)
      await house.add({ name: `Number ${number}`, tags: number === 1 ? ['meals'] : [] });
    await house.play(2);
    const page = await openApp(house);
    const names = () => page.locator('announcement-row h2').allTextContents();
    const begins = (...wanted) =>
      eventually(async () => (await names()).slice(0, wanted.length).join() === wanted.join(), `first ${wanted}`);
    await begins('Number 20', 'Number 19');
    await page.getByRole('button', { name: 'Number 17 is a favourite' }).click();
    await begins('Number 17', 'Number 20');
    assert.deepEqual((await everything())[16].tags, ['favourite']);
    await page.getByLabel('Order').selectOption('By name');
    await begins('Number 17', 'Number 1', 'Number 2', 'Number 3');
    await page.getByLabel('Order').selectOption('Last used first');
    await begins('Number 17', 'Number 2', 'Number 20');
    await page.getByLabel('Show', { exact: true }).selectOption('meals');
    await page.getByText('1 of 20 announcements').waitFor();
    await page.getByLabel('Show', { exact: true }).selectOption('Everything');
    await page.getByLabel('Search announcements').fill('number');
    await page.evaluate(() => window.scrollTo(0, 900));
    const edit = page.getByRole('link', { name: /^Edit Number/ }).last();
    await edit.evaluate((one) => one.click());
    await page.getByRole('heading', { name: 'Edit announcement' }).waitFor();
    await page.goBack();
    await eventually(() => page.evaluate(() => window.scrollY === 900), 'it is where it was');
    assert.equal(await page.getByLabel('Search announcements').inputValue(), 'number');
    await closePage(page);
  });

  test('duplicates one', async () => {
    const first = await house.add({ name: 'Dinner', video: { text: 'Ready' }, rooms: [{ id: 1, volume: 20 }] });
    const page = await openApp(house);
    await page.getByRole('button', { name: 'What Dinner will do' }).click();
    await page.getByText('Duplicate').click();
    await page.getByRole('heading', { name: 'New announcement' }).waitFor();
    await page.getByRole('button', { name: 'Save', exact: true }).click();
    await toast(page, '“Dinner (copy)” is saved');
    assert.deepEqual(await everything(), [first, { ...first, id: 2, name: 'Dinner (copy)' }]);
    await closePage(page);
  });

  test('deletes one, and brings it back as it was', async () => {
    const kept = await house.add({ name: 'Kept' });
    await house.add({ name: 'Unwanted' });
    const page = await openApp(house);
    const erase = async (name) => {
      await page.getByRole('button', { name: `What ${name} will do` }).click();
      await page.locator('announcement-row', { hasText: name }).getByRole('button', { name: 'Delete' }).click();
    };
    await erase('Kept');
    await page.getByRole('heading', { name: 'Kept' }).waitFor({ state: 'detached' });
    await page.getByRole('button', { name: 'Undo' }).click();
    await page.getByRole('heading', { name: 'Kept' }).waitFor();
    await erase('Unwanted');
    await eventually(async () => (await everything()).length === 1, 'the other one is deleted');
    assert.deepEqual(await everything(), [kept]);
    await closePage(page);
  });

  test('follows what others change, and takes no text for markup', async () => {
    const page = await openApp(house);
    const { id } = await house.add({ name: 'From elsewhere <b>', video: { text: '<img src=x onerror=alert(1)>' } });
    await page.getByRole('heading', { name: 'From elsewhere <b>' }).waitFor();
    await house.request('PUT', `/api/announcements/${id}`, { name: 'Renamed' });
    await page.getByRole('heading', { name: 'Renamed' }).waitFor();
    await house.request('DELETE', `/api/announcements/${id}`);
    await page.getByText('No announcements yet').waitFor();
    await closePage(page);
  });

  test('scrolls through thousands with few of them drawn', async () => {
    const many = Array.from(
      { length: 3000 },
      (_, index) => `<announcement><name>Number ${index + 1}</name></announcement>`,
    );
    for (let at = 0; at < many.length; at += 20) {
      await Promise.all(
        many
          .slice(at, at + 20)
          .map((announcement) => house.request('POST', '/api/requests/add_announcement', { announcement })),
      );
    }
    const page = await openApp(house);
    await page.getByText('3,000 announcements').waitFor();
    const drawn = () => page.locator('announcement-row').count();
    await page.locator('announcement-row').first().waitFor();
    assert.ok((await drawn()) < 60, `${await drawn()} rows are drawn`);
    await eventually(async () => {
      await page.mouse.wheel(0, 200000);
      return page
        .getByRole('heading', { name: /^Number [1-9]\d?$/ })
        .first()
        .isVisible();
    }, 'the end of the list');
    assert.ok((await drawn()) < 60, `${await drawn()} rows are drawn`);
    await closePage(page);
  });
});
