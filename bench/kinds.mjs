// What each kind of room is like: when it is heard, how soon everything is as before, what fifty of it cost, how far apart
// they are. A kind is an entry of `kinds`; it gives
//   skip      why it cannot be measured here, if so
//   buffer    milliseconds that it takes by its own nature, beyond the agent's delays
//   most      of its rooms are measured where 50 would mostly measure who hears them
//   open      makes what its rooms are heard by: `rooms` gives the house file's lines of so many, `env` what the program is
//             to know, `rest` the house's screens, `ready` waits until they can be played on, `hear` from before the
//             command until the end gives a moment of the first sample for each room, `heard` gives those instead from
//             what is there after the end, `restored` waits until what is not the controller's own is as before, `close`
//             ends it all.
import {spawn} from "node:child_process";
import {writeFileSync} from "node:fs";
import {join} from "node:path";
import {HomeAssistant} from "../tests/system/harness/home-assistant.mjs";
import {Zone, isHeardHere} from "../tests/system/harness/multicast.mjs";
import {SnapcastServer, isInstalled as hasSnapcast} from "../tests/system/harness/snapcast.mjs";
import {SoundServer, announcement, kinds as servers, levels, sink, tone} from "../tests/system/harness/sound-server.mjs";
import {clip, heard, rate} from "../tests/system/harness/sounds.mjs";
import {spentBy} from "./scale.mjs";
import {firstSample, inHouse, isQuick, median, now, pipedRoom, repeat, rows, scratch, sleep} from "./measuring.mjs";

const plays = isQuick ? 3 : 10;
const delay = 200;
const settling = 2000; // the agent's, before it gives rooms back
const snapcastBuffer = 400;
const many = (count, make) => Array.from({length: count}, (_, index) => make(index));

// The moment of the first packet that is no silence, in a zone of u-law.
async function zoneOf(number) {
    const zone = {first: undefined};
    const listener = await Zone.open(`239.255.85.${number + 1}`, (bytes) => {
        if (zone.first === undefined && bytes.subarray(12).some((code) => code !== 0xff)) zone.first = now();
    });
    return Object.assign(zone, {address: listener.address, close: () => listener.close()});
}

const kinds = {
    silent: {buffer: 0, open: async () => ({
        rooms: (count) => many(count, () => ({output: "silent"})),
        // Nobody hears it: what counts is when the program says that it has begun.
        hear: async (house, events) => {
            await events.until("sound_started");
            return [now()];
        },
    })},
    file: {buffer: 0, open: async () => ({
        rooms: (count) => many(count, () => ({})),
        // A recording begins when the room opens, and says how much later the sound does.
        heard: (house, take, begun) => house.rooms.map((_, index) => begun + heard(house.recording(index + 1, take), clip(rate), 100).first * 1000 / rate),
    })},
    gstreamer: {buffer: 0, open: async () => {
        const pipes = [];
        return {
            rooms: (count) => many(count, (index) => {
                const {pipe, output} = pipedRoom(`kind-${count}-${index}`);
                pipes.push(pipe);
                return {output};
            }),
            hear: () => Promise.all(pipes.map(firstSample)),
        };
    }},
    multicast: {skip: await isHeardHere() ? "" : "this machine sends no multicast to itself", buffer: 200, open: async () => {
        const zones = await Promise.all(many(50, zoneOf));
        return {
            rooms: (count) => zones.slice(0, count).map(({address}) => ({output: {multicast: address, interface: "lo"}})),
            hear: async (house, events) => {
                zones.forEach((zone) => { zone.first = undefined; });
                await events.until("announcement_ended");
                return zones.flatMap(({first}) => first ?? []);
            },
            close: () => zones.forEach((zone) => zone.close()),
        };
    }},
    // Its buffer: pulsesink's, and that of who records it.
    ...Object.fromEntries(Object.entries(servers).map(([name, isInstalled]) => [`pulse, ${name}`, {
        skip: isInstalled ? "" : `${name} is not installed`, buffer: 200, open: () => openServer(name)}])),
    snapcast: {skip: hasSnapcast ? "" : "Snapcast is not installed", buffer: snapcastBuffer, most: 2, open: openSnapcast},
    // Named so far ahead that the pages have it by then.
    page: {buffer: 400, open: openPages},
    // Until its house is told; what players take is theirs.
    home_assistant: {buffer: 0, open: openHomeAssistant},
};

// Reads the sink back; `first` is the moment when the announcement was heard after it had been set to undefined.
function recorderOf(server) {
    const recorder = {first: undefined};
    const width = 2 * rate / 50;
    let rest = Buffer.alloc(0);
    const program = spawn("parec", [`--device=${sink}.monitor`, "--raw", "--format=s16le", `--rate=${rate}`, "--channels=1", "--latency-msec=10"],
        {env: server.env, stdio: ["ignore", "pipe", "ignore"]});
    program.stdout.on("data", (bytes) => {
        rest = Buffer.concat([rest, bytes]);
        for (; rest.length >= width; rest = rest.subarray(width)) {
            const [level] = levels(new Int16Array(new Uint8Array(rest.subarray(0, width)).buffer), announcement);
            if (recorder.first === undefined && level > -30) recorder.first = now();
        }
    });
    return Object.assign(recorder, {close: () => program.kill()});
}

// Rooms of one sink over which music plays.
async function openServer(name) {
    const server = new SoundServer(name);
    await server.start();
    await server.play("music", 400, {seconds: 300});
    const full = server.volume("music");
    const recorder = recorderOf(server);
    return {
        env: {PULSE_SERVER: server.address},
        rooms: (count) => many(count, () => ({output: `pulse: ${sink}`})),
        hear: async (house, events) => {
            recorder.first = undefined;
            await events.until("announcement_ended");
            return [recorder.first];
        },
        restored: async () => {
            while (server.volume("music") !== full) await sleep(5);
        },
        close: async () => {
            recorder.close();
            await server.remove();
        },
    };
}

// Two clients in one group, whose stream is another one before and after.
async function openSnapcast() {
    const server = await new SnapcastServer({buffer: snapcastBuffer}).start();
    const names = ["kitchen", "bath"];
    const clients = [];
    for (const name of names) clients.push(await server.client(name));
    await server.arrange({kitchen: 100, bath: 80});
    const before = await server.text();
    const firstOf = ({program}) => new Promise((resolve) => {
        const look = (piece) => {
            const bytes = Buffer.from(piece, "latin1");
            for (let at = 0; at + 2 <= bytes.length; at += 2) {
                if (Math.abs(bytes.readInt16LE(at)) <= 1000) continue;
                program.process.stdout.off("data", look);
                resolve(now());
                return;
            }
        };
        program.process.stdout.on("data", look);
    });
    return {
        rooms: (count) => names.slice(0, count).map((name) => ({output: server.room(name)})),
        hear: (house) => Promise.all(clients.slice(0, house.rooms.length).map(firstOf)),
        restored: () => server.untilText(before),
        close: () => server.remove(),
    };
}

// A page without a browser, armed. `heard` is the moment that it was told last, by the clock here: pages are as far apart
// as they are wrong about the controller's clock.
async function openPage(house, id) {
    const page = {};
    const watcher = await house.watch(`/api/navigators/${id}/events`);
    const say = (words) => watcher.socket.send(JSON.stringify(words));
    watcher.socket.on("message", (text) => {
        const {type, data} = JSON.parse(text);
        if (type === "sound_play") void play(data);
    });
    const play = async ({play: number, address, at}) => {
        page.heard = at / 1000 - page.ahead;
        await (await fetch(house.base + address)).arrayBuffer();
        say({play: {play: number, news: "started"}});
    };
    await watcher.until("state");
    let least = Infinity;
    await repeat(5, async (ping) => {
        const sent = now();
        say({ping});
        const {now: theirs} = await watcher.until("pong");
        const taken = now() - sent;
        if (taken < least) page.ahead = theirs / 1000 - sent - taken / 2;
        least = Math.min(least, taken);
    });
    say({armed: true});
    const isArmed = async () => (await house.get("/api/navigators")).navigators.some((one) => one.id === id && one.armed);
    while (!await isArmed()) await sleep(5);
    return page;
}

function openPages() {
    const first = 2001;
    let opened;
    return {
        rest: (count) => `navigators:\n${many(count, (index) => `  - {id: ${first + index}, name: Page ${index}, room: ${index + 1}}\n`).join("")}`,
        rooms: (count) => many(count, () => ({output: "page"})),
        ready: async (house) => {
            opened ??= await Promise.all(house.rooms.map((_, index) => openPage(house, first + index)));
        },
        hear: async (house, events) => {
            await events.until("sound_ended");
            return opened.map(({heard: moment}) => moment);
        },
    };
}

// One player, which all rooms are.
async function openHomeAssistant() {
    const token = "eyJ.long.lived";
    const assistant = await new HomeAssistant(token).start();
    const file = join(scratch, "home-assistant.token");
    writeFileSync(file, token, {mode: 0o600});
    let told;
    assistant.server.on("request", ({url}) => {
        if (url.endsWith("/play_media")) told ??= now();
    });
    return {
        rooms: (count) => many(count, () => ({output: {home_assistant: "media_player.kitchen", url: assistant.url, token_file: file}})),
        hear: async (house, events) => {
            told = undefined;
            await events.until("sound_ended");
            // How far apart they are is up to the players.
            return [told];
        },
        close: () => assistant.stop(),
    };
}

async function onePlay(house, place, id, take) {
    const events = await house.watch();
    await place.ready?.(house);
    const hearing = place.hear?.(house, await house.watch());
    const before = spentBy(house.process.pid);
    const start = now();
    await house.play(id);
    await events.until("sound_ended");
    const ended = now();
    await place.restored?.();
    const back = now();
    await repeat(house.rooms.length, () => events.until("room_restored"));
    const over = now();
    await events.until("announcement_ended");
    const spent = spentBy(house.process.pid) - before;
    const moments = await hearing ?? place.heard(house, take, start);
    events.socket.terminate();
    return {
        first: Math.min(...moments) - start, spread: moments.length > 1 ? Math.max(...moments) - Math.min(...moments) : undefined,
        restored: place.restored ? back - ended : over - ended - settling, spent,
    };
}

async function measure(kind, count) {
    const place = await kind.open();
    let played;
    try {
        await inHouse(place.rooms(count), async (house) => {
            const id = await house.add({audio: {file: "sound", delay_ms: delay}, rooms: many(count, (index) => ({id: index + 1, volume: 100}))});
            const {body} = await house.ask("POST", "/api/rehearsal", {announcement: id, stream_ready_ms: 0});
            const own = body.timeline.find((entry) => entry.what === "sound_started").at_ms;
            played = await repeat(plays, async (index) => {
                const play = await onePlay(house, place, id, index + 1);
                return {...play, first: play.first - own - kind.buffer};
            });
        }, (house) => house.sound("sound", place.env ? tone(announcement, 1) : clip(rate)), {env: place.env, rest: place.rest?.(count)});
    } finally {
        await place.close?.();
    }
    return (what) => {
        const values = played.map((play) => play[what]).filter((value) => value !== undefined);
        return values.length > 0 ? median(values) : undefined;
    };
}

// One row a kind: in milliseconds, but the cost, which is seconds of processor time.
export async function rooms() {
    for (const [name, kind] of Object.entries(kinds)) {
        if (kind.skip) {
            rows.push({what: `a room: ${name}`, measured: "skipped", target: "", verdict: "", beside: kind.skip});
            continue;
        }
        const one = await measure(kind, 1);
        const count = kind.most ?? 50;
        const fifty = await measure(kind, count);
        const spread = fifty("spread");
        rows.push({what: `a room: ${name}`, measured: `${one("first").toFixed(1)} ms`, target: "<= 20 ms", verdict: one("first") <= 20 ? "yes" : "NO",
            beside: `beyond its own ${kind.buffer} ms; as before ${one("restored").toFixed(0)} ms after the end; ` +
                `${count} of it ${fifty("spent").toFixed(2)} s${spread === undefined ? "" : `, ${spread.toFixed(1)} ms apart`}`});
    }
}
