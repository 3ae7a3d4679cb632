// Where the show's sound goes, and the time that is heard.
//
// Sound is mixed a quarter of a second ahead and handed to Web Audio in buffers that begin exactly
// where the one before ends. A speaker counts audio frames from the show's first one. When the page
// stalls for longer than that, the sound stops, and the audio frames that were not mixed in time are heard
// later: nothing is left out, so what the show does stays with its sound.

export const mixRate = 44100; // audio frames a second, as in sound/mixer.h

const ahead = 0.25; // seconds
const bufferLength = 1024; // audio frames
const safety = 0.02; // seconds between now and the earliest moment for a buffer to begin

// Through Web Audio. Pausing holds the sound and its time.
export class Speaker {
    // A browser makes sound only after a click or a key, so this is to be called from its event.
    // Throws an error where there is no Web Audio.
    constructor(context = new AudioContext({ sampleRate: mixRate, latencyHint: 'interactive' })) {
        this.context = context;
        this.gain = null;
    }

    // From here on, audio frames of a new show; what was to be heard of an older one is dropped.
    begin() {
        this.gain?.disconnect();
        this.gain = this.context.createGain();
        this.gain.connect(this.context.destination);
        this.fed = 0; // audio frames
        this.zero = null; // the context's time at which audio frame 0 is played
        this.stalls = 0;
    }

    // Mixes what will be heard soon.
    feed(show) {
        const { context } = this;
        this.zero ??= context.currentTime + safety;
        const next = this.zero + this.fed / mixRate;
        if (next < context.currentTime) {
            this.zero += context.currentTime + safety - next;
            ++this.stalls;
        }
        while (this.zero + this.fed / mixRate < context.currentTime + ahead) {
            const buffer = context.createBuffer(2, bufferLength, mixRate);
            show.mix(bufferLength).forEach((samples, channel) => {
                buffer.copyToChannel(samples, channel);
            });
            const source = context.createBufferSource();
            source.buffer = buffer;
            source.connect(this.gain);
            source.start(this.zero + this.fed / mixRate);
            this.fed += bufferLength;
        }
    }

    // The audio frame that leaves the loudspeaker now; negative before the first one.
    get heard() {
        if (this.zero === null) {
            return -1;
        }
        const { context } = this;
        const latency = context.outputLatency || context.baseLatency || 0;
        return Math.min((context.currentTime - latency - this.zero) * mixRate, this.fed);
    }

    async pause() {
        await this.context.suspend();
    }

    async resume() {
        await this.context.resume();
    }

    close() {
        this.gain?.disconnect();
        this.context.close().catch(() => {});
    }
}

// In place of a speaker where nothing can be heard: the clock drives the show, and what is mixed is
// dropped.
export class Silence {
    begin(heard = 0) {
        this.fed = 0;
        this.before = heard; // audio frames up to the moment `since`
        this.since = null; // null while it pauses
        this.stalls = 0;
    }

    // With the show at audio frame `heard`, of which `fed` were mixed already.
    takeOver(heard, fed) {
        this.begin(Math.max(heard, 0));
        this.fed = fed;
        this.since = performance.now();
    }

    feed(show) {
        this.since ??= performance.now();
        while (this.fed < this.heard + ahead * mixRate) {
            show.mix(bufferLength);
            this.fed += bufferLength;
        }
    }

    get heard() {
        const elapsed = this.since === null ? 0 : performance.now() - this.since;
        return this.before + (elapsed / 1000) * mixRate;
    }

    async pause() {
        this.before = this.heard;
        this.since = null;
    }

    async resume() {
        this.since = performance.now();
    }

    close() {}
}
