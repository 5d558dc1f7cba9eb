// The real program with the demo house, on a free port, in a folder of its own.
import {spawn} from "node:child_process";
import {once} from "node:events";
import {mkdtempSync, rmSync} from "node:fs";
import {tmpdir} from "node:os";
import {join} from "node:path";
import {createInterface} from "node:readline";
import WebSocket from "ws";

export class Controller {
    static async start() {
        const controller = new Controller();
        controller.folder = mkdtempSync(join(tmpdir(), "controller-api-"));
        controller.process = spawn(process.env.CONTROLLER, ["--port", "0", "--stay"], {
            env: {...process.env, XDG_STATE_HOME: controller.folder},
            stdio: ["ignore", "pipe", "inherit"],
        });
        for await (const line of createInterface(controller.process.stdout)) {
            const found = /http:\/\/\S+\//.exec(line);
            if (found) {
                controller.base = found[0].slice(0, -1);
                break;
            }
        }
        controller.process.stdout.resume();
        return controller;
    }

    async stop() {
        this.process.kill("SIGTERM");
        const [status] = await once(this.process, "exit");
        rmSync(this.folder, {recursive: true});
        return status;
    }

    async ask(method, path, body, headers = {}) {
        const isRaw = typeof body === "string" || body instanceof Uint8Array;
        const reply = await fetch(this.base + path, {
            method,
            headers: {...(body === undefined || isRaw ? {} : {"Content-Type": "application/json"}), ...headers},
            body: body === undefined || isRaw ? body : JSON.stringify(body),
        });
        const text = await reply.text();
        const isJson = /json/.test(reply.headers.get("content-type") ?? "");
        return {status: reply.status, headers: reply.headers, text, body: isJson ? JSON.parse(text) : undefined};
    }

    // A socket whose messages are kept, and waited for with `next`.
    async watch(path) {
        const socket = new WebSocket(this.base.replace("http", "ws") + path);
        const messages = [];
        const waiting = [];
        socket.on("message", (text) => {
            const message = JSON.parse(text);
            const waiter = waiting.shift();
            if (waiter) waiter(message);
            else messages.push(message);
        });
        await once(socket, "open");
        const next = () => new Promise((resolve) => {
            if (messages.length > 0) resolve(messages.shift());
            else waiting.push(resolve);
        });
        const until = async (type) => {
            for (;;) {
                const message = await next();
                if (message.type === type) return message;
            }
        };
        return {socket, next, until};
    }
}
