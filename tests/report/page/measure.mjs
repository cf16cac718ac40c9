// Measures the page that explores logs, by the clock of a browser, and prints a table.
// usage: QUILLON_REPORT=PROGRAM measure.mjs
import { statSync } from "node:fs";
import { logOf, open, pageOf, startBrowser, tidyUp } from "./browser.mjs";

const SIDE = 50; // of the square of keys
const MOVES = [[1, 0], [0, 1], [-1, 0], [0, -1]];

/** Numbers that are the same each time. */
function random(seed) {
    return () => {
        seed = (Math.imul(seed, 1664525) + 1013904223) >>> 0;
        return seed / 2 ** 32;
    };
}

/** A way over the square of keys that ends where it begins. */
function loop(next) {
    const moves = [];
    for (let i = 2 + Math.floor(next() * 4); i > 0; --i) {
        const way = Math.floor(next() * 2);
        moves.push(way, way + 2);
    }
    moves.sort(() => next() - 0.5);
    let x = Math.floor(next() * SIDE);
    let y = Math.floor(next() * SIDE);
    return [[x, y], ...moves.map((move) => {
        x = (x + MOVES[move][0] + SIDE) % SIDE;
        y = (y + MOVES[move][1] + SIDE) % SIDE;
        return [x, y];
    })];
}

/** A log with at least so many patterns, of 2,500 keys. */
function largeLog(patterns) {
    const next = random(1);
    return logOf(`log-${patterns}`, Array.from({ length: patterns / 20 }, () => Array.from({ length: 10 },
        () => loop(next).map(([x, y]) => [`window:panel ${x}:button ${y}`, 20 * x, 12 * y])).flat()));
}

/** Milliseconds until a frame shows what comes of a field's new value, or of a press without one. */
function milliseconds(tab, selector, value) {
    return tab.evaluate(async ([of, typed]) => {
        const frame = () => new Promise(requestAnimationFrame);
        const control = document.querySelector(of);
        await frame();
        const before = performance.now();
        if (typed === undefined) {
            control.click();
        } else {
            control.value = typed;
            control.dispatchEvent(new Event("input"));
        }
        await frame();
        await new Promise((done) => { setTimeout(done); });
        return performance.now() - before;
    }, [selector, value]);
}

/** The best of several, as other work on the machine only adds to it. Half of them undo it again. */
async function best(tab, selector, value, undone = value) {
    let least = Infinity;
    for (let i = 0; i < 5; ++i) {
        least = Math.min(least, await milliseconds(tab, selector, value));
        await milliseconds(tab, selector, undone);
    }
    return least;
}

const FILTERS = [["minCount", 1, 0], ["minOccurrences", 2, 0], ["maxLength", 7, 1000], ["text", "panel 12", ""],
    ["passes", "window:panel 9:button 9", ""], ["begins", "panel 3", ""], ["text", "", "panel"]];

/** The share of frames, while the table is scrolled, that come within 1.5 of a sixtieth second. */
function smoothness(tab) {
    return tab.evaluate(async () => {
        const table = document.getElementById("table");
        let last = await new Promise(requestAnimationFrame);
        let smooth = 0;
        for (let i = 0; i < 120; ++i) {
            table.scrollTop += 400;
            const now = await new Promise(requestAnimationFrame);
            smooth += now - last < 25 ? 1 : 0;
            last = now;
        }
        return smooth / 120;
    });
}

async function measure(context, patterns, limits) {
    const path = pageOf(`page-${patterns}`, "--top", String(patterns), largeLog(patterns));
    const tell = (what, value, limit) => console.log(
        [patterns.toLocaleString("en"), what, value, limit].map((cell) => String(cell).padEnd(22)).join(""));
    tell("size, MB", (statSync(path).size / 1e6).toFixed(1), limits.size ?? "");
    const tab = await open(context, path);
    const ready = await tab.evaluate(() => window.ready);
    tell("patterns", await tab.locator("#shown").textContent(), "");
    tell("interactive, ms", Math.round(ready), limits.ready);
    tell("smooth frames, %", Math.round(100 * await smoothness(tab)), 100);
    let slowest = [0];
    for (const [id, value, undone] of FILTERS) {
        const taken = await best(tab, `#${id}`, value, undone);
        slowest = taken > slowest[0] ? [taken, id] : slowest;
    }
    tell("slowest filter, ms", `${Math.round(slowest[0])} (${slowest[1]})`, limits.filter);
    tell("loops once, ms", Math.round(await best(tab, "#loopsOnce")), limits.filter);
    tell("sort by sequence, ms", Math.round(await milliseconds(tab, "[data-column=sequence] button")), "");
}

const context = await startBrowser();
await context.addInitScript(() => {
    const later = () => requestAnimationFrame(() => setTimeout(() => { window.ready = performance.now(); }));
    addEventListener("load", later);
});
console.log(["patterns", "what", "measured", "limit"].map((cell) => cell.padEnd(22)).join(""));
await measure(context, 10_000, { size: 3, ready: 1000, filter: 100 });
await measure(context, 100_000, { ready: 3000, filter: 200 });
await tidyUp();
