// The page around the show: the still picture and its button, keys and touches, the bar, messages.

import { load } from './load.js';
import { Player } from './player.js';

const ratio = 640 / 272;
const idleAfter = 2500; // milliseconds without a movement until the controls go
const messageFor = 8000; // milliseconds
const returnTime = 1000; // milliseconds that a browser may take to leave full screen for a hidden tab

const root = document.documentElement;
const element = (id) => document.getElementById(id);
const stage = element('stage');
const canvas = element('canvas');
const playButton = element('play');

let player = null;
let facts = null;
let idleTimer = 0;
let messageTimer = 0;
let leavesFullScreen = false; // on purpose, not by the browser's Escape
let seenSince = -Infinity; // milliseconds; a tab that was hidden is seen again
let wokenByTap = false; // the tap that brings the controls is not meant for what lies under it

const lostText = 'The graphics were taken away; the show goes on without them, and they come back as '
    + 'soon as the browser gives them back.';

// Messages: those that stay, because nothing else can be done, and those that go.
function tell(text, stays = false) {
    clearTimeout(messageTimer);
    element('message').textContent = text;
    element('message').hidden = false;
    if (!stays) {
        messageTimer = setTimeout(clearMessage, messageFor);
    }
}

function clearMessage() {
    element('message').hidden = true;
    if (player?.painter.isLost) {
        tell(lostText, true);
    }
}

function giveUp(text) {
    tell(text, true);
    playButton.disabled = true;
    element('play-label').textContent = 'Unavailable';
}

function clockTime(seconds) {
    const whole = Math.floor(seconds);
    return `${Math.floor(whole / 60)}:${String(whole % 60).padStart(2, '0')}`;
}

// The picture as large as the window allows, on whole device pixels.
function fitCanvas() {
    if (!player || player.state === 'still') {
        return;
    }
    const density = window.devicePixelRatio || 1;
    const width = Math.round(stage.clientWidth * density);
    const height = Math.round(stage.clientHeight * density);
    const drawnWidth = Math.min(width, Math.round(height * ratio));
    const drawnHeight = Math.min(height, Math.round(width / ratio));
    Object.assign(canvas.style, {
        left: `${Math.floor((width - drawnWidth) / 2) / density}px`,
        top: `${Math.floor((height - drawnHeight) / 2) / density}px`,
        width: `${drawnWidth / density}px`,
        height: `${drawnHeight / density}px`,
    });
    if (canvas.width !== drawnWidth || canvas.height !== drawnHeight) {
        player.resize(drawnWidth, drawnHeight);
    }
}

// The controls show for a moment after every movement, and while it pauses.
function wake() {
    root.classList.remove('is-idle');
    clearTimeout(idleTimer);
    idleTimer = setTimeout(() => {
        if (player?.state === 'playing') {
            root.classList.add('is-idle');
        }
    }, idleAfter);
}

const sectionButtons = () => [...element('bar').children];

function sectionEnd(index) {
    return facts.scenes[index + 1]?.seconds ?? facts.seconds;
}

// The section that is at a moment of the show.
function sectionAt(seconds) {
    return facts.scenes.findLastIndex((scene) => seconds >= scene.seconds);
}

let shownSecond = -1;
function showProgress() {
    const { seconds } = player;
    sectionButtons().forEach((button, index) => {
        const begin = facts.scenes[index].seconds;
        const share = (seconds - begin) / (sectionEnd(index) - begin);
        button.style.setProperty('--share', Math.min(Math.max(share, 0), 1).toFixed(4));
    });
    if (Math.floor(seconds) !== shownSecond) {
        shownSecond = Math.floor(seconds);
        element('time').textContent = `${clockTime(seconds)} / ${clockTime(facts.seconds)}`;
        const section = facts.scenes[sectionAt(seconds)];
        element('scene').textContent = section.name;
        element('scene').style.setProperty('--scene', section.colour);
    }
}

function start(startScene) {
    clearMessage();
    player.play(startScene);
}

// The section that begins at an index; until the data has come, there are none.
function playSection(index) {
    if (facts && index < facts.scenes.length) {
        start(facts.scenes[Math.max(index, 0)].start);
    }
}

// The index of the section that is playing, or that was `ago` seconds before.
function sectionOf(ago) {
    return facts ? sectionAt(player.seconds - ago) : -1;
}

function end() {
    player.stop();
}

function togglePause() {
    if (player.state === 'playing') {
        player.pause();
    } else {
        player.resume();
    }
}

async function toggleFullScreen() {
    if (document.fullscreenElement) {
        leavesFullScreen = true;
        await document.exitFullscreen();
        return;
    }
    try {
        await stage.requestFullscreen({ navigationUI: 'hide' });
    } catch {
        tell('This browser does not allow full screen here; the show already fills the window.');
    }
}

function onState() {
    const { state } = player;
    const isOn = state !== 'still';
    const wasOn = root.classList.contains('is-on');
    root.classList.toggle('is-on', isOn);
    root.classList.toggle('is-paused', state === 'paused');
    element('pause').setAttribute('aria-label', state === 'paused' ? 'Go on' : 'Pause');
    if (isOn && !wasOn) {
        canvas.focus({ preventScroll: true });
    }
    if (!isOn && wasOn) {
        if (document.fullscreenElement) {
            leavesFullScreen = true;
            document.exitFullscreen();
        }
        playButton.focus({ preventScroll: true });
    }
    fitCanvas();
    wake();
}

// Before the data has come, the button waits for it, and says how far it is.
function onLoading(share) {
    playButton.style.setProperty('--share', share);
    if (player?.state === 'starting') {
        element('time').textContent = `loading ${Math.floor(100 * share)} %`;
    }
}

function makeButton(scene, ...content) {
    const button = document.createElement('button');
    button.type = 'button';
    button.style.setProperty('--scene', scene.colour);
    button.append(...content);
    button.addEventListener('click', () => start(scene.start));
    return button;
}

function showScenes() {
    element('length').textContent = clockTime(facts.seconds);
    facts.scenes.forEach((scene, index) => {
        const label = document.createElement('span');
        label.textContent = `${scene.name} ${clockTime(scene.seconds)}`;
        const section = makeButton(scene, label);
        section.style.setProperty('--length', sectionEnd(index) - scene.seconds);
        element('bar').append(section);

        const item = document.createElement('li');
        item.append(makeButton(scene, scene.name));
        element('scenes').append(item);
    });
}

const keys = {
    ' ': togglePause,
    f: toggleFullScreen,
    F: toggleFullScreen,
    Escape: end,
    ArrowLeft: () => playSection(sectionOf(2)),
    ArrowRight: () => playSection(sectionOf(0) + 1),
};
for (let i = 0; i < 7; ++i) {
    keys[i + 1] = () => playSection(i);
}

function onKey(event) {
    if (event.ctrlKey || event.metaKey || event.altKey) {
        return;
    }
    if (player.state === 'still') {
        if (event.key.toLowerCase() === 'f' && !event.repeat && !playButton.disabled) {
            toggleFullScreen();
            start(0);
        }
        return;
    }
    wake();
    // A button that has the focus takes the space key itself.
    const isPressed = event.key === ' ' && event.target.closest?.('button');
    if (keys[event.key] && !event.repeat && !isPressed) {
        event.preventDefault();
        keys[event.key]();
    }
}

function listen() {
    player.addEventListener('state', onState);
    player.addEventListener('frame', showProgress);
    player.addEventListener('silent', () => {
        tell('There is no sound device that answers; the show goes on in silence.');
    });
    player.addEventListener('failed', () => {
        tell(`The show had to end: ${player.error.message}`, true);
    });
    canvas.addEventListener('webglcontextlost', () => tell(lostText, true));
    canvas.addEventListener('webglcontextrestored', clearMessage);

    playButton.addEventListener('click', () => start(0));
    element('pause').addEventListener('click', togglePause);
    element('full').addEventListener('click', toggleFullScreen);
    element('end').addEventListener('click', end);
    stage.addEventListener('dblclick', (event) => {
        if (player.state !== 'still' && !event.target.closest('#controls')) {
            toggleFullScreen();
        }
    });
    // In the order of events: a tap wakes the controls before it becomes a click.
    stage.addEventListener('pointerdown', (event) => {
        wokenByTap = event.pointerType !== 'mouse' && root.classList.contains('is-idle');
    }, true);
    element('controls').addEventListener('click', (event) => {
        if (wokenByTap && event.detail > 0) {
            event.stopPropagation();
        }
        // A clicked button keeps neither the space key to itself nor the controls in sight.
        if (event.detail > 0 && player.state !== 'still') {
            canvas.focus({ preventScroll: true });
        }
    }, true);
    document.addEventListener('keydown', onKey);
    document.addEventListener('visibilitychange', () => {
        seenSince = performance.now();
    });
    for (const kind of ['pointermove', 'pointerdown', 'focusin']) {
        document.addEventListener(kind, wake);
    }
    document.addEventListener('fullscreenchange', () => {
        if (!document.fullscreenElement) {
            const isAway = document.hidden || performance.now() - seenSince < returnTime;
            if (!leavesFullScreen && !isAway) {
                end(); // the browser has taken Escape for itself
            }
            leavesFullScreen = false;
        }
    });
    new ResizeObserver(fitCanvas).observe(stage);
    window.addEventListener('resize', fitCanvas);
}

async function open() {
    const loading = load(onLoading);
    try {
        player = new Player(canvas, loading);
    } catch {
        loading.catch(() => {});
        giveUp('The show is drawn with WebGL 2, which this browser does not offer.');
        return;
    }
    listen();
    try {
        ({ facts } = await loading);
        showScenes();
        playButton.classList.add('is-loaded');
    } catch (error) {
        player.stop();
        giveUp(error.message);
    }
}

open();
// For those who look into the page.
export const show = { get player() { return player; } };
