/** @import { Report } from "./data.js" */

/**
 * @typedef {object} Point
 * @property {number} x
 * @property {number} y
 *
 * @typedef {object} Stroke A cubic curve, in pixels of the picture.
 * @property {Point} start
 * @property {Point} control1
 * @property {Point} control2
 * @property {Point} end
 *
 * @typedef {object} Ways The differing steps of a report from one key to another.
 * @property {number[]} from Keys.
 * @property {number[]} to
 * @property {Int32Array} at The way from each place of the steps to the next, -1 for none.
 */

/** The radius of a key's circle, in pixels. */
export const RADIUS = 8;

// The same as in ui/picture/uistroke.cpp, which explains them; a test compares the curves.
const RADIANS = Math.PI / 180;
const LEAVING = 315 * RADIANS;
const ARRIVING = 225 * RADIANS;
const BULGE = 0.3;
const FIRST_CONTROL = 0.25;
const SECOND_CONTROL = 0.45;

/** How far a head is open to either side, of its length. */
const HALF_BASE = 0.5;

/**
 * @param {Point} centre
 * @param {number} direction In radians.
 * @param {number} radius
 */
function circleEdge(centre, direction, radius) {
    return { x: Math.cos(direction) * radius + centre.x, y: Math.sin(direction) * radius + centre.y };
}

/**
 * The curve between the circles around two points. It keeps to the left of the way, as seen by a
 * traveller, so that the way there and the one back lie apart.
 *
 * @param {Point} from
 * @param {Point} to
 * @returns {Stroke}
 */
export function strokeBetween(from, to) {
    const way = Math.atan2(to.y - from.y, to.x - from.x);
    const start = circleEdge(from, way + LEAVING, RADIUS);
    const end = circleEdge(to, way + ARRIVING, RADIUS);
    const along = { x: end.x - start.x, y: end.y - start.y };
    const aside = { x: along.y * BULGE, y: -along.x * BULGE };
    /** @param {number} fraction */
    const control = (fraction) => ({
        x: start.x + along.x * fraction + aside.x,
        y: start.y + along.y * fraction + aside.y,
    });
    return { start, control1: control(FIRST_CONTROL), control2: control(SECOND_CONTROL), end };
}

/**
 * The corners of the triangle at a stroke's end, its tip first.
 *
 * @param {Stroke} stroke
 * @returns {[Point, Point, Point]}
 */
export function arrowHead({ control2, end }) {
    const length = Math.hypot(end.x - control2.x, end.y - control2.y) || 1;
    const x = (end.x - control2.x) / length * RADIUS;
    const y = (end.y - control2.y) / length * RADIUS;
    const base = { x: end.x - x, y: end.y - y };
    return [
        end,
        { x: base.x - y * HALF_BASE, y: base.y + x * HALF_BASE },
        { x: base.x + y * HALF_BASE, y: base.y - x * HALF_BASE },
    ];
}

/** @type {WeakMap<Report, Ways>} */
const WAYS = new WeakMap();

/**
 * @param {Report} report
 * @returns {Ways}
 */
export function waysOf(report) {
    let ways = WAYS.get(report);
    if (!ways) {
        ways = collectWays(report);
        WAYS.set(report, ways);
    }
    return ways;
}

/**
 * @param {Report} report
 * @returns {Ways}
 */
function collectWays({ steps, raw: { keys } }) {
    const known = new Map();
    const ways = { from: [], to: [], at: new Int32Array(steps.length).fill(-1) };
    for (let i = 0; i + 1 < steps.length; ++i) {
        if (steps[i] !== steps[i + 1])
            ways.at[i] = wayBetween(steps[i], steps[i + 1], keys.length, known, ways);
    }
    return ways;
}

/**
 * @param {number} from
 * @param {number} to
 * @param {number} keyCount
 * @param {Map<number, number>} known The ways by both their keys.
 * @param {{ from: number[], to: number[] }} ways Gets the way where it is new.
 */
function wayBetween(from, to, keyCount, known, ways) {
    const both = from * keyCount + to;
    let way = known.get(both);
    if (way === undefined) {
        way = known.size;
        known.set(both, way);
        ways.from.push(from);
        ways.to.push(to);
    }
    return way;
}

/**
 * The ways of some patterns, each once. What patterns have in common is walked once.
 *
 * @param {Report} report
 * @param {Int32Array} patterns
 * @returns {number[]}
 */
export function waysIn(report, patterns) {
    const { from, at } = waysOf(report);
    const { first, length } = report.figures;
    const changes = new Int32Array(at.length + 1);
    for (const pattern of patterns) {
        ++changes[first[pattern]];
        --changes[first[pattern] + length[pattern] - 1];
    }
    const used = new Uint8Array(from.length);
    for (let i = 0, open = 0; i < at.length; ++i) {
        open += changes[i];
        if (open > 0 && at[i] >= 0)
            used[at[i]] = 1;
    }
    return [...used.keys()].filter((way) => used[way]);
}
