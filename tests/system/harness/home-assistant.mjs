// A stand-in for Home Assistant with one player, by its documented REST API: a bearer token, states, and the services
// of media players. The player fetches what it is told to play. By itself, with a token as its word, it prints its
// address and every order; tests that kill it run it so.
import { once } from 'node:events';
import { createServer } from 'node:http';
import { createServer as createSecureServer } from 'node:https';
import { fileURLToPath } from 'node:url';

export class HomeAssistant {
  // Each order: service, body, and of what was to be played `sound`, the bytes, and `type`.
  orders = [];
  state = { entity_id: 'media_player.kitchen', state: 'idle', attributes: { friendly_name: 'Kitchen' } };
  told = () => {};

  constructor(token, tls) {
    this.token = token;
    const answer = (request, response) => void this.#answer(request, response);
    this.server = tls ? createSecureServer(tls, answer) : createServer(answer);
    this.scheme = tls ? 'https' : 'http';
  }

  async start(port = 0) {
    await once(this.server.listen(port, '127.0.0.1'), 'listening');
    this.url = `${this.scheme}://127.0.0.1:${this.server.address().port}`;
    return this;
  }

  stop() {
    this.server.closeAllConnections();
    return new Promise((resolve) => this.server.close(resolve));
  }

  // Waits until there are so many orders.
  until(count) {
    const enough = (resolve) => (this.told = () => this.orders.length >= count && resolve());
    const waited = new Promise(enough);
    this.told();
    return waited;
  }

  async #answer(request, response) {
    let body = '';
    for await (const piece of request.setEncoding('utf8')) body += piece;
    const [status, reply] = await this.#reply(request, body);
    const text = typeof reply === 'string' ? reply : JSON.stringify(reply);
    response.writeHead(status, { 'Content-Type': typeof reply === 'string' ? 'text/plain' : 'application/json' });
    response.end(text);
  }

  async #reply({ method, url, headers }, body) {
    if (headers.authorization !== `Bearer ${this.token}`) return [401, '401: Unauthorized'];
    const [, kind, name, service] = /^\/api\/(states|services)\/([\w.]+)(?:\/(\w+))?$/.exec(url) ?? [];
    if (kind === undefined) return [404, '404: Not Found'];
    if (method !== (kind === 'states' ? 'GET' : 'POST')) return [405, '405: Method Not Allowed'];
    if (kind === 'states')
      return name === this.state.entity_id ? [200, this.state] : [404, { message: 'Entity not found.' }];
    if (name !== 'media_player' || !['play_media', 'media_stop'].includes(service)) return [400, '400: Bad Request'];
    return this.#serve(service, body);
  }

  async #serve(service, body) {
    let order;
    try {
      order = JSON.parse(body);
    } catch {
      return [400, { message: 'Data should be valid JSON.' }];
    }
    const { entity_id: player, media_content_id: address, media_content_type: type } = order;
    const isMeant = typeof player === 'string';
    if (!isMeant || (service === 'play_media') !== (typeof address === 'string' && typeof type === 'string'))
      return [400, '400: Bad Request'];
    // A player that there is not is none to whom anything happens.
    if (player !== this.state.entity_id) return [200, []];
    const played = address === undefined ? {} : await fetched(address);
    this.orders.push({ service, order, ...played });
    this.told();
    return [200, []];
  }
}

// What the player gets; nothing from a controller that is gone.
async function fetched(address) {
  try {
    const reply = await fetch(address);
    const sound = Buffer.from(await reply.arrayBuffer());
    return { status: reply.status, type: reply.headers.get('content-type'), sound };
  } catch {
    return {};
  }
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
  const house = await new HomeAssistant(process.argv[2]).start(Number(process.argv[3] ?? 0));
  console.log(house.url);
  for (let count = 1; ; ++count) {
    await new Promise((resolve) => (house.told = () => house.orders.length >= count && resolve()));
    const { service, status, sound } = house.orders[count - 1];
    console.log(`${count}: ${service} ${status} ${sound?.length}`);
  }
}
