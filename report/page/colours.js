/**
 * What the picture is drawn with, as the style sheet says.
 *
 * @typedef {object} Colours
 * @property {string} ground
 * @property {string} text
 * @property {string} way
 * @property {string} chosen
 * @property {string} leaf As three numbers, to be given an opacity.
 * @property {string} menu
 * @property {string} focus
 */

const NAMES = /** @type {const} */ (["ground", "text", "way", "chosen", "leaf", "menu", "focus"]);

/** @returns {Colours} */
export function readColours() {
    const style = getComputedStyle(document.documentElement);
    const colours = NAMES.map((name) => [name, style.getPropertyValue(`--picture-${name}`).trim()]);
    return Object.fromEntries(colours);
}
