/** @import { PageData, Report } from "./data.js" */
/** @import { State } from "./state.js" */
import { showChoice } from "./choice.js";
import { toCsv } from "./csv.js";
import { readReport } from "./data.js";
import { byId, element } from "./elements.js";
import { choose } from "./filter.js";
import { nameOf, showHeading } from "./heading.js";
import { keyName } from "./keys.js";
import { loopNumbers } from "./loops.js";
import { some, thousands } from "./numbers.js";
import { sorted } from "./order.js";
import { Picture } from "./picture.js";
import { Pointing } from "./pointing.js";
import { Ranges } from "./ranges.js";
import { fromFragment, toFragment, withoutFilters } from "./state.js";
import { Table } from "./table.js";
import { Texts } from "./texts.js";

/** Where filters would fill the page; as in the style sheet. */
const NARROW = "(max-width: 55rem)";

/** Rows that are printed. */
const PRINTED = 200;

/** Milliseconds in which the address follows: browsers refuse it many changes at once. */
const ADDRESS_DELAY = 300;

/** The page: what is chosen, and all that shows it. */
class Explorer {
    /** @type {PageData} */ #data;
    /** @type {State} */ #state = fromFragment(location.hash);
    /** @type {Report} */ #report;
    /** @type {Int32Array} Those that the filters leave. */ #patterns = new Int32Array();
    #addressTimer = 0;

    #view = byId("view", HTMLElement);
    #picture = new Picture(byId("back", HTMLCanvasElement), byId("front", HTMLCanvasElement));
    #pointing = new Pointing(this.#view, this.#picture, (key) => this.#showTip(key),
        (key) => this.#pressKey(key));
    #table = new Table(byId("table", HTMLElement), (column) => this.#sortBy(column),
        (pattern) => this.#change({ chosen: pattern }));
    #ranges = new Ranges((change) => this.#change(change));
    #texts = new Texts((change) => this.#change(change));

    /** @param {PageData} data */
    constructor(data) {
        this.#data = data;
        this.#report = this.#takeReport();
        this.#listLogs();
        byId("all-filters", HTMLDetailsElement).open = !matchMedia(NARROW).matches;
        this.#listen();
        this.#showAll();
        this.#table.revealChosen();
    }

    #listen() {
        /** @param {string} id @param {() => void} act */
        const onClick = (id, act) => byId(id, HTMLButtonElement).addEventListener("click", act);
        onClick("zoom-in", () => this.#pointing.zoom(1.5));
        onClick("zoom-out", () => this.#pointing.zoom(1 / 1.5));
        onClick("zoom-fit", () => this.#pointing.fit());
        onClick("reset", () => this.#change(withoutFilters()));
        onClick("copy", () => this.#copy());
        onClick("print", () => print());
        addEventListener("hashchange", () => this.#follow());
        addEventListener("beforeprint", () => this.#spread(PRINTED, 3));
        addEventListener("afterprint", () => this.#spread(0, devicePixelRatio));
        matchMedia("(prefers-color-scheme: dark)").addEventListener("change", () => this.#picture.recolour());
        new ResizeObserver(() => this.#picture.resize()).observe(this.#view);
    }

    /** Takes up the report that the state names, or the first one. */
    #takeReport() {
        this.#state.log = this.#data.reports[this.#state.log] ? this.#state.log : 0;
        const report = readReport(this.#data.reports[this.#state.log]);
        showHeading(this.#data, report);
        this.#picture.setReport(report);
        this.#table.setReport(report);
        this.#ranges.setReport(report);
        this.#texts.setReport(report);
        setTimeout(() => loopNumbers(report)); // so that the first wish for them is quick
        return report;
    }

    /** Of several logs one is chosen. */
    #listLogs() {
        const list = byId("log", HTMLSelectElement);
        const names = this.#data.reports.map(({ log }, i) => element("option", { value: String(i) }, nameOf(log)));
        list.replaceChildren(...names);
        byId("logs", HTMLElement).hidden = names.length < 2;
        list.addEventListener("change", () => this.#change({ log: Number(list.value), chosen: -1 }));
    }

    /** @param {Partial<State>} change */
    #change(change) {
        const before = this.#state;
        this.#state = { ...before, ...change };
        if (this.#state.log !== before.log)
            this.#report = this.#takeReport();
        const onlyChoice = Object.keys(change).every((name) => name === "chosen");
        if (onlyChoice)
            this.#showChoice();
        else
            this.#showAll();
        clearTimeout(this.#addressTimer);
        this.#addressTimer = setTimeout(() => this.#tellAddress(), ADDRESS_DELAY);
    }

    #tellAddress() {
        history.replaceState(null, "", "#" + toFragment(this.#state));
    }

    /** Goes where a link leads. */
    #follow() {
        this.#change(fromFragment(location.hash));
        this.#table.revealChosen();
    }

    #showAll() {
        const { ascending } = this.#state;
        const sort = this.#sort;
        this.#patterns = choose(this.#report, this.#state, sorted(this.#report, sort, ascending));
        this.#ranges.show(this.#state);
        this.#texts.show(this.#state);
        byId("log", HTMLSelectElement).value = String(this.#state.log);
        this.#table.show(this.#patterns, sort, ascending);
        this.#picture.show(this.#patterns, this.#shownChoice);
        this.#showChoice();
        byId("shown", HTMLElement).textContent = this.#shownText();
    }

    #showChoice() {
        const chosen = this.#shownChoice;
        this.#table.choose(chosen);
        this.#picture.choose(chosen);
        showChoice(byId("choice", HTMLElement), this.#report, chosen, (key) => this.#point(key));
    }

    /** A pattern that the filters leave out is not shown as chosen. */
    get #shownChoice() {
        return this.#patterns.includes(this.#state.chosen) ? this.#state.chosen : -1;
    }

    #shownText() {
        const { length } = this.#patterns;
        return length === this.#report.size ? `All ${some(length, "pattern")}`
            : `${thousands(length)} of ${some(this.#report.size, "pattern")}`;
    }

    get #sort() {
        return this.#state.sort || (this.#report.raw.groups ? "evidence" : "count");
    }

    /** @param {string} column */
    #sortBy(column) {
        const again = this.#sort === column;
        this.#change({ sort: column, ascending: again ? !this.#state.ascending : column === "sequence" });
    }

    /** @param {number} key */
    #point(key) {
        this.#picture.reveal(key);
        this.#showTip(key);
    }

    /**
     * Leaves the patterns that pass a key; pressed again, all of them.
     *
     * @param {number} key
     */
    #pressKey(key) {
        const name = this.#report.raw.keys[key];
        this.#change({ passes: this.#state.passes === name ? "" : name });
    }

    /** @param {number} key -1 for none. */
    #showTip(key) {
        const tip = byId("tip", HTMLElement);
        const point = this.#picture.pointOf(key);
        tip.hidden = !point;
        if (!point)
            return;
        const { keyEvents, keyRecordings } = this.#report.raw;
        tip.replaceChildren(element("bdi", {}, keyName(this.#report, key)),
            ` – ${some(keyEvents[key], "event")} in ${some(keyRecordings[key], "recording")}`);
        tip.classList.toggle("left", point.x > this.#view.clientWidth / 2);
        tip.style.setProperty("--x", `${point.x}px`);
        tip.style.setProperty("--y", `${point.y}px`);
    }

    async #copy() {
        const note = byId("copied", HTMLElement);
        try {
            await navigator.clipboard.writeText(toCsv(this.#report, this.#patterns));
            note.textContent = `${some(this.#patterns.length, "row")} copied`;
        } catch {
            note.textContent = "The browser lets no page copy";
        }
    }

    /**
     * Gets ready to be printed, sharply.
     *
     * @param {number} rows
     * @param {number} ratio
     */
    #spread(rows, ratio) {
        this.#table.spread(rows);
        const left = rows > 0 ? this.#patterns.length - rows : 0;
        byId("not-printed", HTMLElement).textContent = left > 0 ? `${some(left, "more row")}` : "";
        document.documentElement.classList.toggle("printed", rows > 0);
        this.#view.style.setProperty("--aspect", `${this.#view.clientWidth} / ${this.#view.clientHeight}`);
        this.#picture.recolour();
        this.#picture.draw(ratio);
    }
}

new Explorer(JSON.parse(byId("data", HTMLElement).textContent ?? ""));
