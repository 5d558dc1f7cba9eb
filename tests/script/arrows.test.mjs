// The check of the arrows, on small planted trees.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdirSync, mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { tmpdir } from 'node:os';
import { dirname, join } from 'node:path';
import { test } from 'node:test';
import { check } from '../../script/arrows.mjs';

// What is wrong with a tree of these files, whose ARCHITECTURE.md states these arrows.
function wrongIn(arrows, files) {
  const root = mkdtempSync(join(tmpdir(), 'arrows-'));
  try {
    const all = { 'ARCHITECTURE.md': ['# Parts', '```arrows', ...arrows, '```', ''].join('\n'), ...files };
    for (const [name, text] of Object.entries(all)) {
      mkdirSync(join(root, dirname(name)), { recursive: true });
      writeFileSync(join(root, name), text);
    }
    execFileSync('git', ['init', '-q', root]);
    return check(root);
  } finally {
    rmSync(root, { recursive: true });
  }
}

const three = {
  'low/Low.h': '#pragma once\n',
  'middle/Middle.cpp': '// why\n\n#include "low/Low.h"\n#include <vector>\n',
  'high/High.cpp': '#include "low/Low.h"\n  #  include "generated/Pages.h"\n',
};
const stated = ['low ->', 'middle -> low', 'high -> low'];

test('a tree that is as stated passes', () => {
  assert.deepEqual(wrongIn(stated, three), []);
});

test('an arrow that is not stated is refused with its place', () => {
  assert.deepEqual(wrongIn(['low ->', 'middle ->', 'high -> low'], three), [
    'middle/Middle.cpp:3: middle -> low is not stated in ARCHITECTURE.md; this names low/Low.h',
  ]);
});

test('an arrow that is stated and not drawn is refused, and a folder without sources', () => {
  assert.deepEqual(wrongIn(['low ->', 'middle -> low', 'high -> low, middle', 'gone ->'], three), [
    'ARCHITECTURE.md:5: high -> middle is stated, and no source of high draws it',
    'ARCHITECTURE.md:6: gone holds no sources',
  ]);
});

test('a folder that is not listed is refused, also beside listed ones in the same folder', () => {
  const files = {
    ...three,
    'new/New.h': '',
    'house/rooms/Room.h': '',
    'house/popups/deep/Popup.h': '',
    'house/rooms/deep/Deep.h': '',
  };
  assert.deepEqual(wrongIn([...stated, 'house ->', 'house/rooms ->'], { ...files, 'house/House.h': '' }), [
    'house/popups/deep/Popup.h:1: the folder house/popups/deep is not listed; right: a line "house/popups/deep -> …" in ARCHITECTURE.md',
    'new/New.h:1: the folder new is not listed; right: a line "new -> …" in ARCHITECTURE.md',
  ]);
});

test('a folder in a listed one without listed ones in it belongs to it', () => {
  const files = {
    ...three,
    'middle/deep/Deep.h': '#include "middle/Middle.h"\n#include "low/Low.h"\n',
    'middle/Middle.h': '',
  };
  assert.deepEqual(wrongIn(stated, files), []);
});

test('a circle is refused, however it is stated', () => {
  const files = {
    ...three,
    'low/Low.h': '#include "high/High.h"\n',
    'high/High.h': '',
    'middle/Middle.h': '',
    'high/More.h': '#include "middle/Middle.h"\n',
  };
  assert.deepEqual(wrongIn(['low -> high', 'middle -> low', 'high -> low, middle'], files).sort(), [
    'high/High.cpp:1: a circle: high -> low -> high',
    'high/More.h:1: a circle: high -> middle -> low -> high',
  ]);
  assert.deepEqual(wrongIn(['low -> anything', 'middle -> anything', 'high -> anything'], files).length, 2);
});

test('others are named as they stand beside the folder, else from the root', () => {
  const files = {
    ...three,
    'top/a/A.h': '#include "top/low/Low.h"\n#include "middle/Middle.h"\n',
    'top/low/Low.h': '',
    'middle/Middle.h': '',
  };
  assert.deepEqual(wrongIn([...stated, 'top/a -> low, middle', 'top/low ->'], files), []);
  assert.deepEqual(wrongIn([...stated, 'top/a -> middle', 'top/low ->'], files), [
    'top/a/A.h:1: top/a -> top/low is not stated in ARCHITECTURE.md; this names top/low/Low.h',
  ]);
});

test('a folder may use all that is below it, or anything; but not without doing so', () => {
  const files = {
    ...three,
    'top/Top.cpp': '#include "top/a/A.h"\n#include "low/Low.h"\n',
    'top/a/A.h': '',
    'top/b/B.h': '',
    'tests/Test.cpp': '#include "top/b/B.h"\n',
  };
  const arrows = [...stated, 'top -> top/*, low', 'top/a ->', 'top/b ->'];
  assert.deepEqual(wrongIn([...arrows, 'tests -> anything'], files), []);
  assert.deepEqual(wrongIn([...arrows, 'tests -> top/*'], { ...files, 'top/Top.cpp': '#include "top/a/A.h"\n' }), [
    'ARCHITECTURE.md:6: top -> low is stated, and no source of top draws it',
  ]);
});

test('the arrows among the folders of one are counted, those of its own sources are not', () => {
  const files = {
    'top/Top.cpp': '#include "top/a/A.h"\n',
    'top/a/A.h': '#include "top/b/B.h"\n#include "top/c/C.h"\n',
    'top/b/B.h': '#include "top/c/C.h"\n',
    'top/c/C.h': '',
  };
  const arrows = ['top -> top/*', 'top/a -> top/b, top/c', 'top/b -> top/c', 'top/c ->'];
  assert.deepEqual(wrongIn([...arrows, 'top/ at most 3 arrows'], files), []);
  assert.deepEqual(wrongIn([...arrows, 'top/ at most 2 arrows'], files), [
    'ARCHITECTURE.md:7: the folders of top/ draw 3 arrows among each other, and 2 are the most',
  ]);
});

test('TypeScript is read as the page writes it', () => {
  const files = {
    'src/main.ts': "import './views/index';\nconst late = () => import('./store/Store');\n",
    'src/views/index.ts': "import {\n  one,\n  two,\n} from '../model/draft';\nexport * from './list';\n",
    'src/views/list.ts': "import type { Draft } from '../model/draft.ts';\nimport { html } from 'lit';\n",
    'src/store/Store.ts': '',
    'src/model/draft.ts': "export const from = 'here';\n",
  };
  assert.deepEqual(
    wrongIn(['src -> src/views, src/store', 'src/views -> src/model', 'src/store ->', 'src/model ->'], files),
    [],
  );
  assert.deepEqual(wrongIn(['src -> src/views', 'src/views ->', 'src/store ->', 'src/model ->'], files), [
    'src/main.ts:2: src -> src/store is not stated in ARCHITECTURE.md; this names src/store/Store.ts',
    'src/views/index.ts:1: src/views -> src/model is not stated in ARCHITECTURE.md; this names src/model/draft.ts',
  ]);
});

test('a block that cannot be read is refused with its line', () => {
  assert.deepEqual(wrongIn([...stated, 'low ->', 'middle: low'], three), [
    'ARCHITECTURE.md:6: low is listed twice',
    'ARCHITECTURE.md:7: "middle: low" is no arrow; right: "folder -> others"',
  ]);
  const none = wrongIn([], { ...three, 'ARCHITECTURE.md': '# Parts\n' });
  assert.deepEqual(none, ['ARCHITECTURE.md: there is no block of arrows; right: lines between "```arrows" and "```"']);
});
