// What the parts of the controller's bench have in common: houses, clocks, and the rows of the table.
import {execFileSync} from "node:child_process";
import {once} from "node:events";
import {createReadStream, mkdtempSync, writeFileSync} from "node:fs";
import {Agent, request} from "node:http";
import {tmpdir} from "node:os";
import {join} from "node:path";
import {House} from "../tests/system/harness/house.mjs";
import {clip, rate} from "../tests/system/harness/sounds.mjs";

export const isQuick = process.argv.includes("--quick");
export const rows = [];
export const scratch = mkdtempSync(join(tmpdir(), "controller-bench-"));

export const sleep = (ms) => new Promise((resolve) => setTimeout(resolve, ms));
export const now = () => Number(process.hrtime.bigint()) / 1e6;
export const quantile = (values, share) => [...values].sort((a, b) => a - b)[Math.min(values.length - 1, Math.floor(values.length * share))];
export const median = (values) => quantile(values, 0.5);

export function row(what, value, unit, target, isGood, beside = "") {
    rows.push({what, measured: `${value.toFixed(value < 10 ? 2 : 1)} ${unit}`, target, beside, verdict: isGood ? "yes" : "NO"});
}

// One request over a connection that stays; gives the milliseconds that it took.
const agent = new Agent({keepAlive: true, maxSockets: 1});
export async function timed(house, method, path, body) {
    const text = body === undefined ? "" : JSON.stringify(body);
    const start = now();
    const reply = await new Promise((resolve, reject) => {
        const asked = request(house.base + path, {method, agent, headers: {
            "Content-Length": Buffer.byteLength(text), ...(text && {"Content-Type": "application/json"})}}, resolve);
        asked.on("error", reject).end(text);
    });
    reply.resume();
    await once(reply, "end");
    if (reply.statusCode >= 300) throw new Error(`${method} ${path}: ${reply.statusCode}`);
    return now() - start;
}

const numbers = (program, words) => execFileSync(join(process.env.FAN_OUT, program), words, {encoding: "utf8"}).trim().split("\n").map(Number);

// Milliseconds from the command until the last of a thousand pages, which show these navigators, has its popup.
export const fanOut = (house, navigators, announcement, plays) =>
    numbers("popup_fan_out", [new URL(house.base).port, navigators, `${announcement}`, "1000", `${plays}`]);

// The same of the bare library.
export const bareFanOut = (plays) => numbers("bare_fan_out", ["1000", `${plays}`]);

export async function repeat(count, body) {
    const values = [];
    for (let index = 0; index < count; ++index) values.push(await body(index));
    return values;
}

// `rest`: the house's screens and variables.
export async function inHouse(rooms, body, prepare = () => {}, {rest, ...options} = {}) {
    const house = new House(rooms, "", rest ?? (rooms.length > 10 ? "" : undefined));
    try {
        house.sound("click", clip(rate / 100));
        await prepare(house);
        await house.start(options);
        await body(house);
    } finally {
        await house.remove();
    }
}

// What the room hears comes over a pipe, as it is played; the first sample that is not silent counts.
export async function firstSample(pipe) {
    const stream = createReadStream(pipe, {highWaterMark: 4096});
    try {
        for await (const bytes of stream)
            for (let at = 0; at + 2 <= bytes.length; at += 2)
                if (Math.abs(bytes.readInt16LE(at)) > 1000) return now();
    } finally {
        stream.destroy();
    }
    throw new Error("nothing was heard");
}

// A room whose sound comes over a pipe.
export function pipedRoom(name) {
    const pipe = join(scratch, name);
    execFileSync("mkfifo", [pipe]);
    return {pipe, output: {gstreamer: `audioconvert dithering=none ! audio/x-raw,format=S16LE ! filesink location=${pipe} sync=true buffer-mode=unbuffered`}};
}

export async function fill(house, count) {
    const one = (id) => `<announcement><id>${id}</id><name>Announcement ${id}</name><audio><file>none</file><delay>0</delay></audio>` +
        `<video><file/><text>Text ${id}</text><delay>0</delay><timeout>5000</timeout><OKButton>true</OKButton></video>` +
        "<rooms><room><id>1</id><volume>40</volume></room></rooms><navigators/></announcement>";
    const file = join(house.folder, "first.xml");
    writeFileSync(file, `<announcements>${Array.from({length: count}, (_, index) => one(index + 1)).join("")}</announcements>`);
    const {status, output} = await house.run(["import", house.file, file]);
    if (status !== 0) throw new Error(output);
}
