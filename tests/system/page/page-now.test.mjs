import assert from 'node:assert/strict';
import { mkdirSync, readdirSync, symlinkSync } from 'node:fs';
import { join } from 'node:path';
import { after, afterEach, beforeEach, describe, test } from 'node:test';
import { closeBrowser, closePage, eventually, openApp } from '../harness/browser.mjs';
import { House, memo, wav } from '../harness/page-house.mjs';

describe('what plays now', () => {
  let house;
  beforeEach(async () => {
    house = await House.open({ isRecording: true });
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('shows how far it has come and how long it still takes, and takes room only while it plays', async () => {
    const page = await openApp(house);
    const spaceBelow = () =>
      page.locator('.page').evaluate((one) => Number.parseFloat(getComputedStyle(one).paddingBottom));
    const idle = await spaceBelow();
    await house.pop({ text: 'Dinner', timeout_ms: 20000 });
    const bar = page.locator('now-bar progress');
    await bar.waitFor();
    const share = () => bar.evaluate((one) => one.value);
    const left = async () => Number.parseInt(await page.locator('now-bar .left').textContent(), 10);
    const [share1, left1] = [await share(), await left()];
    assert.ok(share1 >= 0 && share1 < 1 && left1 > 1 && left1 <= 25, `${share1} done, ${left1} s left`);
    assert.ok((await spaceBelow()) > idle + 50, 'nothing hides behind the bar');
    await eventually(async () => (await share()) > share1 && (await left()) < left1, 'the bar moves on');
    await page.getByRole('button', { name: 'Stop Popup' }).first().click();
    await page.locator('now-bar section').waitFor({ state: 'detached' });
    assert.equal(await spaceBelow(), idle);
    await closePage(page);
  });

  test('is, for somebody who has never seen the page, three clicks and the words away', async () => {
    const page = await openApp(house);
    await page.evaluate(() => {
      window.done = [];
      for (const kind of ['click', 'keydown', 'wheel', 'touchstart'])
        window.addEventListener(kind, (event) => event.isTrusted && window.done.push(kind), { capture: true });
    });
    const words = 'Dinner is ready';
    await page.getByLabel('What is to be said').click();
    await page.keyboard.type(words);
    await page.getByRole('button', { name: 'Kitchen', exact: true }).click();
    await page.getByRole('button', { name: 'Send', exact: true }).click();
    await house.untilHeard(1);
    const done = await page.evaluate(() => window.done);
    const count = (kind) => done.filter((one) => one === kind).length;
    assert.deepEqual([count('click'), count('keydown'), done.length], [3, words.length, 3 + words.length]);
    await closePage(page);
  });
});

describe('a sound that the controller cannot decode', () => {
  let house;
  beforeEach(async () => {
    house = await House.open({ isRecording: true });
    await house.stop();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  /** Starts it on a machine whose GStreamer has no decoder for AAC. */
  const startWithout = (decoders) => {
    const all = process.env.GST_PLUGIN_SYSTEM_PATH_1_0;
    const some = join(house.folder, 'plug-ins');
    mkdirSync(some);
    for (const name of readdirSync(all).filter((one) => !decoders.test(one)))
      symlinkSync(join(all, name), join(some, name));
    const env = { GST_PLUGIN_SYSTEM_PATH_1_0: some, GST_REGISTRY_1_0: join(house.folder, 'plug-ins.registry') };
    return house.start({ env });
  };

  test('is decoded by the page, stored as a WAV, and heard', async () => {
    await startWithout(/faad|fdkaac|libav|aac/);
    const refused = await house.ask('PUT', '/api/media/memo.m4a', memo, { 'Content-Type': 'audio/mp4' });
    assert.deepEqual([refused.status, refused.body.code], [422, 'cannot_decode'], refused.text);
    const page = await openApp(house, '#/media', { refusals: true });
    await page.locator('media-drop input').setInputFiles([{ name: 'Voice memo.m4a', mimeType: '', buffer: memo }]);
    await page.locator('media-card', { hasText: 'Voice-memo.wav' }).waitFor();
    const [file] = (await house.request('GET', '/api/media')).media;
    assert.equal(file.name, 'Voice-memo.wav');
    assert.ok(file.duration_ms > 800 && file.duration_ms < 1300, `${file.duration_ms} ms`);
    const { id } = await house.add({ name: 'Memo', audio: { file: 'Voice-memo' }, rooms: [{ id: 1, volume: 50 }] });
    await house.play(id);
    await house.untilHeard(1);
    await closePage(page);
  });
});

describe('a page in German', () => {
  let house;
  beforeEach(async () => {
    house = await House.open();
  });
  afterEach(() => house.close());
  after(closeBrowser);

  test('says in German what the controller refuses, and why something would not be heard', async () => {
    await house.request('PUT', '/api/media/gong.wav', wav(300));
    const page = await openApp(house, '#/media', { locale: 'de-DE', refusals: true });
    await page
      .locator('media-drop input')
      .setInputFiles([{ name: 'kaputt.wav', mimeType: '', buffer: wav(900).subarray(0, 3000) }]);
    await page.locator('media-drop .refused', { hasText: 'kaputt.wav ist beschädigt: abgeschnitten' }).waitFor();
    await page.locator('media-drop .refused', { hasText: 'Richtig wäre: ein ganzer Ton von höchstens 20 s' }).waitFor();
    await closePage(page);
  });

  test('plays one sound as loud as its file is, where somebody wants it so', async () => {
    await house.close();
    house = await House.open({ loudness: 'even' });
    await house.request('PUT', '/api/media/gong.wav', wav(1000));
    const page = await openApp(house, '#/media', { locale: 'de-DE' });
    const card = page.locator('media-card', { hasText: 'gong.wav' });
    await card.getByText(/LUFS, wird .* dB lauter gespielt/).waitFor();
    const loudness = async () => (await house.request('GET', '/api/media')).media[0].loudness;
    assert.equal((await loudness()).as_it_is, false);
    const asItIs = card.getByRole('switch', { name: 'gong.wav so laut spielen, wie die Datei ist' });
    await card.locator('sl-switch').click();
    await card.getByText(/LUFS, wird gespielt, wie es ist/).waitFor();
    assert.deepEqual([(await loudness()).as_it_is, (await loudness()).gain], [true, 0]);
    assert.equal(await asItIs.isChecked(), true);
    await card.locator('sl-switch').click();
    await card.getByText(/dB lauter gespielt/).waitFor();
    assert.equal((await loudness()).as_it_is, false);
    await closePage(page);
  });
});
