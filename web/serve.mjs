// Serves a folder on the loopback address, as any static web server would.
//
//   node web/serve.mjs FOLDER [PORT]     port 0, the default, takes a free one
import { createReadStream } from 'node:fs';
import { stat } from 'node:fs/promises';
import { createServer } from 'node:http';
import { extname, join, normalize } from 'node:path';
import { fileURLToPath } from 'node:url';

const types = {
    '.html': 'text/html; charset=utf-8',
    '.css': 'text/css; charset=utf-8',
    '.js': 'text/javascript; charset=utf-8',
    '.json': 'application/json',
    '.txt': 'text/plain; charset=utf-8',
    '.wasm': 'application/wasm',
    '.jpg': 'image/jpeg',
    '.png': 'image/png',
    '.svg': 'image/svg+xml',
};

// The file that an address means; an empty name, which is no file's, if it means none.
function fileOf(folder, address) {
    try {
        const path = decodeURIComponent(address.replace(/[?#].*/, ''));
        // Normal paths that begin with a slash cannot climb out of the folder.
        const file = join(folder, normalize(`/${path}`));
        return file.endsWith('/') ? `${file}index.html` : file;
    } catch {
        return ''; // a percent sign without its number
    }
}

// Resolves to the server, which listens; its address is in `link`.
export async function serve(folder, port = 0) {
    const server = createServer(async (request, response) => {
        const file = fileOf(folder, request.url);
        const found = await stat(file).catch(() => null);
        if (!found?.isFile()) {
            response.writeHead(404).end('not here');
            return;
        }
        response.writeHead(200, {
            'Content-Type': types[extname(file)] ?? 'application/octet-stream',
            'Content-Length': found.size,
            'Cache-Control': 'no-cache',
        });
        createReadStream(file).on('error', () => response.destroy()).pipe(response);
    });
    await new Promise((resolve, reject) => {
        server.once('error', reject);
        server.listen(port, '127.0.0.1', resolve);
    });
    server.link = `http://127.0.0.1:${server.address().port}/`;
    return server;
}

if (process.argv[1] === fileURLToPath(import.meta.url)) {
    try {
        const server = await serve(process.argv[2], Number(process.argv[3] ?? 0));
        console.log(`kso: ${server.link} (Ctrl-C ends it)`);
    } catch (error) {
        console.error(`kso: cannot serve: ${error.message}`);
        process.exitCode = 1;
    }
}
