/** @import { Report } from "./data.js" */

/**
 * Characters that turn the direction of what stands behind them, and such as can't be seen, are
 * shown as boxes.
 *
 * @param {string} text
 */
function visible(text) {
    return text.replace(/[\p{Cc}\u061c\u200b-\u200f\u2028-\u202e\u2060-\u206f\ufeff]/gu, "\u25af");
}

/**
 * @param {Report} report
 * @param {number} key
 */
export function keyName(report, key) {
    return visible(report.raw.keys[key]);
}

/**
 * @param {Report} report
 * @param {number} key
 */
export function shortName(report, key) {
    return visible(report.raw.names[key]);
}

/**
 * Which keys a typed name means: the one that is called so, or else all that contain it.
 *
 * @param {Report} report
 * @param {string} typed
 * @returns {Uint8Array} 1 for each key that it means.
 */
export function keysCalled(report, typed) {
    const { keys } = report.raw;
    const called = new Uint8Array(keys.length);
    const exact = keys.indexOf(typed);
    if (exact >= 0)
        called[exact] = 1;
    return exact >= 0 ? called : keysWith(report, typed);
}

/**
 * Which keys contain a text, in whatever case.
 *
 * @param {Report} report
 * @param {string} text
 * @returns {Uint8Array} 1 for each of them.
 */
export function keysWith(report, text) {
    const { keys } = report.raw;
    const wanted = text.toLowerCase();
    const found = new Uint8Array(keys.length);
    for (let key = 0; key < keys.length; ++key)
        found[key] = keys[key].toLowerCase().includes(wanted) ? 1 : 0;
    return found;
}
