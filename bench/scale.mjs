// A house of a thousand rooms and a thousand screens, and one of two hundred rooms whose outputs are GStreamer's.
import {once} from "node:events";
import {readFileSync, readdirSync} from "node:fs";
import {createRequire} from "node:module";
import {House} from "../tests/system/harness/house.mjs";
import {Zone} from "../tests/system/harness/multicast.mjs";
import {clip, heard, rate} from "../tests/system/harness/sounds.mjs";
import {fanOut, firstSample, isQuick, median, now, pipedRoom, repeat, row, sleep} from "./measuring.mjs";

const WebSocket = createRequire(new URL("../tests/system/package.json", import.meta.url))("ws");
const plays = isQuick ? 2 : 5;
const sound = clip(rate);
const many = (count, make) => Array.from({length: count}, (_, index) => make(index));

// By name of the program's threads, without the numbers in it, how many there are.
export function threadsOf(pid) {
    const names = {};
    for (const task of readdirSync(`/proc/${pid}/task`)) {
        try {
            const name = readFileSync(`/proc/${pid}/task/${task}/comm`, "utf8").trim().replace(/\d+/g, "");
            names[name] = (names[name] ?? 0) + 1;
        } catch {
            // It has ended meanwhile.
        }
    }
    return names;
}

// Seconds of processor time that the program has spent.
export function spentBy(pid) {
    const fields = readFileSync(`/proc/${pid}/stat`, "latin1").replace(/^.*\) /, "").split(" ");
    return (Number(fields[11]) + Number(fields[12])) / 100;
}

// Milliseconds of processor time of the driver thread, which is the program's first.
const spentByDriver = (pid) => Number(readFileSync(`/proc/${pid}/task/${pid}/schedstat`, "utf8").split(" ")[0]) / 1e6;

// The longest stays on the driver thread that the program has named, in milliseconds: those over 50 ms.
const stays = (output) => [...output.matchAll(/was busy for (\d+) ms with (.*)/g)].map(([, time, what]) => ({time: Number(time), what}));

class Zones {
    sources = new Map(); // by stream: how many packets, and when the first one came

    static async open(count) {
        const zones = new Zones();
        // A socket holds some hundred packets, so that none of them may get more than 25 at a time.
        zones.sockets = await Promise.all(many(count, () => Zone.open("239.255.85.1", (bytes) => zones.#take(bytes))));
        return zones;
    }

    #take(bytes) {
        const stream = bytes.readUInt32BE(8);
        const known = this.sources.get(stream);
        if (known) ++known.count;
        else this.sources.set(stream, {first: now(), count: 1});
    }

    address(index) {
        return this.sockets[index % this.sockets.length].address;
    }

    close() {
        this.sockets.forEach((socket) => socket.close());
    }
}

async function screensOf(house, count) {
    const screens = many(count, (index) => new WebSocket(`${house.base.replace("http", "ws")}/api/navigators/${index + 2001}/events`));
    await Promise.all(screens.map((screen) => once(screen, "open")));
    return screens;
}

// Done when each of the screens has the popup that comes next.
const popupsOn = (screens) => Promise.all(screens.map((screen) => new Promise((resolve) => {
    const look = (text) => {
        if (!text.includes("\"popup_shown\"")) return;
        screen.off("message", look);
        resolve();
    };
    screen.on("message", look);
})));

async function onePlay(house, id, zones, screens, number) {
    zones.sources.clear();
    const events = await house.watch();
    const popups = popupsOn(screens);
    const before = spentBy(house.process.pid);
    const driverBefore = spentByDriver(house.process.pid);
    await house.play(id);
    await popups;
    const driverSpent = spentByDriver(house.process.pid) - driverBefore;
    await events.until("sound_started");
    const threads = threadsOf(house.process.pid);
    const files = readdirSync(`/proc/${house.process.pid}/fd`).length;
    await events.until("announcement_ended");
    const spent = spentBy(house.process.pid) - before;
    const first = [...zones.sources.values()].map((source) => source.first);
    const counts = [...zones.sources.values()].map((source) => source.count);
    const recordings = house.rooms.flatMap((room, index) => room.output?.file ? [heard(house.recording(index + 1, number), sound, 100)] : []);
    const {rooms} = await house.get("/api/rooms");
    events.socket.terminate();
    return {
        spent, driverSpent, threads, files,
        spread: Math.max(...first) - Math.min(...first), zones: counts.filter((count) => count === 70).length,
        whole: recordings.filter((one) => one.isWhole).length,
        steps: new Set(recordings.map((one) => one.first)).size,
        trouble: rooms.filter((room) => room.trouble).map((room) => `${room.name}: ${room.trouble}`),
    };
}

// 900 zones, and a hundred rooms of the other kinds.
export async function thousand() {
    const zones = await Zones.open(40);
    const others = [...many(60, () => ({output: "silent"})), ...many(30, (index) => ({output: {file: `takes/${901 + 60 + index}-%n.wav`}})),
        ...many(10, () => ({output: {gstreamer: "fakesink sync=true"}}))];
    const rooms = [...many(900, (index) => ({output: {multicast: zones.address(index), interface: "lo"}})), ...others];
    const house = new House(rooms, "", `navigators:\n${many(1000, (index) => `  - {id: ${index + 2001}, name: Screen ${index + 1}, room: ${index + 1}}\n`).join("")}`);
    try {
        house.sound("clip", sound);
        await house.start();
        const id = await house.add({audio: {file: "clip", delay_ms: 200}, rooms: many(1000, (index) => ({id: index + 1, volume: 100})),
            navigators: many(1000, (index) => ({id: index + 2001, room: index + 1})), video: {text: "Dinner is ready", timeout_ms: 3000}});
        // Nobody listens to the zones meanwhile: screens and loudspeakers are machines of their own in a house.
        const shown = fanOut(house, "2001-3000", id, plays);
        row("1,000 rooms: the last of 1,000 popups", median(shown), "ms", "<= 60 ms", median(shown) <= 60, `most ${Math.max(...shown).toFixed(0)} ms`);
        await sleep(1000); // What the sockets still hold of those plays is not of the next ones.
        const screens = await screensOf(house, 1000);
        const played = await repeat(plays, (index) => onePlay(house, id, zones, screens, plays + index + 1));
        // What it would take on a machine that does nothing else; who shows the screens here takes a processor, too.
        const driverSpent = median(played.map((play) => play.driverSpent));
        row("1,000 rooms: the driver thread until then", driverSpent, "ms", "<= 60 ms", driverSpent <= 60, "processor time");
        const troubles = played.flatMap((play) => play.trouble);
        row("1,000 rooms: rooms in trouble", troubles.length, "", "none", troubles.length === 0, troubles[0] ?? `${plays} plays`);
        const zonesWhole = Math.min(...played.map((play) => play.zones));
        row("1,000 rooms: whole zones", zonesWhole, "of 900", "all", zonesWhole === 900,
            `first packets within ${median(played.map((play) => play.spread)).toFixed(1)} ms`);
        const whole = Math.min(...played.map((play) => play.whole));
        row("1,000 rooms: whole recordings", whole, "of 30", "all, in step", whole === 30 && played.every((play) => play.steps === 1),
            `${Math.max(...played.map((play) => play.steps))} moments of beginning`);
        const stay = stays(house.output).sort((one, other) => other.time - one.time)[0] ?? {time: 0, what: "nothing over 50 ms"};
        row("1,000 rooms: longest stay on the driver thread", stay.time, "ms", "<= 50 ms", stay.time === 0, stay.what);
        row("1,000 rooms: processor time of an announcement", median(played.map((play) => play.spent)), "s", "", true,
            `${Object.values(played[0].threads).reduce((sum, count) => sum + count)} threads, ${played[0].files} descriptors`);
        screens.forEach((screen) => screen.terminate());
    } finally {
        zones.close();
        await house.remove();
    }
}

// Rooms of GStreamer's, ten of which are listened to.
export async function twoHundred() {
    const heardRooms = many(10, (index) => pipedRoom(`of-200-${index}`));
    const house = new House([...many(190, () => ({output: {gstreamer: "fakesink sync=true"}})), ...heardRooms.map(({output}) => ({output}))], "", "");
    try {
        house.sound("clip", sound);
        await house.start();
        const own = readFileSync(`/proc/${house.process.pid}/comm`, "utf8").trim();
        const idle = threadsOf(house.process.pid)[own];
        const id = await house.add({audio: {file: "clip", delay_ms: 200}, rooms: many(200, (index) => ({id: index + 1, volume: 100}))});
        const played = await repeat(plays, async () => {
            const events = await house.watch();
            const hearing = Promise.all(heardRooms.map(({pipe}) => firstSample(pipe)));
            const before = spentBy(house.process.pid);
            const start = now();
            await house.play(id);
            const moments = await hearing;
            const threads = threadsOf(house.process.pid);
            await events.until("announcement_ended");
            events.socket.terminate();
            return {first: Math.max(...moments) - start, threads: (threads[own] - idle) / 200, spent: spentBy(house.process.pid) - before};
        });
        const first = median(played.map((play) => play.first));
        row("200 rooms of GStreamer: command to first sample", first, "ms", "<= 376 ms", first <= 376,
            `200 of them the announcement's delay; ${median(played.map((play) => play.spent)).toFixed(2)} s of processor time`);
        const threads = Math.max(...played.map((play) => play.threads));
        row("200 rooms of GStreamer: own threads a room", threads, "", "<= 0.5", threads <= 0.5);
    } finally {
        await house.remove();
    }
}
