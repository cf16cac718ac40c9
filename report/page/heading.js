/** @import { PageData, Report } from "./data.js" */
import { byId, element } from "./elements.js";
import { some, thousands } from "./numbers.js";

/**
 * Says what the page is of.
 *
 * @param {PageData} data
 * @param {Report} report
 */
export function showHeading(data, { raw, size }) {
    const name = nameOf(raw.log);
    document.title = `${name} – Quillon`;
    byId("log-name", HTMLElement).textContent = name;
    const facts = [some(raw.recordings, "recording"), some(raw.events, "event"),
        some(raw.keys.filter(Boolean).length, "key"), some(raw.found, "pattern")];
    byId("facts", HTMLElement).replaceChildren(...facts.map((fact) => element("li", {}, fact)));
    const notes = [...leftOut(raw.found, size), ...raw.warnings.map((warning) => `Warning: ${warning}.`)];
    byId("notes", HTMLElement).replaceChildren(...notes.map((note) => element("li", {}, note)));
    byId("version", HTMLElement).textContent = `quillon-report ${data.version}`;
}

/**
 * @param {number} found
 * @param {number} size
 */
function leftOut(found, size) {
    return found > size
        ? [`This page has ${thousands(size)} of them and leaves out ${thousands(found - size)}.`]
        : [];
}

/**
 * Folders are of no interest to whom the page is sent.
 *
 * @param {string} log
 */
export function nameOf(log) {
    return log.split("/").at(-1) || log;
}
