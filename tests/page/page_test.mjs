// The page as its viewer has it: keys, clicks, pauses, and all that can be missing.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';

import { Stage, stateOf, untilPlaying } from './stage.mjs';

let stage;
before(async () => { stage = await Stage.open(); });
after(() => stage.close());

// A test with a window of its own, in which no script may fail.
function pageTest(name, options, run) {
    test(name, async () => {
        const page = await stage.page(options);
        await run(page);
        assert.deepEqual(page.faults, []);
        await page.context().close();
    });
}

const scenesOf = (page) =>
    page.evaluate(async () => (await window.kso.player.loading).facts.scenes);
const isStill = (page) => page.waitForFunction(() => window.kso.player.state === 'still');
const message = (page) => page.locator('#message').innerText();

// The canvas's brightest byte and a sum over all of it, right after a frame was drawn.
function look(page) {
    return page.evaluate(() => {
        const { player } = window.kso;
        player.redraw();
        const { gl } = player.painter;
        const pixels = new Uint8Array(gl.drawingBufferWidth * gl.drawingBufferHeight * 4);
        gl.readPixels(0, 0, gl.drawingBufferWidth, gl.drawingBufferHeight, gl.RGBA,
            gl.UNSIGNED_BYTE, pixels);
        let sum = 0;
        let brightest = 0;
        pixels.forEach((byte, i) => {
            sum = (sum * 31 + byte) % 4294967291;
            brightest = i % 4 === 3 ? brightest : Math.max(brightest, byte);
        });
        return { sum, brightest };
    });
}

pageTest('a click plays, from this server alone', {}, async (page) => {
    assert.equal(await page.locator('#cover').isVisible(), true);
    assert.match(await page.locator('#warning').innerText(), /flickers.*seizures/s);
    await page.click('#play');
    await untilPlaying(page, 1);
    const { state, sound, heard, seconds } = await stateOf(page);
    assert.equal(state, 'playing');
    assert.equal(sound, 'Speaker');
    assert.ok(Math.abs(heard / 44100 - seconds) < 0.1, `${heard} ${seconds}`);
    assert.ok((await look(page)).brightest > 30);
    assert.equal(await page.locator('#cover').isVisible(), false);
    for (const url of page.requests) {
        assert.ok(url.startsWith(`${stage.server.link}page/`), url);
    }
});

pageTest('keys alone are enough', {}, async (page) => {
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    await untilPlaying(page, 0.3);
    await page.keyboard.press(' ');
    assert.equal((await stateOf(page)).state, 'paused');
    await page.keyboard.press(' ');
    await untilPlaying(page);
    const scenes = await scenesOf(page);
    for (const [key, index] of [['6', 5], ['ArrowRight', 6], ['ArrowLeft', 5]]) {
        await page.keyboard.press(key);
        await untilPlaying(page);
        const { seconds } = await stateOf(page);
        assert.ok(seconds > scenes[index].seconds && seconds < scenes[index].seconds + 5, key);
    }
    await page.keyboard.press('Escape');
    await isStill(page);
    assert.equal(await page.locator('#cover').isVisible(), true);
});

pageTest('a pause holds picture and sound, and goes on from there', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page, 1);
    await page.keyboard.press(' ');
    await page.waitForTimeout(300); // the device takes a moment to stop
    const held = await stateOf(page);
    const picture = await look(page);
    await page.waitForTimeout(700);
    const later = await stateOf(page);
    assert.equal(later.seconds, held.seconds);
    assert.equal(later.heard, held.heard);
    assert.deepEqual(await look(page), picture);
    await page.keyboard.press(' ');
    await page.waitForFunction((before) => window.kso.player.seconds > before + 0.3, held.seconds);
    const { heard, seconds } = await stateOf(page);
    assert.ok(seconds - held.seconds < 1 && Math.abs(heard / 44100 - seconds) < 0.1);
});

pageTest('each part of the bar starts a scene', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    const scenes = await scenesOf(page);
    assert.equal(scenes.length, 7);
    for (const index of [4, 1, 6, 0]) {
        await page.mouse.move(300 + index, 300); // or the bar may be hidden
        await page.click(`#bar button:nth-child(${index + 1})`);
        await untilPlaying(page, 0.4);
        const { seconds, scene } = await stateOf(page);
        assert.equal(scene, scenes[index].scene);
        assert.ok(seconds >= scenes[index].seconds && seconds < scenes[index].seconds + 5);
    }
});

const isIdle = (page) => page.waitForSelector('.is-idle', { timeout: 10000 });
const opacityOf = (page) =>
    page.evaluate(() => Number(getComputedStyle(document.getElementById('controls')).opacity));

pageTest('a clicked button leaves the space key to the pause, and goes', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    await page.mouse.move(300, 300);
    await page.click('#bar button:nth-child(3)');
    await untilPlaying(page, 0.4);
    await isIdle(page);
    await page.waitForTimeout(600);
    assert.equal(await opacityOf(page), 0);
    await page.keyboard.press(' ');
    assert.equal((await stateOf(page)).state, 'paused');
});

pageTest('a tap that brings the controls does not jump', { hasTouch: true }, async (page) => {
    await page.tap('#play');
    await untilPlaying(page);
    const place = await page.locator('#bar button:nth-child(6)').boundingBox();
    await isIdle(page);
    await page.waitForTimeout(600);
    const { seconds } = await stateOf(page);
    const tap = () => page.touchscreen.tap(place.x + place.width / 2, place.y + place.height / 2);
    await tap();
    await page.waitForTimeout(500);
    assert.equal((await stateOf(page)).scene, 0);
    assert.ok((await stateOf(page)).seconds < seconds + 10);
    assert.ok(await opacityOf(page) > 0);
    await tap();
    await page.waitForFunction(() => window.kso.player.show?.scene === 5);
});

pageTest('arrows count from the scene that is about to start', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    for (const key of ['4', 'ArrowRight', 'ArrowRight', 'ArrowLeft']) {
        await page.keyboard.press(key);
    }
    await untilPlaying(page);
    const { seconds } = await stateOf(page);
    const scenes = await scenesOf(page);
    assert.ok(seconds > scenes[4].seconds && seconds < scenes[5].seconds, `${seconds}`);
});

// A clock that runs forty times as fast takes the sound's place.
pageTest('the end of the music brings the still picture back', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    await page.keyboard.press('7');
    await untilPlaying(page);
    await page.evaluate(() => {
        const { player } = window.kso;
        const begun = performance.now();
        const from = player.speaker.heard;
        player.speaker.close();
        player.speaker = {
            get heard() { return from + (performance.now() - begun) * 40 * 44.1; },
            feed(show) { while (show.mixed < this.heard + 44100) { show.mix(4096); } },
            begin() {}, async pause() {}, async resume() {}, close() {},
        };
    });
    await isStill(page);
    assert.equal(await page.locator('#play').isVisible(), true);
});

pageTest('a hidden tab waits', {}, async (page) => {
    const hide = (hidden) => page.evaluate((isHidden) => {
        Object.defineProperty(document, 'hidden', { value: isHidden, configurable: true });
        document.dispatchEvent(new Event('visibilitychange'));
    }, hidden);
    await page.click('#play');
    await untilPlaying(page, 1);
    await hide(true);
    await page.waitForTimeout(300);
    const held = await stateOf(page);
    assert.equal(held.state, 'paused');
    await page.waitForTimeout(500);
    assert.equal((await stateOf(page)).heard, held.heard);
    await hide(false);
    await page.waitForFunction((before) => window.kso.player.seconds > before + 0.3, held.seconds);
    const { heard, seconds } = await stateOf(page);
    assert.ok(Math.abs(heard / 44100 - seconds) < 0.1);
    // Who has paused before stays there.
    await page.keyboard.press(' ');
    await hide(true);
    await hide(false);
    assert.equal((await stateOf(page)).state, 'paused');
});

pageTest('a lost context comes back with its pictures', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    await page.keyboard.press('2');
    await untilPlaying(page, 1);
    await page.keyboard.press(' ');
    const before = await look(page);
    await page.evaluate(() => {
        window.loss = window.kso.player.painter.gl.getExtension('WEBGL_lose_context');
        window.loss.loseContext();
    });
    await page.waitForFunction(() => window.kso.player.painter.isLost);
    await page.waitForTimeout(8500); // a message that goes would be gone
    assert.match(await message(page), /graphics/);
    await page.keyboard.press(' '); // it plays on without a picture
    await page.waitForTimeout(300);
    await page.keyboard.press(' ');
    await page.evaluate(() => window.loss.restoreContext());
    await page.waitForFunction(() => !window.kso.player.painter.isLost);
    assert.ok((await look(page)).brightest > before.brightest / 2);
    assert.equal(await page.locator('#message').isVisible(), false);
});

// What the canvas measures, for windows of any shape: the view's proportions, in device pixels.
for (const [width, height, density] of [[1280, 800, 1], [390, 844, 3], [2000, 500, 2],
    [3840, 1632, 1]]) {
    pageTest(`the canvas fits ${width} x ${height} at ${density}`,
        { viewport: { width, height }, deviceScaleFactor: density }, async (page) => {
            await page.click('#play');
            await untilPlaying(page);
            const got = await page.evaluate(() => {
                const { canvas } = window.kso.player.painter;
                const box = canvas.getBoundingClientRect();
                return { width: canvas.width, height: canvas.height, shownWidth: box.width,
                    shownHeight: box.height, scrolls: document.body.scrollWidth > innerWidth };
            });
            const scale = Math.min((width * density) / 640, (height * density) / 272);
            assert.ok(Math.abs(got.width - 640 * scale) <= 1, JSON.stringify(got));
            assert.ok(Math.abs(got.height - 272 * scale) <= 1, JSON.stringify(got));
            assert.ok(Math.abs(got.shownWidth * density - got.width) < 0.1, JSON.stringify(got));
            assert.ok(Math.abs(got.shownHeight * density - got.height) < 0.1, JSON.stringify(got));
            assert.equal(got.scrolls, false);
        });
}

// The browser tells of a change only with the frame after it.
async function isFull(page, id) {
    await page.waitForFunction((wanted) => document.fullscreenElement?.id === wanted, id);
    await page.waitForTimeout(200);
}

pageTest('full screen comes with f and goes with f', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    await page.keyboard.press('f');
    await isFull(page, 'stage');
    await page.keyboard.press('f');
    await isFull(page, undefined);
    assert.equal((await stateOf(page)).state, 'playing');
    await page.dblclick('#canvas');
    await isFull(page, 'stage');
    // As the browser does when another tab is shown.
    await page.evaluate(async () => {
        document.dispatchEvent(new Event('visibilitychange'));
        await document.exitFullscreen();
    });
    await page.waitForTimeout(1200);
    assert.equal((await stateOf(page)).state, 'playing');
    await page.dblclick('#stage', { position: { x: 100, y: 5 } }); // beside the picture
    await isFull(page, 'stage');
    await page.evaluate(() => document.exitFullscreen()); // as the browser does at Escape
    await isStill(page);
});

// What may be missing, and what is said then. Nothing of it may leave a button that does nothing.
const faults = [
    { name: 'no WebGL 2', says: /WebGL 2/, prepare: (page) => page.addInitScript(() => {
        HTMLCanvasElement.prototype.getContext = () => null;
    }) },
    { name: 'no data', says: /missing on the server: show\.pack/, prepare: (page) =>
        page.route('**/show.pack', (route) => route.fulfill({ status: 404 })) },
    { name: 'data that was cut', says: /cut or damaged: show\.pack/, prepare: (page) =>
        page.route('**/show.pack', async (route) => {
            const response = await route.fetch();
            await route.fulfill({ body: (await response.body()).subarray(0, 2000000) });
        }) },
    { name: 'data with a wrong byte', says: /cut or damaged: .* in show\.pack/, prepare: (page) =>
        page.route('**/show.pack', async (route) => {
            const body = await (await route.fetch()).body();
            body[500000] ^= 4;
            await route.fulfill({ body });
        }) },
    { name: 'a program that was cut', says: /cut or damaged: kso\.wasm/, prepare: (page) =>
        page.route('**/kso.wasm', async (route) => {
            const response = await route.fetch();
            await route.fulfill({ body: (await response.body()).subarray(0, 100000) });
        }) },
    { name: 'a part of the page', says: /part of this page is missing/, prepare: (page) =>
        page.route('**/sound.js', (route) => route.fulfill({ status: 404 })) },
    { name: 'a server that is gone', says: /does not answer/, prepare: (page) =>
        page.route('**/show.json', (route) => route.abort()) },
];

for (const { name, says, prepare } of faults) {
    pageTest(`it says so: ${name}`, { prepare, isReady: false }, async (page) => {
        await page.waitForSelector('#message:not([hidden])', { timeout: 30000 });
        assert.match(await message(page), says);
        assert.equal(await page.locator('#play').isDisabled(), true);
    });
}

pageTest('a missing picture is named', {}, async (page) => {
    await page.evaluate(async () => (await window.kso.player.loading).files.delete('valo.tga'));
    await page.click('#play'); // was made ready before
    await untilPlaying(page);
    await page.keyboard.press('3');
    await isStill(page);
    assert.match(await message(page), /Error opening data\/valo\.tga/);
});

const silences = {
    'no Web Audio': () => { delete window.AudioContext; },
    'a sound device that never begins': () => {
        Object.defineProperty(AudioContext.prototype, 'currentTime', { get: () => 0 });
    },
};
for (const [name, prepare] of Object.entries(silences)) {
    pageTest(`without sound the show goes on: ${name}`,
        { prepare: (page) => page.addInitScript(prepare) }, async (page) => {
            await page.click('#play');
            await page.waitForSelector('#message:not([hidden])');
            assert.match(await message(page), /silence/);
            await untilPlaying(page, 1);
            assert.equal((await stateOf(page)).sound, 'Silence');
            assert.ok((await look(page)).brightest > 30);
        });
}

pageTest('full screen that is refused is no harm', { prepare: (page) => page.addInitScript(() => {
    Element.prototype.requestFullscreen = () => Promise.reject(new TypeError('no'));
}) }, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    await page.keyboard.press('f');
    await page.waitForSelector('#message:not([hidden])');
    assert.match(await message(page), /does not allow full screen/);
    assert.equal((await stateOf(page)).state, 'playing');
});

pageTest('a click before the data has come waits for it', { isReady: false,
    prepare: (page) => page.route('**/show.pack', async (route) => {
        await new Promise((resolve) => { setTimeout(resolve, 1500); });
        await route.continue();
    }) }, async (page) => {
    await page.click('#play');
    assert.equal((await stateOf(page)).state, 'starting');
    for (const key of ['ArrowLeft', 'ArrowRight', '3', ' ']) {
        await page.keyboard.press(key); // there is nothing yet to go to
    }
    await untilPlaying(page);
});

pageTest('many starts in a row leave one show', {}, async (page) => {
    await page.click('#play');
    await untilPlaying(page);
    for (let i = 0; i < 30; ++i) {
        await page.keyboard.press(String(1 + (i % 7)));
        await page.waitForTimeout(20);
    }
    await page.keyboard.press('5');
    await untilPlaying(page, 0.5);
    const { scene, heard, seconds } = await stateOf(page);
    assert.equal(scene, 4);
    const begin = (await scenesOf(page))[4].seconds;
    assert.ok(Math.abs(heard / 44100 + begin - seconds) < 0.1, `${heard} ${seconds}`);
});
