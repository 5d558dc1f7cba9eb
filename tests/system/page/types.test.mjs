import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import { writeFile } from 'node:fs/promises';
import { join } from 'node:path';
import { after, before, describe, test } from 'node:test';
import { promisify } from 'node:util';
import { House } from '../harness/page-house.mjs';

const SCRIPT = new URL('../../../web/types.mjs', import.meta.url).pathname;

const run = promisify(execFile);

describe('the types that the pages have for the API', () => {
  let house;
  before(async () => {
    house = await House.open();
  });
  after(() => house.close());

  const check = async (description) => {
    const file = join(house.folder, 'openapi.json');
    await writeFile(file, JSON.stringify(description));
    return run(process.execPath, [SCRIPT, file, '--check']);
  };

  test('are made from what the controller describes', async () => {
    await check(await house.request('GET', '/api/openapi.json'));
  });

  test('are found out of date when the controller describes something else', async () => {
    const description = await house.request('GET', '/api/openapi.json');
    delete description.components.schemas.Popup.properties.message;
    await assert.rejects(check(description), /web\/src\/api\/types\.ts is not what .* describes: run `npm run types/);
  });
});
