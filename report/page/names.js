/** @import { Point } from "./strokes.js" */
import { RADIUS } from "./strokes.js";

const GAP = 3;
const SQUARE = 64;
const HEIGHT = 14;

/**
 * @typedef {object} Box
 * @property {number} left
 * @property {number} top
 * @property {number} right
 * @property {number} bottom
 *
 * @typedef {object} Name What is written beside a circle.
 * @property {number} key
 * @property {string} text
 * @property {number} x The left end of the text.
 * @property {number} y Its middle.
 */

/** Boxes that do not cover each other, by squares of the view so that few are looked at. */
class Room {
    /** @type {Map<number, Box[]>} */
    #cells = new Map();

    /** @param {Box} box */
    add(box) {
        this.#visit(box, (boxes) => {
            boxes.push(box);
            return false;
        });
    }

    /** @param {Box} box */
    isTaken(box) {
        return this.#visit(box, (boxes) => boxes.some((other) =>
            box.left < other.right && other.left < box.right
            && box.top < other.bottom && other.top < box.bottom));
    }

    /**
     * @param {Box} box
     * @param {(boxes: Box[]) => boolean} visit Stops when it returns true.
     */
    #visit({ left, top, right, bottom }, visit) {
        for (let row = Math.floor(top / SQUARE); row <= Math.floor(bottom / SQUARE); ++row) {
            for (let column = Math.floor(left / SQUARE); column <= Math.floor(right / SQUARE); ++column) {
                const cell = row * 65536 + column;
                let boxes = this.#cells.get(cell);
                if (!boxes)
                    this.#cells.set(cell, boxes = []);
                if (visit(boxes))
                    return true;
            }
        }
        return false;
    }
}

/**
 * The places where a name may stand, the best first: right of its circle, left, above, below.
 *
 * @param {Point} point
 * @param {number} width
 * @returns {Point[]}
 */
function candidates({ x, y }, width) {
    const aside = RADIUS + GAP;
    const above = RADIUS + GAP + HEIGHT / 2;
    return [
        { x: x + aside, y },
        { x: x - aside - width, y },
        { x: x - width / 2, y: y - above },
        { x: x - width / 2, y: y + above },
    ];
}

/**
 * @param {Point} at
 * @param {number} width
 * @returns {Box}
 */
function boxOf({ x, y }, width) {
    return { left: x - 1, top: y - HEIGHT / 2, right: x + width + 1, bottom: y + HEIGHT / 2 };
}

/**
 * The names for which there is room: none covers another one or a circle, or leaves the view.
 *
 * @param {number[]} keys The most important first.
 * @param {(Point | null)[]} points Where all circles are in the view.
 * @param {{ width: number, height: number }} view
 * @param {(key: number) => { text: string, width: number }} nameOf
 * @returns {Name[]}
 */
export function placeNames(keys, points, view, nameOf) {
    const room = new Room();
    for (const point of points) {
        if (point && isIn(view, point))
            room.add(boxOf({ x: point.x - RADIUS, y: point.y }, 2 * RADIUS));
    }
    /** @type {Name[]} */
    const names = [];
    for (const key of keys) {
        const point = points[key];
        if (!point || !isIn(view, point))
            continue;
        const { text, width } = nameOf(key);
        const at = candidates(point, width).find((candidate) => {
            const box = boxOf(candidate, width);
            return box.left >= 0 && box.right <= view.width && box.top >= 0
                && box.bottom <= view.height && !room.isTaken(box);
        });
        if (at) {
            room.add(boxOf(at, width));
            names.push({ key, text, ...at });
        }
    }
    return names;
}

/**
 * @param {{ width: number, height: number }} view
 * @param {Point} point
 */
function isIn(view, { x, y }) {
    return x > -RADIUS && y > -RADIUS && x < view.width + RADIUS && y < view.height + RADIUS;
}
