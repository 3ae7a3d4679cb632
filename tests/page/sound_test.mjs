// The page's sound against the recorder's, and how Web Audio puts it together.
import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { after, before, test } from 'node:test';

import { startVirtual } from './in_page.mjs';
import { Stage, record } from './stage.mjs';

let stage;
let page;
before(async () => {
    stage = await Stage.open();
    page = await stage.page({ isReady: false });
});
after(() => stage.close());

// The left and right samples of virtual frames, 16 bits each, in base64.
async function virtualSound(frames) {
    const samples = [];
    for (let i = 0; i < frames; ++i) {
        window.virtual.show.virtualFrame();
        const [left, right] = window.virtual.show.virtualSound();
        left.forEach((sample, k) => samples.push(sample * 32768, right[k] * 32768));
    }
    const bytes = new Uint8Array(new Int16Array(samples).buffer);
    let text = '';
    for (let i = 0; i < bytes.length; i += 8192) {
        text += String.fromCharCode(...bytes.subarray(i, i + 8192));
    }
    return btoa(text);
}

test('20 seconds are the recorder\'s, bit for bit', async () => {
    const file = 'build/page-tests/sound.wav';
    record('--to', '20', '-o', file);
    const wave = readFileSync(file);
    const recorded = wave.subarray(wave.indexOf('data') + 8);
    await page.evaluate(startVirtual, [0, 16, 16]);
    const played = Buffer.from(await page.evaluate(virtualSound, 20 * 60), 'base64');
    // The last frame has heard its own moment, 19.983 s, but not the rest of its time.
    const length = 4 * 44100 * 19.98;
    assert.ok(recorded.length >= length && played.length >= length);
    assert.ok(played.subarray(0, length).equals(recorded.subarray(0, length)));
    assert.ok(played.some((byte) => byte !== 0));
});

// The buffers that the speaker hands over, rendered by the browser.
async function rendered() {
    const { Speaker, mixRate } = await import('./sound.js');
    const { Show } = await import('./show.js');
    const { program, files } = window.parts;
    const context = new OfflineAudioContext(2, mixRate / 4, mixRate);
    const speaker = new Speaker(context);
    speaker.begin();
    const show = await Show.start(program, files, 3);
    speaker.feed(show);
    const heard = (await context.startRendering()).getChannelData(0);
    const same = await Show.start(program, files, 3);
    const [mixed] = same.mix(1024 * 8);
    const first = Math.round(speaker.zero * mixRate);
    let wrong = 0;
    for (let i = 0; i < mixed.length; ++i) {
        wrong += heard[first + i] === mixed[i] ? 0 : 1;
    }
    return { wrong, loudest: Math.max(...mixed) };
}

test('Web Audio joins the buffers without a seam', async () => {
    const { wrong, loudest } = await page.evaluate(rendered);
    assert.equal(wrong, 0);
    assert.ok(loudest > 0.01);
});

// A stalled page: nothing is fed for a second, while the device goes on.
async function stalled() {
    const { Speaker, mixRate } = await import('./sound.js');
    const context = { currentTime: 0, createGain: () => ({ connect() {}, disconnect() {} }),
        createBuffer: () => ({ copyToChannel() {} }),
        createBufferSource: () => ({ connect() {}, start(time) { starts.push(time); } }) };
    const starts = [];
    const speaker = new Speaker(context);
    const show = { mix: (count) => [new Float32Array(count), new Float32Array(count)] };
    const heardFirst = [];
    speaker.begin();
    for (const time of [0, 0.1, 1.1, 1.2]) {
        context.currentTime = time;
        speaker.feed(show);
        heardFirst.push(speaker.heard / mixRate);
    }
    return { heardFirst, starts, stalls: speaker.stalls, buffer: 1024 / mixRate };
}

test('after a stall, the sound goes on where it was', async () => {
    const { heardFirst, starts, stalls, buffer } = await page.evaluate(stalled);
    assert.equal(stalls, 1);
    // One gap, in which no buffer is left out or begins in the past.
    const gaps = starts.slice(1).filter((time, i) => Math.abs(time - starts[i] - buffer) > 1e-9);
    assert.equal(gaps.length, 1);
    assert.ok(gaps[0] >= 1.1);
    // What was mixed before the stall, a third of a second or so, was heard in it, and no more.
    const [, before, atEnd, after] = heardFirst;
    assert.ok(before < 0.1 && atEnd > 0.3 && atEnd < 0.4, `${heardFirst}`);
    assert.ok(Math.abs(after - atEnd - 0.1) < 0.001, `${heardFirst}`);
});
