/** @import { Column } from "./columns.js" */
/** @import { Report } from "./data.js" */
import { columnsOf } from "./columns.js";
import { element } from "./elements.js";

/** Rows that are there above and below those in view, so that scrolling shows no gap. */
const SPARE = 8;

/** @type {Record<string, (at: number, page: number, last: number) => number>} */
const MOVES = {
    ArrowUp: (at) => at - 1,
    ArrowDown: (at) => at + 1,
    PageUp: (at, page) => at - page,
    PageDown: (at, page) => at + page,
    Home: () => 0,
    End: (_at, _page, last) => last,
};

/**
 * The table of patterns. Only the rows in view are elements, so it takes any number of them. One row
 * can be chosen; keys move the choice.
 */
export class Table {
    /** @type {HTMLElement} */ #grid;
    /** @type {HTMLElement} */ #head = element("div", { role: "rowgroup", class: "head" });
    /** @type {HTMLElement} */ #body = element("div", { role: "rowgroup", class: "body" });
    /** @type {(column: string) => void} */ #onSort;
    /** @type {(pattern: number) => void} */ #onChoose;
    /** @type {Report | null} */ #report = null;
    /** @type {Column[]} */ #columns = [];
    /** @type {Int32Array} */ #patterns = new Int32Array();
    #chosen = -1;
    /** @type {Map<number, HTMLElement>} The rows that are there, by position. */ #rows = new Map();
    #waits = false;
    #rowHeight = 30; // pixels, as are
    #viewHeight = 0;

    /**
     * @param {HTMLElement} grid Scrolls.
     * @param {(column: string) => void} onSort A column's head was pressed.
     * @param {(pattern: number) => void} onChoose A row was chosen.
     */
    constructor(grid, onSort, onChoose) {
        this.#grid = grid;
        this.#onSort = onSort;
        this.#onChoose = onChoose;
        grid.append(this.#head, this.#body);
        grid.addEventListener("scroll", () => this.#scrolled(), { passive: true });
        grid.addEventListener("keydown", (event) => this.#key(event));
        this.#body.addEventListener("click", (event) => this.#click(event));
        new ResizeObserver(() => this.#measure()).observe(grid);
    }

    /** @param {Report} report */
    setReport(report) {
        this.#report = report;
        this.#patterns = new Int32Array();
        this.#columns = columnsOf(report);
        this.#grid.classList.toggle("compared", report.raw.groups !== undefined);
        this.#grid.setAttribute("aria-colcount", String(this.#columns.length));
        this.#head.replaceChildren(element("div", { role: "row", "aria-rowindex": "1" },
            ...this.#columns.map((column) => this.#headOf(column))));
        this.#measure();
    }

    /**
     * @param {Int32Array} patterns
     * @param {string} sort The column that they are sorted by.
     * @param {boolean} ascending
     */
    show(patterns, sort, ascending) {
        this.#patterns = patterns;
        this.#grid.setAttribute("aria-rowcount", String(patterns.length + 1));
        this.#stretch();
        for (const head of this.#head.querySelectorAll("[data-column]")) {
            const order = ascending ? "ascending" : "descending";
            head.setAttribute("aria-sort", head.getAttribute("data-column") === sort ? order : "none");
        }
        this.#clear();
        this.#fill();
    }

    /** @param {number} pattern -1 for none. */
    choose(pattern) {
        this.#chosen = pattern;
        for (const [position, row] of this.#rows)
            this.#mark(row, position);
        this.#tellActive();
    }

    /** Scrolls no more than is needed to show the chosen row. */
    revealChosen() {
        const position = this.#patterns.indexOf(this.#chosen);
        if (position < 0)
            return;
        const height = this.#rowHeight;
        const above = position * height;
        const below = above + height - this.#viewHeight;
        this.#grid.scrollTop = Math.max(Math.min(this.#grid.scrollTop, above), below);
        this.#fill();
    }

    /**
     * Makes all of the first rows, to be printed, or again only those in view.
     *
     * @param {number} count How many; 0 for those in view.
     */
    spread(count) {
        this.#clear();
        if (count > 0)
            this.#make(0, Math.min(count, this.#patterns.length) - 1);
        else
            this.#fill();
    }

    /** Asks the style sheet, as on a narrow page a row takes two lines. Once a size, as it takes time. */
    #measure() {
        this.#rowHeight = parseFloat(getComputedStyle(this.#grid).getPropertyValue("--row"));
        this.#viewHeight = this.#grid.clientHeight - this.#head.offsetHeight;
        this.#stretch();
        this.#fill();
    }

    #stretch() {
        this.#body.style.blockSize = `${this.#patterns.length * this.#rowHeight}px`;
    }

    get #rowsInView() {
        return Math.max(1, Math.floor(this.#viewHeight / this.#rowHeight));
    }

    /** @param {Column} column */
    #headOf({ name, title, hint }) {
        const button = element("button", { type: "button", title: hint, tabindex: "0" }, title);
        button.addEventListener("click", () => this.#onSort(name));
        return element("div", { role: "columnheader", "data-column": name, class: `cell ${name}` }, button);
    }

    #scrolled() {
        if (this.#waits)
            return;
        this.#waits = true;
        requestAnimationFrame(() => {
            this.#waits = false;
            this.#fill();
        });
    }

    #clear() {
        this.#rows.clear();
        this.#body.replaceChildren();
    }

    /** Makes the rows that have come into view, and drops those that are far from it. */
    #fill() {
        const first = Math.max(0, Math.floor(this.#grid.scrollTop / this.#rowHeight) - SPARE);
        const last = Math.min(this.#patterns.length - 1, first + this.#rowsInView + 2 * SPARE);
        for (const [position, row] of this.#rows) {
            if (position < first || position > last) {
                row.remove();
                this.#rows.delete(position);
            }
        }
        this.#make(first, last);
        this.#tellActive();
    }

    /**
     * @param {number} first Positions.
     * @param {number} last
     */
    #make(first, last) {
        const made = [];
        for (let position = first; position <= last; ++position) {
            if (!this.#rows.has(position))
                made.push(this.#newRow(position));
        }
        this.#body.append(...made);
    }

    /** @param {number} position */
    #newRow(position) {
        const report = /** @type {Report} */ (this.#report);
        const row = element("div", {
            role: "row", id: `row-${position}`, "aria-rowindex": String(position + 2),
            "data-position": String(position),
        });
        row.style.setProperty("--position", String(position));
        for (const { name, cell } of this.#columns)
            row.append(element("div", { role: "gridcell", class: `cell ${name}` },
                ...cell(report, this.#patterns[position])));
        this.#mark(row, position);
        this.#rows.set(position, row);
        return row;
    }

    /**
     * @param {HTMLElement} row
     * @param {number} position
     */
    #mark(row, position) {
        row.setAttribute("aria-selected", String(this.#patterns[position] === this.#chosen));
    }

    /** A screen reader hears the chosen row while the table has the focus. */
    #tellActive() {
        const position = this.#patterns.indexOf(this.#chosen);
        if (this.#rows.has(position))
            this.#grid.setAttribute("aria-activedescendant", `row-${position}`);
        else
            this.#grid.removeAttribute("aria-activedescendant");
    }

    /** @param {MouseEvent} event */
    #click(event) {
        const row = event.target instanceof Element && event.target.closest("[data-position]");
        if (row)
            this.#onChoose(this.#patterns[Number(row.getAttribute("data-position"))]);
    }

    /** @param {KeyboardEvent} event */
    #key(event) {
        const move = MOVES[event.key];
        const last = this.#patterns.length - 1;
        if (event.target !== this.#grid || !move || last < 0)
            return;
        event.preventDefault();
        const at = this.#patterns.indexOf(this.#chosen);
        const to = Math.min(Math.max(move(at, this.#rowsInView, last), 0), last);
        this.#onChoose(this.#patterns[to]);
        this.revealChosen();
    }
}
