// The page's frames in virtual time against the recorder's at the same moments.
import assert from 'node:assert/strict';
import { rmSync } from 'node:fs';
import { after, before, test } from 'node:test';

import { playScene, startVirtual } from './in_page.mjs';
import { Stage, difference, pixelsOf, record, toRows } from './stage.mjs';

// The largest mean difference and the largest difference of a pixel, of 255. Edges of wide lines and
// single pixels between the tube's beads may fall to another side.
const exact = { mean: 0.5, largest: 2 };
const near = { mean: 0.5, largest: 255 };
const lines = { mean: 1.5, largest: 255 };

const rows = [
    { scene: 0, start: 0, limits: exact },
    { scene: 1, start: 2, limits: exact },
    { scene: 2, start: 3, limits: near },
    { scene: 3, start: 4, limits: near },
    { scene: 4, start: 5, limits: lines },
    { scene: 5, start: 6, limits: near },
    { scene: 6, start: 7, limits: exact, counts: [50, 200] }, // it is not seen for long
];

// The frames that are compared, counted among those of the scene, where a row has no others.
const usualCounts = [50, 330];

let stage;
let page;
before(async () => {
    stage = await Stage.open();
    page = await stage.page({ isReady: false });
});
after(() => stage.close());

async function compare({ start, scene, limits, counts = usualCounts }, width, height) {
    await page.evaluate(startVirtual, [start, width, height]);
    const found = await page.evaluate(playScene, [scene, counts]);
    const times = found.map(({ frame }) => ((frame + 0.5) / 60).toFixed(4));
    const stills = `build/page-tests/stills-${width}x${height}-${start}`;
    rmSync(stills, { recursive: true, force: true });
    record('--size', `${width}x${height}`, '--stills', stills, '--at', times.join(','), '--',
        ...(start ? [start] : []));
    found.forEach(({ pixels }, i) => {
        const off = difference(toRows(pixels, width, height),
            pixelsOf(`${stills}/${times[i]}.png`));
        const said = `scene ${scene}, ${width}x${height}, ${times[i]} s: ` +
            `mean ${off.mean.toFixed(3)}, largest ${off.largest}`;
        console.log(said);
        assert.ok(off.mean <= limits.mean && off.largest <= limits.largest, said);
    });
}

for (const row of rows) {
    test(`scene ${row.scene} has the recorder's frames`, () => compare(row, 640, 272));
}

test('black bars are where the recorder has them', () => compare(rows[1], 640, 480));

// Geometry has the canvas's resolution, and wide lines grow with it.
test('a larger canvas has the recorder\'s larger frames', () => compare(rows[4], 1280, 544));
