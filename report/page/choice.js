/** @import { RawGroups, Report } from "./data.js" */
import { differenceOf, sequenceOf, shareOf } from "./data.js";
import { element } from "./elements.js";
import { keyName } from "./keys.js";
import { chance, percent, points, some, thousands } from "./numbers.js";

/** Steps of a long sequence that are listed at either end. */
const MOST_STEPS = 500;

/**
 * What is told of the chosen pattern: its figures, where it was found, and all its steps.
 *
 * @param {HTMLElement} panel
 * @param {Report} report
 * @param {number} pattern -1 for none.
 * @param {(key: number) => void} onStep A step was pressed.
 */
export function showChoice(panel, report, pattern, onStep) {
    if (pattern < 0) {
        panel.replaceChildren(element("p", { class: "hint" },
            "Choose a row to see its steps here and its way in the picture."));
        return;
    }
    const { groups } = report.raw;
    panel.replaceChildren(
        element("p", {}, figuresOf(report, pattern)),
        ...groups ? [element("p", {}, comparedIn(groups, pattern))] : [],
        ...placesOf(report, pattern),
        stepList(report, pattern, onStep));
}

/**
 * @param {Report} report
 * @param {number} pattern
 */
function figuresOf({ figures, raw }, pattern) {
    const recordings = figures.recordings[pattern];
    return `${some(figures.length[pattern], "step")}. Found ${some(figures.occurrences[pattern], "time")}`
        + ` in ${thousands(recordings)} of ${some(raw.recordings, "recording")}`
        + ` (${percent(raw.recordings > 0 ? recordings / raw.recordings : 0)});`
        + ` came again ${some(figures.count[pattern], "time")}.`;
}

/**
 * @param {RawGroups} groups
 * @param {number} pattern
 */
function comparedIn(groups, pattern) {
    const shares = groups.names.map((name, group) =>
        `${name} ${percent(shareOf(groups, pattern, group))} (${thousands(groups.found[group][pattern])}`
        + ` of ${thousands(groups.recordings[group])})`);
    return `${shares.join(", ")}: ${points(differenceOf(groups, pattern))} points, 95 % interval`
        + ` ${points(groups.low[pattern])} to ${points(groups.high[pattern])},`
        + ` q = ${chance(groups.q[pattern])}.`;
}

/**
 * @param {Report} report
 * @param {number} pattern
 */
function placesOf({ raw }, pattern) {
    const numbers = raw.patterns.places[pattern];
    const places = [];
    for (let i = 0; i + 1 < numbers.length; i += 2)
        places.push(`recording ${thousands(numbers[i])} from event ${thousands(numbers[i + 1])}`);
    return places.length > 0 ? [element("p", {}, `First found in ${places.join("; in ")}.`)] : [];
}

/**
 * @param {Report} report
 * @param {number} pattern
 * @param {(key: number) => void} onStep
 */
function stepList(report, pattern, onStep) {
    const sequence = sequenceOf(report, pattern);
    const list = element("ol");
    for (let i = 0; i < sequence.length; ++i) {
        if (i === MOST_STEPS && sequence.length > 2 * MOST_STEPS) {
            const left = sequence.length - 2 * MOST_STEPS;
            list.append(element("li", { class: "hint", value: "…" }, `${thousands(left)} more`));
            i += left;
        }
        const step = element("button", { type: "button" }, element("bdi", {}, keyName(report, sequence[i])));
        const key = sequence[i];
        step.addEventListener("click", () => onStep(key));
        list.append(element("li", { value: String(i + 1) }, step));
    }
    return list;
}
