// The page's frames in virtual time against the recorder's at the same moments.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';

import { playTo, startVirtual } from './in_page.mjs';
import { Stage, difference, pixelsOf, record, toRows } from './stage.mjs';

// The largest mean difference and the largest difference of a pixel, of 255. Edges of wide lines and
// single pixels between the tube's beads may fall to another side.
const exact = { mean: 0.5, largest: 2 };
const near = { mean: 0.5, largest: 255 };
const lines = { mean: 1.5, largest: 255 };

const rows = [
    { scene: 0, start: 0, times: [2, 8.5], limits: exact },
    { scene: 1, start: 2, times: [0.9, 10.2], limits: exact },
    { scene: 2, start: 3, times: [3.4, 9.7], limits: near },
    { scene: 3, start: 4, times: [3.1, 11.3], limits: near },
    { scene: 4, start: 5, times: [2.3, 5.1], limits: lines },
    { scene: 5, start: 6, times: [4.2, 12.6], limits: near },
    { scene: 6, start: 7, times: [0.6, 16.2], limits: exact },
];

let stage;
let page;
before(async () => {
    stage = await Stage.open();
    page = await stage.page({ isReady: false });
});
after(() => stage.close());

async function compare({ start, scene, times, limits }, width, height) {
    const stills = `build/page-tests/stills-${width}x${height}-${start}`;
    record('--size', `${width}x${height}`, '--stills', stills, '--at', times.join(','), '--',
        ...(start ? [start] : []));
    await page.evaluate(startVirtual, [start, width, height]);
    for (const time of times) {
        const got = await page.evaluate(playTo, Math.floor(time * 60));
        const off = difference(toRows(got.pixels, width, height), pixelsOf(`${stills}/${time}.png`));
        const said = `scene ${scene}, ${width}x${height}, ${time} s: mean ${off.mean.toFixed(3)}, ` +
            `largest ${off.largest}`;
        console.log(said);
        assert.equal(got.scene, scene, `another scene: ${said}`);
        assert.ok(off.mean <= limits.mean && off.largest <= limits.largest, said);
    }
}

for (const row of rows) {
    test(`scene ${row.scene} has the recorder's frames`, () => compare(row, 640, 272));
}

test('black bars are where the recorder has them', () => compare(rows[1], 640, 480));

// Geometry has the canvas's resolution, and wide lines grow with it.
test('a larger canvas has the recorder\'s larger frames', async () => {
    await compare({ ...rows[4], times: [2.3] }, 1280, 544);
    await compare({ ...rows[3], times: [3.1] }, 1280, 544);
});
