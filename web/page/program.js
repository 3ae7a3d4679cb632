// The compiled program and its runtime.

import createKso from './kso.js';

// A new instance of the program. `say` gets the lines that it prints.
export function instantiate(program, say = () => {}) {
    // The runtime by itself would wait for ever when an instance is refused, as for want of memory.
    return new Promise((resolve, reject) => {
        createKso({
            print: say,
            printErr: say,
            instantiateWasm(imports, receive) {
                WebAssembly.instantiate(program, imports).then(receive).catch(reject);
                return {};
            },
        }).then(resolve, reject);
    });
}
