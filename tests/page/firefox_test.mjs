// The page in Firefox, which needs a display to draw with WebGL here: tests/page/run gives it one.
import assert from 'node:assert/strict';
import { rmSync } from 'node:fs';
import { createRequire } from 'node:module';
import { after, before, test } from 'node:test';
import { pathToFileURL } from 'node:url';

import { serve } from '../../web/serve.mjs';
import { playScene, startVirtual } from './in_page.mjs';
import { difference, pixelsOf, record, toRows } from './stage.mjs';

const require = createRequire(pathToFileURL('build/page-tests/package.json'));
const { default: puppeteer } = await import(
    pathToFileURL(require.resolve('puppeteer-core')).href);

let server;
let browser;
let page;
before(async () => {
    server = await serve('build');
    browser = await puppeteer.launch({
        browser: 'firefox',
        executablePath: '/usr/bin/firefox-esr',
        headless: false,
        env: { ...process.env, MOZ_X11_EGL: '1' },
        extraPrefsFirefox: {
            'webgl.force-enabled': true,
            'gfx.x11-egl.force-enabled': true,
            'security.sandbox.content.level': 0, // may run as root
        },
    });
    page = await browser.newPage();
    page.setDefaultTimeout(120000);
    await page.setViewport({ width: 640, height: 400 });
    await page.goto(`${server.link}page/`);
    await page.waitForSelector('.is-loaded');
});
after(async () => {
    await browser?.close();
    server.close();
});

test('a click plays in Firefox, with sound or without a sound device', async () => {
    await page.evaluate(async () => { window.kso = (await import('./page.js')).show; });
    await page.click('#play');
    await page.waitForFunction(() => window.kso.player.seconds > 1);
    assert.equal(await page.evaluate(() => window.kso.player.state), 'playing');
    await page.keyboard.press('3');
    await page.waitForFunction(() => window.kso.player.show?.scene === 2);
    await page.keyboard.press('Escape');
    await page.waitForFunction(() => window.kso.player.state === 'still');
});

// Both are drawn by the same software, so next to nothing may differ but the edges of wide lines.
for (const [scene, start] of [[0, 0], [1, 2], [2, 3], [3, 4], [4, 5], [5, 6], [6, 7]]) {
    test(`scene ${scene} has the recorder's frames in Firefox`, async () => {
        await page.evaluate(startVirtual, [start, 640, 272]);
        const [{ frame, pixels }] = await page.evaluate(playScene, [scene, [120]]);
        const time = ((frame + 0.5) / 60).toFixed(4);
        const stills = `build/page-tests/stills-firefox-${start}`;
        rmSync(stills, { recursive: true, force: true });
        record('--size', '640x272', '--stills', stills, '--at', time, '--',
            ...(start ? [start] : []));
        const off = difference(toRows(pixels, 640, 272), pixelsOf(`${stills}/${time}.png`));
        const said = `scene ${scene}, ${time} s: mean ${off.mean.toFixed(4)}, ` +
            `largest ${off.largest}`;
        console.log(said);
        assert.ok(off.mean <= (scene === 4 ? 0.5 : 0.02), said);
    });
}
