/** @import { Report } from "./data.js" */
/** @import { State } from "./state.js" */
import { byId, element } from "./elements.js";

const FIELDS = /** @type {const} */ (["text", "passes", "begins"]);

/** More of them help nobody to choose. */
const MOST_PROPOSED = 200;

/** The filters by text, and whether loops are listed once. */
export class Texts {
    /** @type {Report | null} */ #report = null;

    /** @param {(change: Partial<State>) => void} onChange */
    constructor(onChange) {
        for (const name of FIELDS) {
            const field = byId(name, HTMLInputElement);
            field.addEventListener("input", () => {
                onChange({ [name]: field.value.trim() });
                this.#propose(field.value);
            });
            field.addEventListener("focus", () => this.#propose(field.value));
        }
        const loops = byId("loopsOnce", HTMLInputElement);
        loops.addEventListener("input", () => onChange({ loopsOnce: loops.checked }));
    }

    /** @param {Report} report */
    setReport(report) {
        this.#report = report;
    }

    /** @param {State} state */
    show(state) {
        for (const name of FIELDS) {
            const field = byId(name, HTMLInputElement);
            if (field.value.trim() !== state[name])
                field.value = state[name];
        }
        byId("loopsOnce", HTMLInputElement).checked = state.loopsOnce;
    }

    /** @param {string} typed */
    #propose(typed) {
        const wanted = typed.trim().toLowerCase();
        const proposed = (this.#report?.raw.keys ?? [])
            .filter((key) => key && key.toLowerCase().includes(wanted)).slice(0, MOST_PROPOSED);
        byId("keys", HTMLDataListElement).replaceChildren(
            ...proposed.map((key) => element("option", { value: key })));
    }
}
