/**
 * What the reader of the page has chosen: all that a link to a view tells.
 *
 * @typedef {object} State
 * @property {number} log Which of the page's reports.
 * @property {number} minCount
 * @property {number} minOccurrences
 * @property {number} minRecordings
 * @property {number} minLength
 * @property {number} maxLength Infinite for any.
 * @property {string} text Words that keys of the pattern contain.
 * @property {string} passes A key of the pattern, or a part of its name.
 * @property {string} begins The same of the first key.
 * @property {boolean} loopsOnce
 * @property {string} sort Which column; empty for the one that tells most.
 * @property {boolean} ascending
 * @property {number} chosen The number of a pattern, -1 for none.
 */

/** @type {Readonly<State>} */
export const INITIAL = Object.freeze({
    log: 0,
    minCount: 0,
    minOccurrences: 0,
    minRecordings: 0,
    minLength: 0,
    maxLength: Infinity,
    text: "",
    passes: "",
    begins: "",
    loopsOnce: false,
    sort: "",
    ascending: false,
    chosen: -1,
});

/** What "Reset" leaves as it is. */
const KEPT = ["log", "sort", "ascending", "chosen"];

/**
 * What makes the filters pass everything.
 *
 * @returns {Partial<State>}
 */
export function withoutFilters() {
    return Object.fromEntries(Object.entries(INITIAL).filter(([name]) => !KEPT.includes(name)));
}

/**
 * The state as an address's fragment, without "#". Tells only what differs from the beginning.
 *
 * @param {State} state
 */
export function toFragment(state) {
    const told = new URLSearchParams();
    for (const [name, value] of Object.entries(state)) {
        if (value !== INITIAL[/** @type {keyof State} */ (name)])
            told.set(name, String(value));
    }
    return told.toString();
}

/**
 * @param {string} text
 * @param {number | string | boolean} initial Tells the kind of value, and stands for what is none.
 */
function read(text, initial) {
    if (typeof initial === "string")
        return text;
    if (typeof initial === "boolean")
        return text === "true";
    const number = Number(text);
    return Number.isSafeInteger(number) ? number : initial;
}

/**
 * The state that a fragment tells; what it does not tell, or tells wrongly, is as at the beginning.
 *
 * @param {string} fragment
 * @returns {State}
 */
export function fromFragment(fragment) {
    const told = new URLSearchParams(fragment.replace(/^#/, ""));
    const entries = Object.entries(INITIAL).map(([name, initial]) => {
        const text = told.get(name);
        return [name, text === null ? initial : read(text, initial)];
    });
    return Object.fromEntries(entries);
}
