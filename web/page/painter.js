// Draws frames with WebGL 2: the lists that the show's OpenGL calls have become (web/gl/frame_list.h).

const view = { width: 640, height: 272 }; // base/window_and_view.h

const floatsPerVertex = 10;
const wordsPerCommand = 9;
const wordsPerTexture = 5;
const attributes = [ // name, floats, place
    ['position', 4, 0],
    ['texCoord', 2, 4],
    ['colour', 4, 6],
];

const vertexShader = `#version 300 es
in vec4 position;
in vec2 texCoord;
in vec4 colour;
out highp vec2 place;
out highp vec4 tint;
void main()
{
    gl_Position = position;
    place = texCoord;
    tint = colour;
}`;

// A colour is rounded to the canvas's 256 steps before it is blended. A GPU may blend what is finer, but
// where many faint layers add up, their sum would then differ from one to the next.
const fragmentShader = `#version 300 es
precision highp float;
uniform sampler2D picture;
in highp vec2 place;
in highp vec4 tint;
out vec4 pixel;
void main()
{
    pixel = floor(texture(picture, place) * tint * 255.0 + 0.5) / 255.0;
}`;

function compiled(gl, type, source) {
    const shader = gl.createShader(type);
    gl.shaderSource(shader, source);
    gl.compileShader(shader);
    return shader;
}

// The lists of one frame as arrays on the show's memory; good until the show is called again.
export function readFrame(memory, address) {
    const words = new Uint32Array(memory, address, 8);
    const [vertices, vertexCount, indices, indexCount, commands, commandCount, textures,
        textureCount] = words;
    return {
        vertices: new Float32Array(memory, vertices, vertexCount * floatsPerVertex),
        indices: new Uint32Array(memory, indices, indexCount),
        commands: new Uint32Array(memory, commands, commandCount * wordsPerCommand),
        textures: new Uint32Array(memory, textures, textureCount * wordsPerTexture),
        memory,
    };
}

// One canvas. Its context may be lost at any time: `isLost` then tells so, drawing does nothing, and
// when the context is back, everything that it held is made again with the next frame.
export class Painter {
    // Throws an error if there is no WebGL 2.
    constructor(canvas) {
        this.canvas = canvas;
        this.gl = canvas.getContext('webgl2', {
            alpha: false,
            antialias: false,
            depth: true,
            powerPreference: 'high-performance',
            preserveDrawingBuffer: true, // a frame may stay for as long as the music wants
        });
        if (!this.gl) {
            throw new Error('there is no WebGL 2');
        }
        this.isLost = false;
        this.onRestored = () => {};
        canvas.addEventListener('webglcontextlost', (event) => {
            event.preventDefault(); // or it would never come back
            this.isLost = true;
        });
        canvas.addEventListener('webglcontextrestored', () => {
            this.isLost = false;
            this.build();
            this.onRestored();
        });
        this.build();
    }

    build() {
        const gl = this.gl;
        const program = gl.createProgram();
        gl.attachShader(program, compiled(gl, gl.VERTEX_SHADER, vertexShader));
        gl.attachShader(program, compiled(gl, gl.FRAGMENT_SHADER, fragmentShader));
        attributes.forEach(([name], index) => gl.bindAttribLocation(program, index, name));
        gl.linkProgram(program);
        if (!gl.getProgramParameter(program, gl.LINK_STATUS) && !gl.isContextLost()) {
            throw new Error(`WebGL refuses a program: ${gl.getProgramInfoLog(program)}`);
        }
        gl.useProgram(program);

        gl.bindBuffer(gl.ARRAY_BUFFER, gl.createBuffer());
        gl.bindBuffer(gl.ELEMENT_ARRAY_BUFFER, gl.createBuffer());
        attributes.forEach(([, size, first], index) => {
            gl.enableVertexAttribArray(index);
            gl.vertexAttribPointer(index, size, gl.FLOAT, false, 4 * floatsPerVertex, 4 * first);
        });

        gl.pixelStorei(gl.UNPACK_ALIGNMENT, 1);
        gl.clearColor(0, 0, 0, 1);
        this.textures = []; // { texture, version }
        // What has no texture is drawn with a white one.
        this.white = this.makeTexture();
        gl.texImage2D(gl.TEXTURE_2D, 0, gl.RGBA, 1, 1, 0, gl.RGBA, gl.UNSIGNED_BYTE,
            new Uint8Array([255, 255, 255, 255]));
    }

    makeTexture() {
        const gl = this.gl;
        const texture = gl.createTexture();
        gl.bindTexture(gl.TEXTURE_2D, texture);
        for (const name of [gl.TEXTURE_WRAP_S, gl.TEXTURE_WRAP_T]) {
            gl.texParameteri(gl.TEXTURE_2D, name, gl.REPEAT);
        }
        for (const name of [gl.TEXTURE_MIN_FILTER, gl.TEXTURE_MAG_FILTER]) {
            gl.texParameteri(gl.TEXTURE_2D, name, gl.LINEAR);
        }
        return texture;
    }

    // Another show begins, whose pictures have nothing to do with those of the one before.
    forgetPictures() {
        for (const { texture } of this.textures) {
            this.gl.deleteTexture(texture);
        }
        this.textures = [];
    }

    // The canvas's size in device pixels. What it showed is gone until the next frame.
    resize(width, height) {
        if (this.canvas.width !== width || this.canvas.height !== height) {
            this.canvas.width = width;
            this.canvas.height = height;
        }
    }

    // Makes the canvas black.
    clear() {
        this.gl.clear(this.gl.COLOR_BUFFER_BIT);
    }

    draw(frame) {
        if (this.isLost) {
            return;
        }
        const gl = this.gl;
        this.upload(frame);
        this.placeView();
        gl.bufferData(gl.ARRAY_BUFFER, frame.vertices, gl.STREAM_DRAW);
        gl.bufferData(gl.ELEMENT_ARRAY_BUFFER, frame.indices, gl.STREAM_DRAW);
        for (let i = 0; i < frame.commands.length; i += wordsPerCommand) {
            this.perform(frame.commands.subarray(i, i + wordsPerCommand));
        }
    }

    // As large as the canvas allows, in its middle.
    placeView() {
        // A browser may give less than the canvas asks for.
        const { drawingBufferWidth: width, drawingBufferHeight: height } = this.gl;
        const scale = Math.min(width / view.width, height / view.height);
        const side = (length, of) => {
            const first = Math.round((of - length * scale) / 2);
            return [first, Math.round((of + length * scale) / 2) - first];
        };
        const [left, drawnWidth] = side(view.width, width);
        const [bottom, drawnHeight] = side(view.height, height);
        this.gl.viewport(left, bottom, drawnWidth, drawnHeight);
    }

    upload(frame) {
        const gl = this.gl;
        for (let i = 0; i < frame.textures.length / wordsPerTexture; ++i) {
            const [version, width, height, channels, pixels] =
                frame.textures.subarray(i * wordsPerTexture, (i + 1) * wordsPerTexture);
            const known = this.textures[i];
            if (version === 0 || known?.version === version) {
                continue;
            }
            const format = channels === 3 ? gl.RGB : gl.RGBA;
            const bytes = new Uint8Array(frame.memory, pixels, width * height * channels);
            if (known) {
                gl.bindTexture(gl.TEXTURE_2D, known.texture);
                gl.texSubImage2D(gl.TEXTURE_2D, 0, 0, 0, width, height, format, gl.UNSIGNED_BYTE,
                    bytes);
                known.version = version;
            } else {
                this.textures[i] = { texture: this.makeTexture(), version };
                gl.texImage2D(gl.TEXTURE_2D, 0, format, width, height, 0, format, gl.UNSIGNED_BYTE,
                    bytes);
            }
        }
    }

    perform([clears, firstIndex, indexCount, texture, blends, source, destination, testsDepth,
        depthFunction]) {
        const gl = this.gl;
        if (clears) {
            gl.clear(clears);
            return;
        }
        gl.bindTexture(gl.TEXTURE_2D, this.textures[texture - 1]?.texture ?? this.white);
        this.enable(gl.BLEND, blends);
        gl.blendFunc(source, destination);
        this.enable(gl.DEPTH_TEST, testsDepth);
        gl.depthFunc(depthFunction);
        gl.drawElements(gl.TRIANGLES, indexCount, gl.UNSIGNED_INT, 4 * firstIndex);
    }

    enable(capability, on) {
        if (on) {
            this.gl.enable(capability);
        } else {
            this.gl.disable(capability);
        }
    }
}
