/** @import { Report } from "./data.js" */
import { sequenceOf } from "./data.js";

/**
 * Where the rotation of a loop begins that is least of all in the order of its steps. Two candidates
 * race; the one that loses at some step loses with all beginnings up to there.
 *
 * @param {Int32Array} loop Each step once.
 */
function leastRotation(loop) {
    const size = loop.length;
    let a = 0;
    let b = 1;
    let same = 0;
    while (a < size && b < size && same < size) {
        const difference = loop[(a + same) % size] - loop[(b + same) % size];
        if (difference === 0) {
            ++same;
            continue;
        }
        if (difference > 0)
            a += same + 1;
        else
            b += same + 1;
        if (a === b)
            ++b;
        same = 0;
    }
    return Math.min(a, b);
}

/**
 * The same for all patterns that are the same loop, and for no others.
 *
 * @param {Report} report
 * @param {number} pattern
 */
function loopOf(report, pattern) {
    const loop = sequenceOf(report, pattern).subarray(0, -1);
    const begin = leastRotation(loop);
    return [...loop.subarray(begin), ...loop.subarray(0, begin)].join();
}

/** @type {WeakMap<Report, Int32Array>} */
const NUMBERS = new WeakMap();

/**
 * The number of each pattern's loop. Takes a while the first time.
 *
 * @param {Report} report
 */
export function loopNumbers(report) {
    let numbers = NUMBERS.get(report);
    if (!numbers) {
        const known = new Map();
        numbers = new Int32Array(report.size).map((_, pattern) => {
            const loop = loopOf(report, pattern);
            if (!known.has(loop))
                known.set(loop, known.size);
            return known.get(loop);
        });
        NUMBERS.set(report, numbers);
    }
    return numbers;
}

/**
 * Whether `a` stands for a loop rather than `b`: it was found in more recordings, or as many and more
 * often, or else it came again more often or was found first.
 *
 * @param {Report} report
 * @param {number} a
 * @param {number} b
 */
function leads(report, a, b) {
    const { recordings, occurrences, count } = report.figures;
    return (recordings[a] - recordings[b] || occurrences[a] - occurrences[b]
        || count[a] - count[b] || b - a) > 0;
}

/**
 * Of patterns that are one loop, equal but for where they begin, the one that leads.
 *
 * @param {Report} report
 * @param {Int32Array} patterns
 */
export function loopsOnce(report, patterns) {
    const numbers = loopNumbers(report);
    const leaders = new Map();
    for (const pattern of patterns) {
        const leader = leaders.get(numbers[pattern]);
        if (leader === undefined || leads(report, pattern, leader))
            leaders.set(numbers[pattern], pattern);
    }
    return patterns.filter((pattern) => leaders.get(numbers[pattern]) === pattern);
}
