/** @import { Colours } from "./colours.js" */
/** @import { Name } from "./names.js" */
/** @import { Point, Stroke } from "./strokes.js" */
import { RADIUS, arrowHead } from "./strokes.js";

/** @typedef {CanvasRenderingContext2D} Context */

/** As `ui::Look` has it: the opacity of a key without patterns, of the lightest and the heaviest. */
const NO_PATTERNS = 50 / 255;
const LIGHTEST = 0.5;
const HEAVIEST = 0.75;
const OUTLINE = 75 / 255;

/** Curves that are drawn as one path, which is quicker than one by one. */
const AT_ONCE = 64;

/**
 * Whether any of a stroke may be in a view.
 *
 * @param {Stroke} stroke
 * @param {{ width: number, height: number }} view
 */
function meets({ start, control1, control2, end }, { width, height }) {
    return Math.min(start.x, control1.x, control2.x, end.x) <= width
        && Math.max(start.x, control1.x, control2.x, end.x) >= 0
        && Math.min(start.y, control1.y, control2.y, end.y) <= height
        && Math.max(start.y, control1.y, control2.y, end.y) >= 0;
}

/**
 * @param {Context} context
 * @param {Iterable<Stroke>} strokes
 * @param {{ width: number, height: number }} view
 * @param {string} colour
 * @param {number} width
 */
export function drawStrokes(context, strokes, view, colour, width) {
    context.strokeStyle = colour;
    context.lineWidth = width;
    let waiting = 0;
    context.beginPath();
    for (const stroke of strokes) {
        if (!meets(stroke, view))
            continue;
        const { start, control1, control2, end } = stroke;
        context.moveTo(start.x, start.y);
        context.bezierCurveTo(control1.x, control1.y, control2.x, control2.y, end.x, end.y);
        if (++waiting === AT_ONCE) {
            context.stroke();
            context.beginPath();
            waiting = 0;
        }
    }
    context.stroke();
}

/**
 * @param {Context} context
 * @param {Iterable<Stroke>} strokes
 * @param {Colours} colours
 */
export function drawHeads(context, strokes, colours) {
    context.fillStyle = colours.focus;
    context.strokeStyle = colours.chosen;
    context.lineWidth = 1;
    for (const stroke of strokes) {
        const [tip, left, right] = arrowHead(stroke);
        context.beginPath();
        context.moveTo(tip.x, tip.y);
        context.lineTo(left.x, left.y);
        context.lineTo(right.x, right.y);
        context.closePath();
        context.fill();
        context.stroke();
    }
}

/**
 * @param {Context} context
 * @param {Point} point
 * @param {string} fill
 * @param {string} outline
 */
export function drawLeaf(context, { x, y }, fill, outline) {
    context.fillStyle = fill;
    context.strokeStyle = outline;
    context.beginPath();
    context.arc(x, y, RADIUS, 0, 2 * Math.PI);
    context.fill();
    context.stroke();
}

/**
 * The fill of a key: the heavier its patterns, the more opaque.
 *
 * @param {Colours} colours
 * @param {number} weight From 0 to 1; 0 without patterns.
 * @param {boolean} menu
 */
export function fillOf(colours, weight, menu) {
    if (weight > 0)
        return `rgb(${colours.leaf} / ${LIGHTEST + weight * (HEAVIEST - LIGHTEST)})`;
    return `rgb(${menu ? colours.menu : colours.leaf} / ${NO_PATTERNS})`;
}

/** @param {Colours} colours */
export function outlineOf(colours) {
    return `rgb(${colours.leaf} / ${OUTLINE})`;
}

/**
 * @param {Context} context
 * @param {Iterable<Name>} names
 * @param {Colours} colours
 */
export function drawNames(context, names, colours) {
    context.textBaseline = "middle";
    context.lineJoin = "round";
    context.lineWidth = 3;
    context.strokeStyle = colours.ground; // around the letters, as lines run behind them
    context.fillStyle = colours.text;
    for (const { text, x, y } of names) {
        context.strokeText(text, x, y);
        context.fillText(text, x, y);
    }
}
