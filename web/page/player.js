// Plays the show on a canvas: brings the program, its sound, the display's frames and the clock
// together, and knows nothing of the rest of the page, which listens for these events:
//
//   'state'    the state has changed, see below
//   'frame'    a frame of the show is over
//   'scene'    the music has chosen another scene
//   'silent'   there is no sound any more, or there never was
//   'failed'   the show could not go on; `player.error` says why

import { Painter } from './painter.js';
import { Show } from './show.js';
import { Silence, Speaker, mixRate } from './sound.js';
import { Clock, Pacer } from './time.js';

const patience = 2000; // milliseconds that a sound device may take to begin, or to go on

// States: 'still', until the first play and after the end; 'starting', 'playing', 'paused'. A hidden
// page pauses, and goes on when it is seen again.
export class Player extends EventTarget {
    // `loading` is what load() of load.js returns; a start before it has arrived waits for it. Throws
    // an error if there is no WebGL 2.
    constructor(canvas, loading) {
        super();
        this.loading = loading;
        this.painter = new Painter(canvas);
        this.painter.onRestored = () => this.redraw();
        this.clock = new Clock();
        this.pacer = new Pacer();
        this.state = 'still';
        this.error = null;
        this.show = null;
        this.facts = null; // until the data has come
        this.speaker = null;
        this.startSeconds = 0;
        this.attempt = 0;
        this.isHiddenPause = false;
        this.prepare();
        document.addEventListener('visibilitychange', () => this.onVisibility());
    }

    // Where the show is, in seconds from its beginning, whatever scene it was started with.
    get seconds() {
        return this.startSeconds + (this.show ? this.clock.seconds : 0);
    }

    // The beginning is made ready ahead, so that a click plays at once.
    prepare() {
        this.prepared = this.startShow(0);
        this.prepared.catch(() => {}); // comes up again when it is played
    }

    async startShow(startScene) {
        const { program, files, facts } = await this.loading;
        const show = await Show.start(program, files, startScene);
        this.facts = facts;
        return show;
    }

    secondsOf(startScene) {
        return this.facts?.scenes.find(({ start }) => start === startScene).seconds ?? 0;
    }

    takeShow(startScene) {
        if (startScene !== 0 || !this.prepared) {
            return this.startShow(startScene);
        }
        const { prepared } = this;
        this.prepared = null;
        return prepared;
    }

    // Plays from a start scene on, 0 being the beginning, also while another one plays. To be called
    // from the event of a click or a key, or there may be no sound.
    async play(startScene) {
        const attempt = ++this.attempt;
        this.error = null;
        this.openSpeaker();
        this.speaker.begin();
        if (this.state === 'still') {
            this.painter.clear(); // of the last frame of the show before
        }
        this.show = null;
        this.startSeconds = this.secondsOf(startScene);
        this.isHiddenPause = false;
        this.setState('starting');
        try {
            const show = await this.takeShow(startScene);
            if (attempt === this.attempt) { // no other start came meanwhile
                this.begin(show);
            }
        } catch (error) {
            if (attempt === this.attempt) {
                this.fail(error);
            }
        }
    }

    begin(show) {
        this.show = show;
        this.scene = null;
        this.painter.forgetPictures();
        this.clock.reset();
        this.heardAt = { audioFrame: -1, since: performance.now() };
        this.setState('playing');
        if (document.hidden) {
            this.onVisibility();
        }
        this.requestFrame();
    }

    // After silence, another speaker is tried when the viewer comes back from the still picture.
    openSpeaker() {
        if (this.speaker instanceof Speaker || (this.speaker && this.state !== 'still')) {
            this.speaker.resume().catch(() => {});
            return;
        }
        try {
            this.speaker = new Speaker();
            this.speaker.resume().catch(() => {});
        } catch {
            this.speaker = new Silence();
            this.dispatchEvent(new Event('silent'));
        }
    }

    pause() {
        if (this.state === 'playing') {
            this.setState('paused');
            this.clock.hold();
            return this.speaker.pause();
        }
        return undefined;
    }

    async resume() {
        if (this.state === 'paused') {
            this.isHiddenPause = false;
            this.setState('playing');
            this.heardAt = { audioFrame: -1, since: performance.now() };
            this.requestFrame();
            await this.speaker.resume();
        }
    }

    // Ends the show; the canvas is left as it is.
    stop() {
        if (this.state === 'still') {
            return;
        }
        ++this.attempt;
        this.show = null;
        this.isHiddenPause = false;
        this.speaker.begin();
        this.speaker.pause();
        this.setState('still');
        if (!this.prepared && !this.error) {
            this.prepare();
        }
    }

    fail(error) {
        this.error = error;
        this.stop();
        this.dispatchEvent(new Event('failed'));
    }

    setState(state) {
        if (this.state !== state) {
            this.state = state;
            this.dispatchEvent(new Event('state'));
        }
    }

    onVisibility() {
        if (document.hidden) {
            if (this.state === 'playing') {
                this.pause();
                this.isHiddenPause = true;
            }
        } else if (this.isHiddenPause) {
            this.resume();
        }
    }

    // At most one request is under way.
    requestFrame() {
        this.requested ??= requestAnimationFrame((now) => {
            this.requested = null;
            this.onFrame(now);
        });
    }

    onFrame(now) {
        if (this.state !== 'playing') {
            return;
        }
        this.requestFrame();
        if (!this.pacer.isDue(now)) {
            return;
        }
        try {
            this.drawFrame(performance.now());
        } catch (error) {
            this.fail(error);
        }
    }

    drawFrame(now) {
        const { show } = this;
        this.speaker.feed(show);
        this.watchSound(now);
        const { heard } = this.speaker;
        if (heard < 0) {
            return; // the first sound is on its way
        }
        const seconds = this.clock.follow(now, heard / mixRate);
        const hasPicture = show.frame(seconds, Math.min(seconds * mixRate, show.mixed - 1));
        if (hasPicture) {
            this.painter.draw(show.picture);
        }
        this.dispatchEvent(new Event('frame'));
        if (show.scene !== this.scene) {
            this.scene = show.scene;
            this.dispatchEvent(new Event('scene'));
        }
        if (show.hasEnded) {
            this.stop();
        }
    }

    // A sound device that stands still for long is given up; the show goes on without it.
    watchSound(now) {
        const audioFrame = this.speaker.heard;
        if (audioFrame !== this.heardAt.audioFrame) {
            this.heardAt = { audioFrame, since: now };
        } else if (now - this.heardAt.since > patience) {
            const silence = new Silence();
            silence.takeOver(audioFrame, this.speaker.fed);
            this.speaker.close();
            this.speaker = silence;
            this.dispatchEvent(new Event('silent'));
        }
    }

    // The canvas has another size, or is empty again.
    redraw() {
        if (this.show) {
            this.painter.draw(this.show.picture);
        }
    }

    resize(width, height) {
        this.painter.resize(width, height);
        this.redraw();
    }
}
