// The compiled program and its runtime.

import createKso from './kso.js';

// A new instance of the program. `say` gets the lines that it prints.
export function instantiate(program, say = () => {}) {
    return createKso({
        print: say,
        printErr: say,
        instantiateWasm(imports, receive) {
            WebAssembly.instantiate(program, imports).then(receive);
            return {};
        },
    });
}
