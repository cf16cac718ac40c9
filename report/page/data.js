/**
 * What a report's writer puts into the page. Numbers of keys and patterns count from 0, those of
 * recordings and events from 1.
 *
 * @typedef {object} PageData
 * @property {string} version
 * @property {RawReport[]} reports One for each log.
 *
 * @typedef {object} RawReport
 * @property {string} log The name as given, or that of a comparison.
 * @property {number} recordings
 * @property {number} events
 * @property {number} found How many patterns were found, those that are left out among them.
 * @property {string[]} warnings
 * @property {string[]} keys By number; empty for one that has no leaf.
 * @property {string[]} names As little of each key as tells it from the others.
 * @property {number[]} keyEvents
 * @property {number[]} keyRecordings
 * @property {number[]} menus Keys that stand in the row of menus, from left to right.
 * @property {(number | null)[]} places Across and down for each key, from 0 to 1; null for none.
 * @property {number[]} steps Pieces of the recordings, one behind the other.
 * @property {RawPatterns} patterns
 * @property {RawGroups} [groups] In a comparison.
 *
 * @typedef {object} RawPatterns Each pattern's figures, under its number.
 * @property {number[]} first Where its sequence begins in `steps`.
 * @property {number[]} length
 * @property {number[]} count
 * @property {number[]} occurrences
 * @property {number[]} recordings
 * @property {number[][]} places Up to three: recording, event, recording, event and so on.
 *
 * @typedef {object} RawGroups What differs between two groups of recordings.
 * @property {[string, string]} names
 * @property {[number, number]} recordings
 * @property {[number[], number[]]} found Of each pattern, the recordings that have it.
 * @property {number[]} low The ends of the 95 % interval of the difference of shares.
 * @property {number[]} high
 * @property {number[]} q Adjusted for as many tests as there are patterns.
 */

/**
 * A report to be searched.
 *
 * @typedef {object} Report
 * @property {RawReport} raw
 * @property {number} size How many patterns there are.
 * @property {Int32Array} steps
 * @property {Figures} figures
 *
 * @typedef {object} Figures
 * @property {Int32Array} first
 * @property {Int32Array} length
 * @property {Int32Array} count
 * @property {Int32Array} occurrences
 * @property {Int32Array} recordings
 */

/**
 * @param {RawReport} raw
 * @returns {Report}
 */
export function readReport(raw) {
    const { first, length, count, occurrences, recordings } = raw.patterns;
    return {
        raw,
        size: first.length,
        steps: Int32Array.from(raw.steps),
        figures: {
            first: Int32Array.from(first),
            length: Int32Array.from(length),
            count: Int32Array.from(count),
            occurrences: Int32Array.from(occurrences),
            recordings: Int32Array.from(recordings),
        },
    };
}

/**
 * The keys of a pattern, in order.
 *
 * @param {Report} report
 * @param {number} pattern
 */
export function sequenceOf(report, pattern) {
    const first = report.figures.first[pattern];
    return report.steps.subarray(first, first + report.figures.length[pattern]);
}

/**
 * The key where a pattern begins and ends.
 *
 * @param {Report} report
 * @param {number} pattern
 */
export function anchorOf(report, pattern) {
    return report.steps[report.figures.first[pattern]];
}

/**
 * The share of recordings of group 0 or 1 that have a pattern.
 *
 * @param {RawGroups} groups
 * @param {number} pattern
 * @param {number} group
 */
export function shareOf(groups, pattern, group) {
    const all = groups.recordings[group];
    return all > 0 ? groups.found[group][pattern] / all : 0;
}

/**
 * By how much the second group's share is larger than the first one's.
 *
 * @param {RawGroups} groups
 * @param {number} pattern
 */
export function differenceOf(groups, pattern) {
    return shareOf(groups, pattern, 1) - shareOf(groups, pattern, 0);
}
