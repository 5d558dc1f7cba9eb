// What the package says of the program and of what is in it.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';

const read = (file) => readFileSync(new URL(`../../${file}`, import.meta.url), 'utf8');

const debianNames = { MIT: 'Expat', 'BSD-3-Clause': 'BSD-3-clause', 'Apache-2.0': 'Apache-2.0' };

test('every library that the page bundles is named in debian/copyright, with its licence in full', () => {
  const paragraphs = read('packaging/debian/copyright').split('\n\n');
  for (const name of Object.keys(JSON.parse(read('web/package.json')).dependencies)) {
    const { license } = JSON.parse(read(`web/node_modules/${name}/package.json`));
    const folder = `web/node_modules/${name}`;
    const own = paragraphs.find(
      (one) => one.includes(`${folder}/*`) || one.includes(`${folder.slice(0, folder.lastIndexOf('/'))}/*`),
    );
    assert.ok(own, `${name} is not named`);
    const licence = debianNames[license];
    assert.ok(own.includes(`License: ${licence}\n`), `${name} is under ${license}`);
    assert.ok(
      paragraphs.some((one) => one.startsWith(`License: ${licence}\n `)),
      `the text of ${licence} is missing`,
    );
  }
});

test('the service manager leaves a program alone that would end in the same way again', () => {
  const unit = read('packaging/announcement-controller.service.in');
  const statuses = /^RestartPreventExitStatus=(.*)$/m.exec(unit)[1].split(' ');
  const left = [...read('docs/operations.md').matchAll(/^\| (\d) \|.*\| leaves it/gm)].map((row) => row[1]);
  assert.deepEqual(left, ['2', '3']);
  assert.deepEqual(statuses, left);
  assert.match(unit, /^MemoryMax=\d/m);
  assert.match(unit, /^TasksMax=\d/m);
});
