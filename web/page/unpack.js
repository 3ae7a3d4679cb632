// A worker that unpacks the show's data: gets the program, the packed bytes and the list of files,
// and posts each file as { name, file }, without a file if it was damaged, or
// { fault } with what keeps the program from running.

import { instantiate } from './program.js';

async function unpack({ program, list, bytes }) {
    const kso = await instantiate(program);
    for (const { name, first, length } of list) {
        const packed = kso._malloc(length);
        kso.HEAPU8.set(bytes.subarray(first, first + length), packed);
        const size = kso._pageUnpack(packed, length);
        kso._free(packed);
        if (size < 0) {
            postMessage({ name });
            return;
        }
        const address = kso._pageUnpacked();
        const file = kso.HEAPU8.slice(address, address + size);
        postMessage({ name, file }, [file.buffer]);
    }
}

onmessage = ({ data }) => {
    unpack(data).catch((error) => postMessage({ fault: String(error) }));
};
