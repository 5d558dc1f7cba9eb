// Announcements run on a clock that nobody can set.
import assert from "node:assert/strict";
import {existsSync, readdirSync, writeFileSync} from "node:fs";
import {join} from "node:path";
import {test} from "node:test";
import {House} from "./house.mjs";
import {clip, heard, rate} from "./sounds.mjs";

const fakeTime = readdirSync("/usr/lib", {withFileTypes: true})
    .map((entry) => join("/usr/lib", entry.name, "faketime/libfaketime.so.1")).find((file) => existsSync(file));
const isSanitized = process.env.SANITIZERS !== undefined && process.env.SANITIZERS !== "";

for (const [direction, shift] of [["back", "-86400"], ["forward", "+86400"]])
    test(`a clock that is set ${direction} by a day changes no announcement and no popup`,
         {skip: !fakeTime ? "there is no libfaketime" : isSanitized && "the sanitizer must come before libfaketime"},
         async () => {
        const house = new House([{}]);
        try {
            const now = join(house.folder, "clock");
            writeFileSync(now, "+0\n");
            house.sound("clip", clip(2 * rate));
            await house.start({env: {LD_PRELOAD: fakeTime, FAKETIME_TIMESTAMP_FILE: now, FAKETIME_NO_CACHE: "1",
                                     FAKETIME_DONT_FAKE_MONOTONIC: "1"}});
            const day = async () => Date.parse((await house.get("/api/history?limit=1")).history[0].started);
            const id = await house.add({audio: {file: "clip"}, rooms: [{id: 1, volume: 100}],
                                        navigators: [{id: 11, room: 1}], video: {text: "Hello", timeout_ms: 3000}});
            const events = await house.watch();
            await house.play(id);
            await events.until("sound_started");
            const start = process.hrtime.bigint();
            writeFileSync(now, `${shift}\n`);
            await events.until("popup_hidden");
            const stood = Number(process.hrtime.bigint() - start) / 1e6;
            assert.ok(stood > 1000 && stood < 3500, `the popup stood for ${stood} ms more`);
            await events.until("announcement_ended");
            const taken = Number(process.hrtime.bigint() - start) / 1e6;
            assert.ok(taken < 20000, `it took ${taken} ms`);
            assert.deepEqual(await house.volumes(), [40]);
            await house.playToItsEnd(id);
            assert.ok(Math.abs(await day() - Date.now() - Number(shift) * 1000) < 3600000, "the clock was set");
            assert.equal(await house.stop(), 0);
            assert.ok(heard(house.recording(1), clip(2 * rate), 100).isWhole);
        } finally {
            await house.remove();
        }
    });
