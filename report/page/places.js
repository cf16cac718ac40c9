/** @import { RawReport } from "./data.js" */
/** @import { Point } from "./strokes.js" */
import { RADIUS } from "./strokes.js";

// The same as in ui/picture/uileafpainter.cpp; a test compares the places.
const MARGIN = 2 + RADIUS + 12;
const MENU_ROW = 1;

/** What a key without a place has for itself in their grid, in pixels. */
const GRID_CELL = 28;

/** The most of the picture's height that their grid takes where other keys have places. */
const MOST_OF_HEIGHT = 1 / 3;

/**
 * @typedef {object} Area
 * @property {number} x
 * @property {number} y
 * @property {number} width
 * @property {number} height
 */

/**
 * Where each key's circle is in a picture that is not zoomed; null for a key without one.
 *
 * @param {RawReport} raw
 * @param {number} width In pixels.
 * @param {number} height
 * @returns {(Point | null)[]}
 */
export function placeKeys(raw, width, height) {
    /** @type {(Point | null)[]} */
    const points = raw.keys.map(() => null);
    placeMenus(raw.menus, width, points);
    const top = MENU_ROW + MARGIN + 2 * RADIUS;
    const body = { x: MARGIN, y: top, width: width - 2 * MARGIN, height: height - MARGIN - top };
    const homeless = keysWithoutPlace(raw, points);
    const grid = gridArea(body, homeless.length, homeless.length + raw.menus.length === countKeys(raw));
    body.height -= grid.height;
    placeByPlaces(raw, body, points);
    placeInGrid(homeless, grid, points);
    return points;
}

/** @param {RawReport} raw */
function countKeys(raw) {
    return raw.keys.filter(Boolean).length;
}

/**
 * @param {number[]} menus
 * @param {number} width
 * @param {(Point | null)[]} points
 */
function placeMenus(menus, width, points) {
    const strip = width - 2 * MARGIN;
    for (let i = 0; i < menus.length; ++i) {
        const across = menus.length > 1 ? i / (menus.length - 1) : 0.5;
        points[menus[i]] = { x: MARGIN + strip * across, y: MARGIN };
    }
}

/**
 * @param {RawReport} raw
 * @param {(Point | null)[]} points
 */
function keysWithoutPlace({ keys, places }, points) {
    return [...keys.keys()].filter((key) => keys[key] && !points[key] && places[2 * key] === null);
}

/**
 * The foot of the body, or all of it where no key has a place.
 *
 * @param {Area} body
 * @param {number} count
 * @param {boolean} all
 * @returns {Area}
 */
function gridArea(body, count, all) {
    if (all)
        return { ...body };
    const rows = Math.ceil(count * GRID_CELL / Math.max(body.width, GRID_CELL));
    const height = Math.min(rows * GRID_CELL, body.height * MOST_OF_HEIGHT);
    return { ...body, y: body.y + body.height - height, height };
}

/**
 * @param {RawReport} raw
 * @param {Area} body
 * @param {(Point | null)[]} points
 */
function placeByPlaces({ places }, body, points) {
    for (let key = 0; key < points.length; ++key) {
        const across = places[2 * key];
        const down = places[2 * key + 1];
        if (across !== null && down !== null)
            points[key] = { x: body.x + body.width * across, y: body.y + body.height * down };
    }
}

/**
 * Row by row, in cells as near to squares as they come out.
 *
 * @param {number[]} keys
 * @param {Area} grid
 * @param {(Point | null)[]} points
 */
function placeInGrid(keys, grid, points) {
    const columns = Math.max(1, Math.ceil(Math.sqrt(keys.length * grid.width / Math.max(grid.height, 1))));
    const rows = Math.ceil(keys.length / columns);
    for (let i = 0; i < keys.length; ++i) {
        points[keys[i]] = {
            x: grid.x + (i % columns + 0.5) * grid.width / columns,
            y: grid.y + (Math.floor(i / columns) + 0.5) * grid.height / rows,
        };
    }
}
