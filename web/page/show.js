// The show itself: the compiled program, called through web/page_api.h. Each instance of the program
// plays once, as if it were started from a command line; a jump is a new instance.

import { readFrame } from './painter.js';
import { instantiate } from './program.js';

// Something in the show failed; the message is what the program said.
export class ShowError extends Error {}

export class Show {
    // `program` is a WebAssembly.Module, `files` a Map from names in "data" to bytes, which are not
    // copied. Start scenes are numbered like the program's, from 2 to 7; 0 is the beginning.
    static async start(program, files, startScene, isVirtual = false) {
        const show = new Show();
        await show.open(program, files);
        show.call('Start', startScene, isVirtual ? 1 : 0);
        return show;
    }

    async open(program, files) {
        this.said = [];
        this.kso = await instantiate(program, (line) => this.said.push(line));
        const { FS } = this.kso;
        FS.mkdir('data');
        for (const [name, bytes] of files) {
            FS.createDataFile('data', name, bytes, true, false, true);
        }
    }

    // A call of the page's interface. When the program ends in the middle of it, that is an error.
    call(name, ...numbers) {
        try {
            return this.kso[`_page${name}`](...numbers);
        } catch (error) {
            const said = this.said.join(' ').replace(/\s+/g, ' ').trim();
            throw new ShowError(said || String(error), { cause: error });
        }
    }

    get memory() {
        return this.kso.HEAPU8.buffer;
    }

    // Both channels of the next audio frames; good until the next call.
    mix(count) {
        return this.channels(this.call('Mix', count), count);
    }

    get mixed() {
        return this.call('Mixed');
    }

    // The audio frame of the events that came last.
    get latestEvent() {
        return this.call('LatestEvent');
    }

    // True if there is a new frame to draw.
    frame(seconds, audioFrame) {
        return this.call('Frame', seconds, audioFrame) !== 0;
    }

    virtualFrame() {
        return this.call('VirtualFrame') !== 0;
    }

    virtualSound() {
        return this.channels(this.call('VirtualSound'), this.call('VirtualSoundLength'));
    }

    channels(address, count) {
        return [new Float32Array(this.memory, address, count),
            new Float32Array(this.memory, address + 4 * count, count)];
    }

    get picture() {
        return readFrame(this.memory, this.call('FrameList'));
    }

    get scene() {
        return this.call('Scene');
    }

    get hasEnded() {
        return this.call('HasEnded') !== 0;
    }
}
