/** @import { Point } from "./strokes.js" */

const LARGEST = 200;

/** How many pixels of a picture that is moved about stay in sight. */
const IN_SIGHT = 60;

/**
 * What of the picture is seen: it is made larger, then moved. Circles and lines keep their size, so
 * that what is crowded comes apart.
 */
export class Viewport {
    scale = 1;
    x = 0;
    y = 0;
    width = 0;
    height = 0;

    /**
     * @param {number} width
     * @param {number} height
     */
    resize(width, height) {
        this.width = width;
        this.height = height;
        this.#keepInSight();
    }

    fit() {
        this.scale = 1;
        this.x = 0;
        this.y = 0;
    }

    /**
     * @param {number} factor
     * @param {Point} [fixed] What of the view stays where it is; else its middle.
     */
    zoom(factor, fixed = { x: this.width / 2, y: this.height / 2 }) {
        const scale = Math.min(Math.max(this.scale * factor, 1), LARGEST);
        this.x = fixed.x - (fixed.x - this.x) * scale / this.scale;
        this.y = fixed.y - (fixed.y - this.y) * scale / this.scale;
        this.scale = scale;
        if (scale === 1)
            this.fit();
        this.#keepInSight();
    }

    /**
     * @param {number} x
     * @param {number} y
     */
    pan(x, y) {
        this.x += x;
        this.y += y;
        this.#keepInSight();
    }

    /**
     * Moves no more than is needed for a point of the picture to be well in view.
     *
     * @param {Point} point
     */
    reveal(point) {
        const { x, y } = this.at(point);
        this.pan(Math.max(IN_SIGHT - x, 0) + Math.min(this.width - IN_SIGHT - x, 0),
            Math.max(IN_SIGHT - y, 0) + Math.min(this.height - IN_SIGHT - y, 0));
    }

    /**
     * Where a point of the picture is in the view.
     *
     * @param {Point} point
     * @returns {Point}
     */
    at({ x, y }) {
        return { x: x * this.scale + this.x, y: y * this.scale + this.y };
    }

    #keepInSight() {
        const { width, height, scale } = this;
        this.x = Math.min(Math.max(this.x, IN_SIGHT - width * scale), width - IN_SIGHT);
        this.y = Math.min(Math.max(this.y, IN_SIGHT - height * scale), height - IN_SIGHT);
    }
}
