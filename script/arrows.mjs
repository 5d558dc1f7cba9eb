// Holds the sources' includes and imports against the arrows that ARCHITECTURE.md states. Says what differs, a line
// each, and ends with 1 when anything does.
//
// The arrows stand in a block of their own, a folder a line: `folder -> others`. The others are named as they stand
// beside the folder, else from the root of the tree; `folder/*` stands for every listed folder below it, `anything` for
// all there are. `folder/ at most 40 arrows` limits those among the folders below it. A folder that is not listed
// belongs to the one that it stands in, unless others that stand there are.
import { execFileSync } from 'node:child_process';
import { readFileSync } from 'node:fs';
import { dirname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

const document = 'ARCHITECTURE.md';
const include = /^[ \t]*#[ \t]*include[ \t]+"([^"]+)"/gm;
const imported = /^[ \t]*(?:import|export)\b[^'";]*?\bfrom\s*['"](\.[^'"]+)['"]|\bimport\s*\(?\s*['"](\.[^'"]+)['"]/gm;

// Every C++ and TypeScript source of the tree.
function listSources(root) {
  const text = execFileSync(
    'git',
    ['ls-files', '-z', '--cached', '--others', '--exclude-standard', '--deduplicate', '--', '*.h', '*.cpp', '*.ts'],
    { cwd: root, encoding: 'utf8' },
  );
  return text.split('\0').filter((name) => name !== '');
}

function isBelow(folder, other) {
  return folder.startsWith(`${other}/`);
}

// The block: what each folder may use, with the line that says so; limits; and what is wrong with the block.
function readBlock(text) {
  const stated = new Map();
  const limits = [];
  const wrong = [];
  const lines = text.split('\n');
  const first = lines.indexOf('```arrows');
  const end = first < 0 ? -1 : lines.indexOf('```', first);
  if (end < 0)
    return {
      stated,
      limits,
      wrong: [`${document}: there is no block of arrows; right: lines between "\`\`\`arrows" and "\`\`\`"`],
    };
  for (let index = first + 1; index < end; ++index) {
    const at = `${document}:${index + 1}`;
    const limit = /^(\S+)\/ at most (\d+) arrows$/.exec(lines[index]);
    const arrows = /^(\S+) ->(?: (\S.*))?$/.exec(lines[index]);
    if (limit) limits.push({ at, folder: limit[1], most: Number(limit[2]) });
    else if (!arrows) wrong.push(`${at}: "${lines[index]}" is no arrow; right: "folder -> others"`);
    else if (stated.has(arrows[1])) wrong.push(`${at}: ${arrows[1]} is listed twice`);
    else stated.set(arrows[1], { at, uses: arrows[2] ? arrows[2].split(/, */) : [] });
  }
  for (const [folder, arrows] of stated) {
    const beside = dirname(folder) === '.' ? '' : `${dirname(folder)}/`;
    arrows.uses = arrows.uses.map((use) => (stated.has(beside + use) ? beside + use : use));
  }
  return { stated, limits, wrong };
}

// The listed folder that the file belongs to; undefined when it belongs to none.
function folderOf(file, stated) {
  const own = dirname(file);
  let folder = own;
  while (!stated.has(folder) && folder !== '.') folder = dirname(folder);
  if (!stated.has(folder)) return undefined;
  const isParent = [...stated.keys()].some((other) => isBelow(other, folder));
  return folder === own || !isParent ? folder : undefined;
}

// The files that a source names: includes from the root of the tree, imports from where it stands.
function namedIn(file, text, sources) {
  const isScript = file.endsWith('.ts');
  const found = [];
  for (const match of text.matchAll(isScript ? imported : include)) {
    const name = match[1] ?? match[2];
    const base = isScript ? normalize(join(dirname(file), name)) : name;
    const target = [base, `${base}.ts`, `${base}/index.ts`].find((one) => sources.has(one));
    const start = match.index + match[0].search(/\S/);
    if (target) found.push({ target, line: text.slice(0, start).split('\n').length });
  }
  return found;
}

// Every arrow that the sources draw, "from -> to", with the first place of it; files without a listed folder apart.
function readArrows(root, stated) {
  const sources = new Set(listSources(root));
  const drawn = new Map();
  const homeless = new Map();
  for (const file of sources) {
    const from = folderOf(file, stated);
    if (from === undefined) {
      if (!homeless.has(dirname(file))) homeless.set(dirname(file), file);
      continue;
    }
    for (const { target, line } of namedIn(file, readFileSync(join(root, file), 'utf8'), sources)) {
      const to = folderOf(target, stated);
      const arrow = `${from} -> ${to}`;
      if (to !== undefined && to !== from && !drawn.has(arrow))
        drawn.set(arrow, { from, to, at: `${file}:${line}`, target });
    }
  }
  const used = new Set([...sources].map((file) => folderOf(file, stated)));
  return { drawn, homeless, used };
}

// Whether what is stated, which may be a pattern, stands for the folder.
function standsFor(use, to) {
  return use === 'anything' || use === to || (use.endsWith('/*') && isBelow(to, use.slice(0, -2)));
}

// The shortest way from one folder to another along the arrows; undefined when there is none.
function findWay(arrows, from, to) {
  const ways = [[from]];
  const seen = new Set([from]);
  for (const way of ways) {
    if (way.at(-1) === to) return way;
    for (const arrow of arrows) {
      if (arrow.from !== way.at(-1) || seen.has(arrow.to)) continue;
      seen.add(arrow.to);
      ways.push([...way, arrow.to]);
    }
  }
  return undefined;
}

// The shortest circle through each arrow that stands in one, each told once, from its first folder in the alphabet.
function findCircles(arrows) {
  const circles = new Map();
  for (const { from, to } of arrows) {
    const way = findWay(arrows, to, from);
    if (!way) continue;
    const least = way.indexOf([...way].sort()[0]);
    const turned = [...way.slice(least), ...way.slice(0, least)];
    circles.set(turned.join(' -> '), turned);
  }
  return [...circles.values()];
}

function checkStated(stated, drawn, used) {
  const wrong = [];
  for (const [folder, { at, uses }] of stated) {
    if (!used.has(folder)) wrong.push(`${at}: ${folder} holds no sources`);
    for (const use of uses) {
      const isDrawn = [...drawn.values()].some(({ from, to }) => from === folder && standsFor(use, to));
      if (!isDrawn) wrong.push(`${at}: ${folder} -> ${use} is stated, and no source of ${folder} draws it`);
    }
  }
  return wrong;
}

// What is wrong, a line each; nothing when the tree is as ARCHITECTURE.md says.
export function check(root) {
  const { stated, limits, wrong } = readBlock(readFileSync(join(root, document), 'utf8'));
  if (stated.size === 0) return wrong;
  const { drawn, homeless, used } = readArrows(root, stated);
  for (const [folder, file] of homeless)
    wrong.push(`${file}:1: the folder ${folder} is not listed; right: a line "${folder} -> …" in ${document}`);
  for (const { from, to, at, target } of drawn.values()) {
    if (!stated.get(from).uses.some((use) => standsFor(use, to)))
      wrong.push(`${at}: ${from} -> ${to} is not stated in ${document}; this names ${target}`);
  }
  wrong.push(...checkStated(stated, drawn, used));
  for (const circle of findCircles([...drawn.values()])) {
    const first = drawn.get(`${circle[0]} -> ${circle[1]}`);
    wrong.push(`${first.at}: a circle: ${[...circle, circle[0]].join(' -> ')}`);
  }
  for (const { at, folder, most } of limits) {
    const count = [...drawn.values()].filter(({ from, to }) => isBelow(from, folder) && isBelow(to, folder)).length;
    if (count > most)
      wrong.push(`${at}: the folders of ${folder}/ draw ${count} arrows among each other, and ${most} are the most`);
  }
  return wrong;
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const wrong = check(process.argv[2] ?? '.');
  for (const line of wrong) console.error(line);
  process.exitCode = wrong.length > 0 ? 1 : 0;
}
