/** @import { Colours } from "./colours.js" */
/** @import { Report } from "./data.js" */
/** @import { Point, Stroke } from "./strokes.js" */
import { readColours } from "./colours.js";
import { anchorOf, sequenceOf } from "./data.js";
import { shortName } from "./keys.js";
import { placeNames } from "./names.js";
import { drawHeads, drawLeaf, drawNames, drawStrokes, fillOf, outlineOf } from "./painting.js";
import { placeKeys } from "./places.js";
import { RADIUS, strokeBetween, waysIn, waysOf } from "./strokes.js";
import { Viewport } from "./viewport.js";

const FONT = "12px system-ui, sans-serif";
const CHOSEN_WIDTH = 1.5;
const REACH = 6; // pixels beside a circle that still are the circle's

/**
 * The picture of some patterns of a report: their ways behind, in grey, and in front the chosen
 * pattern, the keys and their names. Draws when the browser does.
 */
export class Picture {
    viewport = new Viewport();
    /** The key in focus, which is drawn on top and named; -1 for none. */
    focus = -1;

    /** @type {HTMLCanvasElement} */ #back;
    /** @type {HTMLCanvasElement} */ #front;
    /** @type {Report | null} */ #report = null;
    /** @type {Colours} */ #colours = readColours();
    /** @type {number[]} */ #ways = [];
    /** @type {Float64Array} */ #weights = new Float64Array();
    /** @type {number} */ #chosen = -1;
    /** @type {(Point | null)[]} Not zoomed. */ #places = [];
    /** @type {(Point | null)[]} In the view. */ #points = [];
    /** @type {number[]} The most important first. */ #keys = [];
    /** @type {Map<number, { text: string, width: number }>} */ #names = new Map();
    #waiting = 0;
    #backIsOld = true;

    /**
     * @param {HTMLCanvasElement} back
     * @param {HTMLCanvasElement} front Of the same size, above it.
     */
    constructor(back, front) {
        this.#back = back;
        this.#front = front;
    }

    /** @param {Report} report */
    setReport(report) {
        this.#report = report;
        this.#names.clear();
        this.focus = -1;
        this.viewport.fit();
        this.resize();
    }

    /** Takes the size that the page gives to the canvas. */
    resize() {
        const { clientWidth, clientHeight } = this.#front;
        this.viewport.resize(clientWidth, clientHeight);
        if (this.#report)
            this.#places = placeKeys(this.#report.raw, clientWidth, clientHeight);
        this.redraw();
    }

    /**
     * @param {Int32Array} patterns
     * @param {number} chosen -1 for none.
     */
    show(patterns, chosen) {
        if (!this.#report)
            return;
        this.#ways = waysIn(this.#report, patterns);
        this.#weigh(this.#report, patterns);
        this.choose(chosen);
        this.redraw();
    }

    /** @param {number} pattern -1 for none. */
    choose(pattern) {
        this.#chosen = pattern;
        this.#sortKeys();
        this.redrawFront();
    }

    /** Takes colours anew. */
    recolour() {
        this.#colours = readColours();
        this.redraw();
    }

    /** Draws everything with the next frame. */
    redraw() {
        this.#backIsOld = true;
        this.redrawFront();
    }

    redrawFront() {
        this.#waiting ||= requestAnimationFrame(() => this.draw());
    }

    /**
     * Draws what waits to be drawn.
     *
     * @param {number} [ratio] Of pixels of the canvas to those of the page.
     */
    draw(ratio = devicePixelRatio) {
        cancelAnimationFrame(this.#waiting);
        this.#waiting = 0;
        if (!this.#report || this.viewport.width === 0)
            return;
        this.#points = this.#places.map((point) => point && this.viewport.at(point));
        if (this.#backIsOld)
            this.#drawBack(this.#prepare(this.#back, ratio));
        this.#backIsOld = false;
        this.#drawFront(this.#prepare(this.#front, ratio), this.#report);
    }

    /**
     * The key whose circle is at a point of the view, -1 without one.
     *
     * @param {Point} point
     */
    keyAt({ x, y }) {
        let nearest = -1;
        let least = RADIUS + REACH;
        for (let key = 0; key < this.#points.length; ++key) {
            const point = this.#points[key];
            const distance = point ? Math.hypot(point.x - x, point.y - y) : Infinity;
            if (distance < least) {
                nearest = key;
                least = distance;
            }
        }
        return nearest;
    }

    /**
     * The nearest key that lies in a direction, with some room to either side; the one in focus
     * without one. Without a focus the most important one.
     *
     * @param {number} x -1, 0 or 1, and so is
     * @param {number} y
     */
    keyTowards(x, y) {
        const from = this.#places[this.focus];
        if (!from)
            return this.#keys[0] ?? -1;
        let nearest = this.focus;
        let least = Infinity;
        for (const key of this.#keys) {
            const place = this.#places[key];
            if (!place || key === this.focus)
                continue;
            const ahead = (place.x - from.x) * x + (place.y - from.y) * y;
            const aside = Math.abs((place.x - from.x) * y) + Math.abs((place.y - from.y) * x);
            const distance = ahead + 2 * aside;
            if (ahead > 0 && distance < least) {
                nearest = key;
                least = distance;
            }
        }
        return nearest;
    }

    /**
     * Where a key's circle is in the view.
     *
     * @param {number} key
     */
    pointOf(key) {
        const place = this.#places[key];
        return place ? this.viewport.at(place) : null;
    }

    /**
     * Lets a key be in focus and in view.
     *
     * @param {number} key
     */
    reveal(key) {
        this.focus = key;
        const place = this.#places[key];
        if (place)
            this.viewport.reveal(place);
        this.redraw();
    }

    /**
     * The weight of a key is that of its patterns, in 0 to 1.
     *
     * @param {Report} report
     * @param {Int32Array} patterns
     */
    #weigh(report, patterns) {
        this.#weights = new Float64Array(report.raw.keys.length);
        for (const pattern of patterns)
            this.#weights[anchorOf(report, pattern)] += report.figures.count[pattern] + 1;
        const heaviest = this.#weights.reduce((most, weight) => Math.max(most, weight), 1);
        this.#weights = this.#weights.map((weight) => weight / heaviest);
    }

    /** Those of the chosen pattern are the most important, then the heaviest. */
    #sortKeys() {
        const chosen = new Set(this.#chosenSteps());
        const importance = this.#weights.map((weight, key) => weight + (chosen.has(key) ? 2 : 0));
        this.#keys = [...importance.keys()].filter((key) => this.#report?.raw.keys[key])
            .sort((a, b) => importance[b] - importance[a]);
    }

    #chosenSteps() {
        return this.#report && this.#chosen >= 0 ? sequenceOf(this.#report, this.#chosen) : [];
    }

    /**
     * @param {HTMLCanvasElement} canvas
     * @param {number} ratio
     */
    #prepare(canvas, ratio) {
        const { width, height } = this.viewport;
        canvas.width = Math.round(width * ratio);
        canvas.height = Math.round(height * ratio);
        const context = /** @type {CanvasRenderingContext2D} */ (canvas.getContext("2d"));
        context.scale(ratio, ratio);
        context.font = FONT;
        return context;
    }

    /**
     * @param {Iterable<number>} ways
     * @returns {Generator<Stroke>}
     */
    * #strokesOf(ways) {
        if (!this.#report)
            return;
        const { from, to } = waysOf(this.#report);
        for (const way of ways) {
            const start = this.#points[from[way]];
            const end = this.#points[to[way]];
            if (start && end)
                yield strokeBetween(start, end);
        }
    }

    /** @param {CanvasRenderingContext2D} context */
    #drawBack(context) {
        drawStrokes(context, this.#strokesOf(this.#ways), this.viewport, this.#colours.way, 1);
    }

    /**
     * @param {CanvasRenderingContext2D} context
     * @param {Report} report
     */
    #drawFront(context, report) {
        this.#drawChosen(context, report);
        const menus = new Set(report.raw.menus);
        const outline = outlineOf(this.#colours);
        for (let key = this.#points.length - 1; key >= 0; --key) { // as the list of leaves is walked
            const point = this.#points[key];
            if (point)
                drawLeaf(context, point, fillOf(this.#colours, this.#weights[key], menus.has(key)),
                    outline);
        }
        this.#drawFocus(context);
        this.#drawNames(context);
    }

    /**
     * @param {CanvasRenderingContext2D} context
     * @param {Report} report
     */
    #drawChosen(context, report) {
        const { first } = report.figures;
        const { at } = waysOf(report);
        const ways = new Set();
        for (let i = 0; i + 1 < this.#chosenSteps().length; ++i)
            ways.add(at[first[this.#chosen] + i]);
        ways.delete(-1);
        const strokes = [...this.#strokesOf(ways)];
        drawStrokes(context, strokes, this.viewport, this.#colours.chosen, CHOSEN_WIDTH);
        drawHeads(context, strokes, this.#colours);
    }

    /** @param {CanvasRenderingContext2D} context */
    #drawFocus(context) {
        const point = this.#points[this.focus];
        if (point)
            drawLeaf(context, point, this.#colours.focus, this.#colours.chosen);
    }

    /** @param {CanvasRenderingContext2D} context */
    #drawNames(context) {
        const keys = this.focus >= 0 ? [this.focus, ...this.#keys] : this.#keys;
        const names = placeNames(keys, this.#points, this.viewport, (key) => this.#nameOf(context, key));
        drawNames(context, names, this.#colours);
    }

    /**
     * @param {CanvasRenderingContext2D} context
     * @param {number} key
     */
    #nameOf(context, key) {
        let name = this.#names.get(key);
        if (!name) {
            const text = this.#report ? shortName(this.#report, key) : "";
            name = { text, width: context.measureText(text).width };
            this.#names.set(key, name);
        }
        return name;
    }
}
