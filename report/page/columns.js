/** @import { RawGroups, Report } from "./data.js" */
import { differenceOf, sequenceOf, shareOf } from "./data.js";
import { element } from "./elements.js";
import { shortName } from "./keys.js";
import { chance, percent, points, thousands } from "./numbers.js";

/**
 * A column of the table of patterns.
 *
 * @typedef {object} Column
 * @property {string} name Also what the table is sorted by.
 * @property {string} title
 * @property {string} hint
 * @property {(report: Report, pattern: number) => (Node | string)[]} cell
 */

/** Steps at either end of a sequence that a row names. */
const FIRST_STEPS = 6;
const LAST_STEPS = 2;

/**
 * @param {"count" | "occurrences" | "length"} name
 * @param {string} title
 * @param {string} hint
 * @returns {Column}
 */
function figure(name, title, hint) {
    return { name, title, hint, cell: (report, pattern) => [thousands(report.figures[name][pattern])] };
}

/**
 * A bar that fills a share of its cell.
 *
 * @param {number} share
 */
function bar(share) {
    const made = element("span", { class: "bar" });
    made.style.inlineSize = `${100 * share}%`;
    return made;
}

/** @type {Column} */
const RECORDINGS = {
    name: "recordings",
    title: "Recordings",
    hint: "In how many recordings it was found",
    cell({ figures, raw }, pattern) {
        const found = figures.recordings[pattern];
        const share = raw.recordings > 0 ? found / raw.recordings : 0;
        return [bar(share), `${thousands(found)} `, element("small", {}, percent(share))];
    },
};

/** @type {Column} */
const SEQUENCE = {
    name: "sequence",
    title: "Sequence",
    hint: "Its keys, in order",
    cell: (report, pattern) => [element("span", { class: "steps" }, ...stepsOf(report, pattern))],
};

/**
 * @param {Report} report
 * @param {number} pattern
 */
function stepsOf(report, pattern) {
    const sequence = [...sequenceOf(report, pattern)];
    const left = sequence.length - FIRST_STEPS - LAST_STEPS;
    const shown = left > 1 ? [...sequence.slice(0, FIRST_STEPS), -1, ...sequence.slice(-LAST_STEPS)]
        : sequence;
    return shown.flatMap((key, i) => {
        const step = key < 0 ? `… ${left} more` : element("bdi", {}, shortName(report, key));
        return i > 0 ? [element("i", {}, " → "), step] : [step];
    });
}

/**
 * @param {RawGroups} groups
 * @param {0 | 1} group
 * @returns {Column}
 */
function share(groups, group) {
    return {
        name: group === 0 ? "first" : "second",
        title: groups.names[group],
        hint: `The share of the ${groups.recordings[group]} recordings of ${groups.names[group]}`,
        cell(_, pattern) {
            const of = shareOf(groups, pattern, group);
            return [bar(of), percent(of)];
        },
    };
}

/**
 * The bar begins in the middle of the cell and leads to the group with the larger share, in the
 * colour of that group.
 *
 * @param {RawGroups} groups
 * @returns {Column}
 */
function difference(groups) {
    return {
        name: "difference",
        title: "Difference",
        hint: `By how many points of a hundred the share of ${groups.names[1]} is larger`,
        cell(_, pattern) {
            const of = differenceOf(groups, pattern);
            const half = bar(Math.abs(of) / 2);
            half.classList.add(of < 0 ? "less" : "more");
            return [half, points(of)];
        },
    };
}

/**
 * @param {RawGroups} groups
 * @returns {Column}
 */
function evidence(groups) {
    return {
        name: "evidence",
        title: "q",
        hint: "Of the patterns with at most this q, so large a share is expected to differ by chance",
        cell: (_, pattern) => [chance(groups.q[pattern])],
    };
}

/**
 * The columns of a report's table.
 *
 * @param {Report} report
 * @returns {Column[]}
 */
export function columnsOf({ raw: { groups } }) {
    const figures = [
        figure("count", "Count", "How often it came again; in another recording once"),
        figure("occurrences", "Found", "How often it was found in all recordings"),
    ];
    const shares = groups
        ? [share(groups, 0), share(groups, 1), difference(groups), evidence(groups)]
        : [RECORDINGS];
    return [...figures, ...shares, figure("length", "Steps", "How many steps it has"), SEQUENCE];
}
