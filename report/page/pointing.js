/** @import { Picture } from "./picture.js" */
/** @import { Point } from "./strokes.js" */

const WHEEL_STEP = 0.0015; // of a pixel
const LINE = 20; // pixels
const PINCH = 6; // times as far as the wheel
const KEY_FACTOR = 1.4;
const KEY_PAN = 60;

/** A press that moves less is none of moving the picture about. */
const STILL = 5;

/** @type {Record<string, [number, number]>} */
const ARROWS = { ArrowLeft: [-1, 0], ArrowRight: [1, 0], ArrowUp: [0, -1], ArrowDown: [0, 1] };

/**
 * Lets a picture be zoomed, moved about and pointed at by mouse, wheel, fingers and keys.
 */
export class Pointing {
    /** @type {HTMLElement} */ #view;
    /** @type {Picture} */ #picture;
    /** @type {(key: number) => void} */ #onFocus;
    /** @type {(key: number) => void} */ #onPress;
    /** @type {Map<number, Point>} The pointers that press. */ #pressed = new Map();
    #moved = 0;

    /**
     * @param {HTMLElement} view What shows the picture.
     * @param {Picture} picture
     * @param {(key: number) => void} onFocus Another key is in focus; -1 for none.
     * @param {(key: number) => void} onPress A key was pressed.
     */
    constructor(view, picture, onFocus, onPress) {
        this.#view = view;
        this.#picture = picture;
        this.#onFocus = onFocus;
        this.#onPress = onPress;
        view.addEventListener("wheel", (event) => this.#wheel(event), { passive: false });
        view.addEventListener("pointerdown", (event) => this.#down(event));
        view.addEventListener("pointermove", (event) => this.#move(event));
        view.addEventListener("pointerup", (event) => this.#up(event));
        view.addEventListener("pointercancel", (event) => this.#pressed.delete(event.pointerId));
        view.addEventListener("pointerleave", () => this.focus(-1));
        view.addEventListener("dblclick", (event) => this.zoom(2, this.#pointOf(event)));
        view.addEventListener("keydown", (event) => this.#key(event));
    }

    /**
     * @param {number} factor
     * @param {Point} [fixed]
     */
    zoom(factor, fixed) {
        this.#picture.viewport.zoom(factor, fixed);
        this.#zoomed();
    }

    fit() {
        this.#picture.viewport.fit();
        this.#zoomed();
    }

    /** One finger moves a picture that is zoomed, and else the page. */
    #zoomed() {
        this.#view.classList.toggle("zoomed", this.#picture.viewport.scale > 1);
        this.#picture.redraw();
    }

    /** @param {number} key */
    focus(key) {
        if (key === this.#picture.focus)
            return;
        this.#picture.focus = key;
        this.#picture.redrawFront();
        this.#onFocus(key);
    }

    /**
     * @param {MouseEvent} event
     * @returns {Point}
     */
    #pointOf(event) {
        const { left, top } = this.#view.getBoundingClientRect();
        return { x: event.clientX - left, y: event.clientY - top };
    }

    /**
     * Where the page scrolls, the wheel alone scrolls it. A touch pad's pinch comes with Ctrl.
     *
     * @param {WheelEvent} event
     */
    #wheel(event) {
        const { scrollHeight, clientHeight } = document.documentElement;
        if (!event.ctrlKey && scrollHeight > clientHeight)
            return;
        event.preventDefault();
        const pixels = event.deltaMode === WheelEvent.DOM_DELTA_LINE ? LINE : 1;
        const pinch = event.ctrlKey ? PINCH : 1;
        this.zoom(Math.exp(-event.deltaY * pixels * pinch * WHEEL_STEP), this.#pointOf(event));
    }

    /** @param {PointerEvent} event */
    #down(event) {
        if (event.button !== 0)
            return;
        this.#view.setPointerCapture(event.pointerId);
        this.#pressed.set(event.pointerId, this.#pointOf(event));
        if (this.#pressed.size === 1)
            this.#moved = 0;
    }

    /** @param {PointerEvent} event */
    #move(event) {
        const point = this.#pointOf(event);
        const before = this.#pressed.get(event.pointerId);
        if (!before) {
            this.focus(this.#picture.keyAt(point));
            return;
        }
        this.#pressed.set(event.pointerId, point);
        this.#moved += Math.hypot(point.x - before.x, point.y - before.y);
        if (this.#moved < STILL)
            return;
        if (this.#pressed.size > 1) {
            this.#pinch(event.pointerId, before, point);
            return;
        }
        this.#picture.viewport.pan(point.x - before.x, point.y - before.y);
        this.#picture.redraw();
    }

    /**
     * @param {number} moved Which of two fingers.
     * @param {Point} before
     * @param {Point} now
     */
    #pinch(moved, before, now) {
        const [other] = [...this.#pressed].filter(([id]) => id !== moved).map(([, point]) => point);
        const factor = Math.hypot(now.x - other.x, now.y - other.y)
            / Math.max(Math.hypot(before.x - other.x, before.y - other.y), 1);
        this.zoom(factor, other);
    }

    /** @param {PointerEvent} event */
    #up(event) {
        if (!this.#pressed.delete(event.pointerId) || this.#moved >= STILL || this.#pressed.size > 0)
            return;
        const key = this.#picture.keyAt(this.#pointOf(event));
        this.focus(key);
        if (key >= 0)
            this.#onPress(key);
    }

    /** @param {KeyboardEvent} event */
    #key(event) {
        if (event.ctrlKey || event.altKey || event.metaKey || !this.#act(event))
            return;
        event.preventDefault();
    }

    /**
     * @param {KeyboardEvent} event
     * @returns {boolean} Whether the key means anything.
     */
    #act({ key, shiftKey }) {
        const arrow = ARROWS[key];
        if (arrow && shiftKey)
            this.#pan(arrow);
        else if (arrow)
            this.#step(arrow);
        else if (key === "+" || key === "=")
            this.zoom(KEY_FACTOR);
        else if (key === "-")
            this.zoom(1 / KEY_FACTOR);
        else if (key === "0" || key === "Home")
            this.fit();
        else if (key === "Escape")
            this.focus(-1);
        else if ((key === "Enter" || key === " ") && this.#picture.focus >= 0)
            this.#onPress(this.#picture.focus);
        else
            return false;
        return true;
    }

    /** @param {[number, number]} arrow */
    #pan([x, y]) {
        this.#picture.viewport.pan(-x * KEY_PAN, -y * KEY_PAN);
        this.#picture.redraw();
    }

    /** @param {[number, number]} arrow */
    #step([x, y]) {
        const key = this.#picture.keyTowards(x, y);
        if (key < 0)
            return;
        this.#picture.reveal(key);
        this.#onFocus(key);
    }
}
