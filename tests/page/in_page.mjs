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

// Plays to a frame and returns its pixels in base64, and its scene.
export function playTo(frame) {
    const { virtual } = window;
    for (; virtual.frame <= frame; ++virtual.frame) {
        virtual.show.virtualFrame();
    }
    const { painter: { gl }, canvas: { width, height } } = virtual;
    virtual.painter.draw(virtual.show.picture);
    const pixels = new Uint8Array(width * height * 4);
    gl.readPixels(0, 0, width, height, gl.RGBA, gl.UNSIGNED_BYTE, pixels);
    let text = '';
    for (let i = 0; i < pixels.length; i += 8192) {
        text += String.fromCharCode(...pixels.subarray(i, i + 8192));
    }
    return { pixels: btoa(text), scene: virtual.show.scene };
}
