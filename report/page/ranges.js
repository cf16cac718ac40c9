/** @import { Report } from "./data.js" */
/** @import { State } from "./state.js" */
import { byId } from "./elements.js";
import { thousands } from "./numbers.js";

/**
 * A slider and a field that mean the same number.
 *
 * @typedef {object} Range
 * @property {"minCount" | "minOccurrences" | "minRecordings" | "minLength" | "maxLength"} name
 * @property {"count" | "occurrences" | "recordings" | "length"} figure
 */

/** @type {Range[]} */
const RANGES = [
    { name: "minCount", figure: "count" },
    { name: "minOccurrences", figure: "occurrences" },
    { name: "minRecordings", figure: "recordings" },
    { name: "minLength", figure: "length" },
    { name: "maxLength", figure: "length" },
];

/**
 * The filters by number. A slider steps through the numbers that there are, so that it is not spent
 * on a few large ones.
 */
export class Ranges {
    /** @type {Map<string, number[]>} Of each figure, the differing numbers, rising. */ #values = new Map();
    /** @type {(change: Partial<State>) => void} */ #onChange;

    /** @param {(change: Partial<State>) => void} onChange */
    constructor(onChange) {
        this.#onChange = onChange;
        for (const range of RANGES) {
            const { slider, field } = controlsOf(range);
            slider.addEventListener("input", () => this.#slide(range));
            field.addEventListener("input", () => this.#type(range));
        }
    }

    /** @param {Report} report */
    setReport({ figures }) {
        for (const { figure } of RANGES)
            this.#values.set(figure, [...new Set(figures[figure])].sort((a, b) => a - b));
        for (const range of RANGES) {
            const { slider, field } = controlsOf(range);
            const values = this.#valuesOf(range);
            slider.max = String(Math.max(values.length - 1, 0));
            slider.disabled = values.length < 2;
            field.max = String(values.at(-1) ?? 0);
        }
    }

    /** @param {State} state */
    show(state) {
        for (const range of RANGES) {
            const { slider, field } = controlsOf(range);
            const values = this.#valuesOf(range);
            const isMost = range.name === "maxLength";
            const value = isMost ? Math.min(state.maxLength, values.at(-1) ?? 0)
                : Math.max(state[range.name], values[0] ?? 0);
            const above = values.findIndex((other) => other >= value);
            slider.value = String(above < 0 ? values.length - 1 : above);
            slider.setAttribute("aria-valuetext", thousands(value));
            if (field !== document.activeElement)
                field.value = String(value);
        }
    }

    /** @param {Range} range */
    #valuesOf({ figure }) {
        return this.#values.get(figure) ?? [];
    }

    /** @param {Range} range */
    #slide(range) {
        const position = Number(controlsOf(range).slider.value);
        const values = this.#valuesOf(range);
        this.#change(range, values[position] ?? 0);
    }

    /** @param {Range} range */
    #type(range) {
        const { field } = controlsOf(range);
        if (field.value !== "" && field.validity.valid)
            this.#change(range, Number(field.value));
    }

    /**
     * At its end a slider filters nothing.
     *
     * @param {Range} range
     * @param {number} value
     */
    #change(range, value) {
        const values = this.#valuesOf(range);
        if (range.name === "maxLength")
            this.#onChange({ maxLength: value >= (values.at(-1) ?? 0) ? Infinity : value });
        else
            this.#onChange({ [range.name]: value <= (values[0] ?? 0) ? 0 : value });
    }
}

/** @param {Range} range */
function controlsOf({ name }) {
    return { slider: byId(`${name}-slider`, HTMLInputElement), field: byId(name, HTMLInputElement) };
}
