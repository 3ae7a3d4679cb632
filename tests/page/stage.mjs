// A browser with the page in it, and what its tests share.
import { spawnSync } from 'node:child_process';
import { createRequire } from 'node:module';
import { pathToFileURL } from 'node:url';

import { serve } from '../../web/serve.mjs';

// Installed by tests/page/run.
const require = createRequire(pathToFileURL('build/page-tests/package.json'));
const { chromium } = require('playwright-core');

// Drawn by the processor, so that frames are the same on every machine.
const options = {
    executablePath: '/usr/bin/chromium',
    args: ['--use-angle=swiftshader', '--enable-unsafe-swiftshader', '--no-sandbox',
        '--autoplay-policy=user-gesture-required'],
};

// The page is served below a folder, as it may be anywhere.
const folder = 'page/';

export class Stage {
    static async open() {
        const stage = new Stage();
        stage.server = await serve('build');
        stage.browser = await chromium.launch(options);
        return stage;
    }

    async close() {
        await this.browser.close();
        this.server.close();
    }

    // A new window with the page, after `prepare` has had its way with it. Faults in its scripts end up in
    // `page.faults`, what it asked for in `page.requests`.
    async page({ prepare = async () => {}, viewport = { width: 960, height: 540 },
        deviceScaleFactor = 1, hasTouch = false, isReady = true } = {}) {
        const context = await this.browser.newContext({ viewport, deviceScaleFactor, hasTouch });
        const page = await context.newPage();
        page.faults = [];
        page.requests = [];
        page.on('pageerror', (error) => page.faults.push(error.message));
        page.on('request', (request) => page.requests.push(request.url()));
        await prepare(page);
        await page.goto(`${this.server.link}${folder}`);
        if (isReady) {
            await page.waitForSelector('.is-loaded', { timeout: 60000 });
        }
        await page.evaluate(async () => {
            const { show } = await import('./page.js').catch(() => ({}));
            window.kso = show;
        });
        return page;
    }
}

// What the player says of itself.
export function stateOf(page) {
    return page.evaluate(() => {
        const { player } = window.kso;
        return { state: player.state, seconds: player.seconds, scene: player.show?.scene,
            heard: player.speaker?.heard, sound: player.speaker?.constructor.name };
    });
}

export function untilPlaying(page, seconds = 0.2) {
    return page.waitForFunction((wanted) => {
        const { player } = window.kso;
        return player.state === 'playing' && player.clock.seconds > wanted;
    }, seconds, { timeout: 60000 });
}

// The pixels of a base64 text as evaluated pages return them: red, green, blue, alpha, bottom row first;
// as the recorder has them: red, green, blue, top row first.
export function toRows(base64, width, height) {
    const bytes = Buffer.from(base64, 'base64');
    const rows = Buffer.alloc(width * height * 3);
    for (let y = 0; y < height; ++y) {
        for (let x = 0; x < width; ++x) {
            const from = 4 * ((height - 1 - y) * width + x);
            bytes.copy(rows, 3 * (y * width + x), from, from + 3);
        }
    }
    return rows;
}

// Runs a command and returns what it wrote.
export function output(command, ...words) {
    const result = spawnSync(command, words, { maxBuffer: 1 << 28 });
    if (result.status !== 0) {
        throw new Error(`${command} failed: ${result.stderr}`);
    }
    return result.stdout;
}

export function pixelsOf(png) {
    return output('ffmpeg', '-v', 'error', '-i', png, '-f', 'rawvideo', '-pix_fmt', 'rgb24', '-');
}

// The recorder, drawing with the processor.
export function record(...words) {
    return output('env', 'LIBGL_ALWAYS_SOFTWARE=1', 'build/release/tools/record/record', ...words);
}

export function difference(a, b) {
    let largest = 0;
    let sum = 0;
    for (let i = 0; i < a.length; ++i) {
        const off = Math.abs(a[i] - b[i]);
        largest = Math.max(largest, off);
        sum += off;
    }
    return { largest, mean: sum / a.length };
}

export function median(numbers) {
    return [...numbers].sort((a, b) => a - b)[Math.floor(numbers.length / 2)];
}
