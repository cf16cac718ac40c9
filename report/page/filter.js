/** @import { Report } from "./data.js" */
/** @import { State } from "./state.js" */
import { keysCalled, keysWith } from "./keys.js";
import { loopsOnce } from "./loops.js";

/**
 * How many of the marked keys stand before each place of the steps, so that two looks tell whether a
 * run of steps passes one.
 *
 * @param {Report} report
 * @param {Uint8Array} marked
 */
function countMarked(report, marked) {
    const { steps } = report;
    const before = new Int32Array(steps.length + 1);
    for (let i = 0; i < steps.length; ++i)
        before[i + 1] = before[i] + marked[steps[i]];
    return before;
}

/**
 * Whether a pattern passes one of the marked keys.
 *
 * @param {Report} report
 * @param {Uint8Array} marked
 * @returns {(pattern: number) => boolean}
 */
function passing(report, marked) {
    const before = countMarked(report, marked);
    const { first, length } = report.figures;
    return (pattern) => before[first[pattern] + length[pattern]] > before[first[pattern]];
}

/**
 * @param {Report} report
 * @param {Uint8Array} marked
 * @returns {(pattern: number) => boolean}
 */
function beginning(report, marked) {
    const { first } = report.figures;
    return (pattern) => marked[report.steps[first[pattern]]] === 1;
}

/**
 * Those filters that look at keys.
 *
 * @param {Report} report
 * @param {State} state
 */
function keyFilters(report, state) {
    const filters = state.text.split(/\s+/).filter(Boolean)
        .map((word) => passing(report, keysWith(report, word)));
    if (state.passes)
        filters.push(passing(report, keysCalled(report, state.passes)));
    if (state.begins)
        filters.push(beginning(report, keysCalled(report, state.begins)));
    return filters;
}

/**
 * The patterns of `order` that the filters leave, in that order.
 *
 * @param {Report} report
 * @param {State} state
 * @param {Int32Array} order
 */
export function choose(report, state, order) {
    const { count, occurrences, recordings, length } = report.figures;
    const filters = keyFilters(report, state);
    const chosen = order.filter((pattern) =>
        count[pattern] >= state.minCount
        && occurrences[pattern] >= state.minOccurrences
        && recordings[pattern] >= state.minRecordings
        && length[pattern] >= state.minLength
        && length[pattern] <= state.maxLength
        && filters.every((passes) => passes(pattern)));
    return state.loopsOnce ? loopsOnce(report, chosen) : chosen;
}
