/** @import { Report } from "./data.js" */
import { anchorOf, sequenceOf, shareOf } from "./data.js";

/** @param {string} text */
function field(text) {
    return /[",\r\n]/.test(text) ? `"${text.replaceAll('"', '""')}"` : text;
}

/**
 * Spreadsheets take some texts for formulae.
 *
 * @param {string} text
 */
function plain(text) {
    return /^[=+\-@\t\r]/.test(text) ? `'${text}` : text;
}

/**
 * Comma-separated values with the first columns of quillon-report's, and the shares of a comparison.
 *
 * @param {Report} report
 * @param {Int32Array} patterns
 */
export function toCsv(report, patterns) {
    const { figures, raw: { log, keys, groups } } = report;
    const shares = groups ? groups.names.map((name) => `share of ${name}`) : [];
    const rows = [["log", "key", "count", "length", "sequence", "occurrences", "recordings", ...shares]];
    for (const pattern of patterns) {
        const sequence = Array.from(sequenceOf(report, pattern), (key) => keys[key]).join(" > ");
        rows.push([plain(log), plain(keys[anchorOf(report, pattern)]), figures.count[pattern], figures.length[pattern],
            plain(sequence), figures.occurrences[pattern], figures.recordings[pattern],
            ...groups ? [shareOf(groups, pattern, 0), shareOf(groups, pattern, 1)] : []].map(String));
    }
    return rows.map((row) => row.map(field).join(",") + "\r\n").join("");
}
