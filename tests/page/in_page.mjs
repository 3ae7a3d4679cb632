// What runs inside the page, without its player: shows in virtual time.

// Starts a show and makes `window.virtual`, with a canvas of the given size.
export async function startVirtual([startScene, width, height]) {
    const { load } = await import('./load.js');
    const { Show } = await import('./show.js');
    const { Painter } = await import('./painter.js');
    window.parts ??= await load();
    const canvas = Object.assign(document.createElement('canvas'), { width, height });
    const show = await Show.start(window.parts.program, window.parts.files, startScene, true);
    window.virtual = { show, canvas, painter: new Painter(canvas), frame: 0 };
}

// Plays on until a scene has been on the screen for as many frames as each of `counts` says, and returns
// for each the frame's number and its pixels in base64.
export function playScene([scene, counts]) {
    const { virtual } = window;
    const { painter: { gl }, canvas: { width, height }, show } = virtual;
    const found = [];
    for (let count = 0; found.length < counts.length; ++virtual.frame) {
        show.virtualFrame();
        if (show.hasEnded) {
            throw new Error(`scene ${scene} is not seen for so long`);
        }
        count += show.scene === scene ? 1 : 0;
        if (show.scene !== scene || count !== counts[found.length]) {
            continue;
        }
        virtual.painter.draw(show.picture);
        const pixels = new Uint8Array(width * height * 4);
        gl.readPixels(0, 0, width, height, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
        let text = '';
        for (let i = 0; i < pixels.length; i += 8192) {
            text += String.fromCharCode(...pixels.subarray(i, i + 8192));
        }
        found.push({ frame: virtual.frame, pixels: btoa(text) });
    }
    return found;
}
