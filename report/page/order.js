/** @import { Report } from "./data.js" */
import { differenceOf, sequenceOf, shareOf } from "./data.js";

/** @type {WeakMap<Report, Int32Array>} */
const RANKS = new WeakMap();

/**
 * Each key's place among all in the order of their names.
 *
 * @param {Report} report
 */
function keyRanks(report) {
    let ranks = RANKS.get(report);
    if (!ranks) {
        const { compare } = new Intl.Collator(undefined, { numeric: true });
        const { keys } = report.raw;
        const sorted = [...keys.keys()].sort((a, b) => compare(keys[a], keys[b]));
        ranks = new Int32Array(keys.length);
        for (let i = 0; i < sorted.length; ++i)
            ranks[sorted[i]] = i;
        RANKS.set(report, ranks);
    }
    return ranks;
}

/**
 * By their keys' names, step by step.
 *
 * @param {Report} report
 * @returns {(a: number, b: number) => number}
 */
function bySequence(report) {
    const ranks = keyRanks(report);
    return (a, b) => {
        const stepsOfA = sequenceOf(report, a);
        const stepsOfB = sequenceOf(report, b);
        const shorter = Math.min(stepsOfA.length, stepsOfB.length);
        for (let i = 0; i < shorter; ++i) {
            const difference = ranks[stepsOfA[i]] - ranks[stepsOfB[i]];
            if (difference !== 0)
                return difference;
        }
        return stepsOfA.length - stepsOfB.length;
    };
}

/**
 * What patterns of a column are compared by; null when the report does not have it.
 *
 * @param {Report} report
 * @param {string} column
 * @returns {((a: number, b: number) => number) | null}
 */
function comparison(report, column) {
    const { figures, raw: { groups } } = report;
    switch (column) {
        case "count":
        case "occurrences":
        case "recordings":
        case "length": {
            const figure = figures[column];
            return (a, b) => figure[a] - figure[b];
        }
        case "sequence":
            return bySequence(report);
        case "first":
        case "second":
            return groups ? byGroup(report, column === "first" ? 0 : 1) : null;
        case "difference":
            return groups ? (a, b) => differenceOf(groups, a) - differenceOf(groups, b) : null;
        case "evidence": // the least q is the most
            return groups ? (a, b) => groups.q[b] - groups.q[a] : null;
        default:
            return null;
    }
}

/**
 * @param {Report} report
 * @param {number} group
 * @returns {((a: number, b: number) => number) | null}
 */
function byGroup(report, group) {
    const { groups } = report.raw;
    return groups ? (a, b) => shareOf(groups, a, group) - shareOf(groups, b, group) : null;
}

/** @type {WeakMap<Report, Map<string, Int32Array>>} By column and direction. */
const ORDERS = new WeakMap();

/**
 * All patterns, sorted by a column, ties as they stand in the report.
 *
 * @param {Report} report
 * @param {string} column Those that the report does not have leave everything as it stands.
 * @param {boolean} ascending
 */
export function sorted(report, column, ascending) {
    const orders = ORDERS.get(report) ?? new Map();
    ORDERS.set(report, orders);
    const name = `${column} ${ascending}`;
    if (!orders.has(name))
        orders.set(name, newOrder(report, comparison(report, column), ascending));
    return orders.get(name);
}

/**
 * @param {Report} report
 * @param {((a: number, b: number) => number) | null} compare
 * @param {boolean} ascending
 */
function newOrder(report, compare, ascending) {
    const order = new Int32Array(report.size).map((_, pattern) => pattern);
    return compare ? order.sort((a, b) => (ascending ? compare(a, b) : compare(b, a)) || a - b) : order;
}
