// A worker that unpacks the show's data: gets the program, the packed bytes and the list of files,
// and posts each file as { name, file }, without a file if it was damaged.

import { instantiate } from './program.js';

onmessage = async ({ data: { program, list, bytes } }) => {
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
};
