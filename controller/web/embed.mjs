// Writes what the program has of the pages: Assets.bin, the files of a bundle one behind the other, plain and
// compressed, and Assets.cpp, which takes that in and says where each is. `node embed.mjs BUNDLE FOLDER`.

import { createHash } from 'node:crypto';
import { readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { extname, join, resolve } from 'node:path';
import { brotliCompressSync, constants, gzipSync } from 'node:zlib';

const TYPES = {
  '.css': { type: 'text/css; charset=utf-8', isText: true },
  '.html': { type: 'text/html; charset=utf-8', isText: true },
  '.js': { type: 'text/javascript; charset=utf-8', isText: true },
  '.png': { type: 'image/png', isText: false },
  '.svg': { type: 'image/svg+xml', isText: true },
  '.webmanifest': { type: 'application/manifest+json', isText: true },
};

/** As the bundler names what changes its name with its content. */
const HASHED = /-[0-9a-f]{16}\.\w+$/;

const [bundle, folder] = process.argv.slice(2);

const parts = [];
let length = 0;

/** Puts the bytes behind the others; gives the C++ for where they are. */
function place(bytes) {
  parts.push(bytes);
  length += bytes.length;
  return `{kBytes + ${length - bytes.length}, ${bytes.length}}`;
}

function placeIfSmaller(bytes, plain) {
  return bytes.length < plain.length ? place(bytes) : '{}';
}

function rowOf(name) {
  const known = TYPES[extname(name)];
  if (!known) throw new Error(`${name}: no content type is known for "${extname(name)}"; add it to embed.mjs`);
  const plain = readFileSync(join(bundle, name));
  const digest = createHash('sha256').update(plain).digest('hex').slice(0, 16);
  const cells = [`"${name}"`, `"${known.type}"`, `"${digest}"`, HASHED.test(name), place(plain)];
  if (known.isText) {
    const brotli = { params: { [constants.BROTLI_PARAM_SIZE_HINT]: plain.length } }; // the best quality by default
    cells.push(placeIfSmaller(gzipSync(plain, { level: 9 }), plain));
    cells.push(placeIfSmaller(brotliCompressSync(plain, brotli), plain));
  } else {
    cells.push('{}', '{}');
  }
  return `    {${cells.join(', ')}},`;
}

// In the order of the names' bytes, which the binary search relies on.
const rows = readdirSync(bundle).sort().map(rowOf);

const binary = resolve(folder, 'Assets.bin');
writeFileSync(binary, Buffer.concat(parts));
writeFileSync(
  join(folder, 'Assets.cpp'),
  `#include "controller/web/Assets.h"

#include <algorithm>
#include <iterator>

// A literal of this length is slow to compile, and longer than the standard asks every compiler to take.
asm(R"(
    .pushsection .rodata
    .hidden controller_web_assets
    .global controller_web_assets
controller_web_assets:
    .incbin ${JSON.stringify(binary)}
    .popsection
)");
extern "C" const char kBytes[${length}] asm("controller_web_assets") __attribute__((visibility("hidden")));

namespace controller {

namespace {

constexpr Asset kAssets[] = {
${rows.join('\n')}
};

} // namespace

const Asset* FindAsset(std::string_view name) noexcept {
    const auto* const found =
        std::lower_bound(std::begin(kAssets), std::end(kAssets), name,
                         [](const Asset& asset, std::string_view wanted) { return asset.name < wanted; });
    return found != std::end(kAssets) && found->name == name ? found : nullptr;
}

} // namespace controller
`,
);
