import { createServer } from 'node:http';
import { readFile } from 'node:fs/promises';
import { extname, join, normalize } from 'node:path';

const kTypes = {
  '.css': 'text/css',
  '.html': 'text/html',
  '.js': 'text/javascript',
  '.svg': 'image/svg+xml',
  '.wasm': 'application/wasm',
};

/** Serves folders on this machine: one at "/", others under names. Remembers what was asked for. */
export class PageServer {
  /** Paths that had no file. */
  missing = [];
  #server;

  /** @param {Record<string, string>} folders by prefix, such as {'/': 'build/page'} */
  static async start(folders) {
    const server = new PageServer();
    server.#server = createServer(async (request, response) => {
      const path = normalize(decodeURIComponent(new URL(request.url, 'http://page').pathname));
      const prefix = Object.keys(folders).filter((name) => path.startsWith(name))
        .reduce((a, b) => (a.length > b.length ? a : b));
      const file = join(folders[prefix], path.slice(prefix.length) || 'index.html');
      try {
        const bytes = await readFile(file);
        const type = kTypes[extname(file)] ?? 'application/octet-stream';
        response.writeHead(200, { 'content-type': type, 'cache-control': 'no-store' }).end(bytes);
      } catch {
        server.missing.push(path);
        response.writeHead(404).end();
      }
    });
    await new Promise((resolve) => server.#server.listen(0, '127.0.0.1', resolve));
    return server;
  }

  get address() {
    return `http://127.0.0.1:${this.#server.address().port}`;
  }

  close() {
    this.#server.closeAllConnections();
    this.#server.close();
  }
}
