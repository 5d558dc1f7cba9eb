// Holds what the program takes and gives against its own description.
import Ajv from 'ajv/dist/2020.js';
import addFormats from 'ajv-formats';

// The description lets replies grow; here nothing is given that it does not name.
function close(schema) {
  if (schema === null || typeof schema !== 'object') return;
  if (schema.properties && schema.additionalProperties === undefined) schema.additionalProperties = false;
  Object.values(schema).forEach(close);
}

export class Contract {
  faults = [];
  seen = new Set();

  constructor(document) {
    close(document.components.schemas);
    this.ajv = addFormats(new Ajv({ strict: false }));
    this.ajv.addSchema(document, 'api');
    this.operations = Object.entries(document.paths).flatMap(([path, methods]) =>
      Object.entries(methods).map(([method, operation]) => ({
        ...operation,
        method: method.toUpperCase(),
        pattern: new RegExp(`^${path.replace(/\{\w+\}/g, '[^/]+')}$`),
      })),
    );
  }

  find(method, path) {
    const [plain] = path.split('?');
    return this.operations.find((one) => one.method === method && one.pattern.test(plain));
  }

  check(what, content, value) {
    const schema = content?.['application/json']?.schema ?? content?.['application/problem+json']?.schema;
    const isRight = schema.$ref === undefined || this.ajv.validate({ $ref: `api${schema.$ref}` }, value);
    if (!isRight) this.faults.push(`${what}: ${this.ajv.errorsText()} in ${JSON.stringify(value)}`);
  }

  reply(method, path, sent, { status, body }) {
    const operation = this.find(method, path);
    if (operation === undefined || body === undefined) return;
    const reply = operation.responses[status] ?? operation.responses.default;
    this.check(`${status} of ${method} ${path}`, reply.content, body);
    if (body.code === 'other') this.faults.push(`a problem without a code of its own: ${JSON.stringify(body)}`);
    if (status >= 300) return;
    this.seen.add(operation.operationId);
    if (operation.requestBody !== undefined && typeof sent === 'object' && !(sent instanceof Uint8Array))
      this.check(`${method} ${path} takes`, operation.requestBody.content, sent);
  }

  message(path, message) {
    const operation = this.find('GET', path);
    this.seen.add(operation.operationId);
    this.check(`message of ${path}`, operation.responses[101].content, message);
  }

  // Operations whose reply is JSON, and has not been seen.
  unseen() {
    const isJson = (operation) =>
      Object.values(operation.responses).some((reply) => reply.content?.['application/json'] !== undefined);
    return this.operations
      .filter((one) => isJson(one) && !this.seen.has(one.operationId))
      .map((one) => one.operationId);
  }
}
