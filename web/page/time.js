// The show's clock and its pace.

const frameLength = 1000 / 60; // milliseconds: kicks die away by a step a frame and are composed for this

// Says which of the display's frames to use, so that there are never much more than 60 a second.
export class Pacer {
    // `now` is a frame's moment in milliseconds. A frame may come a little early: displays are not
    // exactly as fast as they say.
    isDue(now) {
        this.next ??= now;
        if (now < this.next - frameLength / 4) {
            return false;
        }
        // After a gap, frames go on from now.
        this.next = Math.max(this.next + frameLength, now + frameLength / 2);
        return true;
    }
}

// Seconds of the show, taken from the audio frame that is heard. That is known only in steps, so the
// clock goes on evenly by itself and is led back to what is heard, little by little, or at once when
// it is far off.
export class Clock {
    reset() {
        this.now = null;
        this.seconds = 0;
    }

    // `now` in milliseconds, `heard` in seconds, not negative.
    follow(now, heard) {
        const far = 0.1; // seconds
        const share = 0.05;
        const before = this.seconds;
        const guess = this.now === null ? heard : before + (now - this.now) / 1000;
        const off = heard - guess;
        this.now = now;
        this.seconds = Math.abs(off) > far ? heard : guess + share * off;
        if (this.seconds < before && Math.abs(off) <= far) {
            this.seconds = before;
        }
        return this.seconds;
    }

    // A pause: its time does not count.
    hold() {
        this.now = null;
    }
}
