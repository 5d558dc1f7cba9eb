// How soon announcements are heard, and over.
import {execFileSync} from "node:child_process";
import {createReadStream, readFileSync} from "node:fs";
import {join} from "node:path";
import {clip, rate} from "../tests/system/harness/sounds.mjs";
import {fill, firstSample, inHouse, isQuick, median, now, pipedRoom, quantile, repeat, row, scratch, timed} from "./measuring.mjs";

const plays = isQuick ? 10 : 100;

async function soundLatency(house, pipe, id, count) {
    const {body} = await house.ask("POST", "/api/rehearsal", {announcement: id, stream_ready_ms: 0});
    const own = body.timeline.find((entry) => entry.what === "sound_started").at_ms;
    const events = await house.watch();
    return repeat(count, async () => {
        const heard = firstSample(pipe);
        const start = now();
        await house.play(id);
        const taken = await heard - start - own;
        await events.until("announcement_ended");
        return taken;
    });
}

export async function sound(announcements = 0) {
    const {pipe, output} = pipedRoom(`room-${announcements}`);
    let values;
    await inHouse([{output}], async (house) => {
        const id = await house.add({audio: {file: "click"}, rooms: [{id: 1, volume: 100}]});
        values = await soundLatency(house, pipe, id, announcements === 0 ? plays : 10);
    }, (house) => announcements && fill(house, announcements));
    return values;
}

export async function command() {
    const values = await sound();
    row("command to first sample, p99", quantile(values, 0.99), "ms", "<= 20 ms", quantile(values, 0.99) <= 20,
        `median ${median(values).toFixed(1)} ms, ${values.length} plays`);
}

// From the request to the last sample that can be heard.
async function untilSilence(house, pipe, id) {
    const stream = createReadStream(pipe, {highWaterMark: 4096});
    const events = await house.watch();
    await house.play(id);
    let asked = 0;
    let heard = 0;
    for await (const bytes of stream) {
        let isHeard = false;
        for (let at = 0; at + 2 <= bytes.length; at += 2) isHeard ||= Math.abs(bytes.readInt16LE(at)) > 30;
        if (isHeard) heard = now();
        if (isHeard && asked === 0) {
            asked = now();
            void timed(house, "POST", "/api/stop");
        }
    }
    await events.until("announcement_ended");
    events.socket.terminate();
    return heard - asked;
}

export async function stop() {
    const {pipe, output} = pipedRoom("stopped");
    await inHouse([{output}], async (house) => {
        house.sound("long", clip(rate * 15));
        const id = await house.add({audio: {file: "long", delay_ms: 10}, rooms: [{id: 1, volume: 100}]});
        const values = await repeat(isQuick ? 5 : 20, () => untilSilence(house, pipe, id));
        row("stop to silence", median(values), "ms", "<= 100 ms", median(values) <= 100, "50 ms of them fade");
    });
}

export async function say() {
    const {pipe, output} = pipedRoom("said");
    const agentsOwn = 1000;
    // A spoken sound begins with as much of silence, so that nothing of the first word is cut off.
    const breath = 10;
    await inHouse([{output}], async (house) => {
        const events = await house.watch();
        const said = async (number) => {
            const heard = firstSample(pipe);
            const start = now();
            const text = `Dinner is ready, please come to the table ${number} now`;
            await timed(house, "POST", "/api/say", {text, rooms: [{id: 1, volume: 100}]});
            const taken = await heard - start - agentsOwn - breath;
            await timed(house, "POST", "/api/stop");
            await events.until("announcement_ended");
            return taken;
        };
        const count = isQuick ? 3 : 10;
        await said(0);
        const fresh = await repeat(count, (index) => said(index + 1));
        const kept = await repeat(count, (index) => said(index + 1));
        row("10 words to first sample, not cached", median(fresh), "ms", "<= 150 ms", median(fresh) <= 150, `beyond the agent's second; most ${Math.max(...fresh).toFixed(1)} ms`);
        row("10 words to first sample, cached", median(kept), "ms", "<= 20 ms", median(kept) <= 20, `beyond the agent's second; most ${Math.max(...kept).toFixed(1)} ms`);
    });
}

// From the request to the reply: 20 s of MP3 that become a WAV file of the media folder, measured and on the disk.
export async function conversion() {
    const file = join(scratch, "song.mp3");
    execFileSync("gst-launch-1.0", ["-q", "audiotestsrc", "wave=pink-noise", "samplesperbuffer=4800", "num-buffers=200", "!",
        "audio/x-raw,rate=48000,channels=2", "!", "audioconvert", "!", "lamemp3enc", "!", "filesink", `location=${file}`]);
    const bytes = readFileSync(file);
    await inHouse([{output: "silent"}], async (house) => {
        const values = await repeat(isQuick ? 3 : 9, async () => {
            const start = now();
            // Encoders put silence in front: what is beyond 20 s is cut off.
            const {status, text} = await house.ask("PUT", "/api/media/song.mp3?from_ms=0&to_ms=20000", bytes, {"Content-Type": "audio/mpeg"});
            if (status >= 300) throw new Error(text);
            return now() - start;
        });
        row("20 s of MP3 brought and converted", median(values), "ms", "<= 500 ms", median(values) <= 500, `most ${Math.max(...values).toFixed(1)} ms`);
    });
}
