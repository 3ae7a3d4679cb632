// Fetches what the show needs: the program, and the data with what is known about it.

// What could not be had, in a sentence for the viewer.
export class LoadError extends Error {}

async function fetched(name) {
    const response = await fetch(new URL(name, import.meta.url)).catch((error) => {
        throw new LoadError(`The server does not answer: ${name} could not be loaded.`, { cause: error });
    });
    if (!response.ok) {
        throw new LoadError(`A part of the show is missing on the server: ${name} (${response.status}).`);
    }
    return response;
}

function broken(name, error) {
    return new LoadError(`A part of the show arrived cut or damaged: ${name}.`, { cause: error });
}

async function fetchFacts() {
    const response = await fetched('show.json');
    return response.json().catch((error) => {
        throw broken('show.json', error);
    });
}

async function fetchProgram() {
    const response = await fetched('kso.wasm');
    const bytes = await response.arrayBuffer().catch((error) => {
        throw broken('kso.wasm', error);
    });
    return WebAssembly.compile(bytes).catch((error) => {
        throw broken('kso.wasm', error);
    });
}

// Tells how much of the bytes has arrived, from 0 to 1.
async function fetchPack(facts, tell) {
    const response = await fetched('show.pack');
    const bytes = new Uint8Array(facts.bytes);
    let length = 0;
    const reader = response.body.getReader();
    for (;;) {
        const { done, value } = await reader.read().catch((error) => {
            throw broken('show.pack', error);
        });
        if (done) {
            break;
        }
        if (length + value.length > bytes.length) {
            throw broken('show.pack');
        }
        bytes.set(value, length);
        length += value.length;
        tell(length / bytes.length);
    }
    if (length !== bytes.length) {
        throw broken('show.pack');
    }
    return bytes;
}

// On a thread of its own, since it takes a second or two.
function unpack(program, facts, bytes) {
    return new Promise((resolve, reject) => {
        const worker = new Worker(new URL('unpack.js', import.meta.url), { type: 'module' });
        const files = new Map();
        const end = (finish, result) => {
            worker.terminate();
            finish(result);
        };
        worker.onerror = (event) => {
            event.preventDefault();
            end(reject, new LoadError('A part of the show is missing on the server: unpack.js.'));
        };
        worker.onmessage = ({ data: { name, file, fault } }) => {
            if (fault) {
                end(reject, new LoadError(`This browser cannot run the show: ${fault}.`));
                return;
            }
            if (!file) {
                end(reject, broken(`${name} in show.pack`));
                return;
            }
            files.set(name, file);
            if (files.size === facts.files.length) {
                end(resolve, files);
            }
        };
        worker.postMessage({ program, list: facts.files, bytes }, [bytes.buffer]);
    });
}

// Resolves to the program (a WebAssembly.Module), the data's files by name, and the facts of
// show.json. Rejects with a LoadError.
export async function load(tell = () => {}) {
    if (typeof WebAssembly !== 'object') {
        throw new LoadError('This browser has no WebAssembly, which the show is compiled to.');
    }
    const coming = fetchProgram();
    coming.catch(() => {}); // comes up again below
    const facts = await fetchFacts();
    const bytes = await fetchPack(facts, tell);
    const program = await coming;
    return { program, facts, files: await unpack(program, facts, bytes) };
}
