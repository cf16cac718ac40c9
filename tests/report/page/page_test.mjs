// Uses the page that explores logs in a browser, and holds what it shows against what quillon-report
// prints and draws.
import assert from "node:assert/strict";
import { readFileSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { FOLDER, logOf, open, pageOf, report, startBrowser, tidyUp } from "./browser.mjs";

const EDITING = join(process.env.EXAMPLES, "editing.json");
const AXE = readFileSync(createRequire(import.meta.url).resolve("axe-core/axe.min.js"), "utf8");

let browser;
let page;

before(async () => {
    browser = await startBrowser();
    page = pageOf("editing", EDITING);
});

after(tidyUp);

/** All patterns of a log, as quillon-report lists them. */
function patternsOf(log) {
    const { branches } = JSON.parse(report("--format", "json", log));
    return branches.flatMap(({ patterns }) => patterns.map((pattern) => ({
        ...pattern,
        length: pattern.sequence.length,
        keys: pattern.sequence.map((index) => branches[index].key),
    })));
}

/** How many patterns the page shows. */
async function shownCount(tab) {
    return Number((await tab.locator("#shown").textContent()).match(/\d[\d,]*/)[0].replaceAll(",", ""));
}

function cells(tab, column) {
    return tab.locator(`.body .${column}`).allTextContents();
}

const EXAMPLES = [["minCount", "3"], ["minOccurrences", "5"], ["minRecordings", "2"], ["minLength", "5"],
    ["maxLength", "4"], ["text", "FORMAT  tool"], ["passes", "page:heading"], ["begins", "dialog"]];

/** The same rules, plainly. */
const RULES = {
    minCount: (pattern, value) => pattern.count >= value,
    minOccurrences: (pattern, value) => pattern.occurrences >= value,
    minRecordings: (pattern, value) => pattern.recordings >= value,
    minLength: (pattern, value) => pattern.length >= value,
    maxLength: (pattern, value) => pattern.length <= value,
    text: ({ keys }, words) => words.toLowerCase().split(/ +/)
        .every((word) => keys.some((key) => key.toLowerCase().includes(word))),
    passes: ({ keys }, key) => keys.includes(key),
    begins: ({ keys }, part) => keys[0].includes(part),
};

/** The sequences and figures of a page's patterns, each as a line. */
function linesOf(path) {
    const [, json] = readFileSync(path, "utf8").match(/id="data">(.*?)<\/script>/s);
    return JSON.parse(json).reports.flatMap(({ keys, steps, patterns }) => patterns.first.map((first, i) =>
        [patterns.count[i], patterns.occurrences[i], patterns.recordings[i],
            ...steps.slice(first, first + patterns.length[i]).map((key) => keys[key])].join()));
}

test("has the sequences of all patterns, in however few pieces", () => {
    let state = 7;
    const random = (limit) => (state = (state * 48271) % 2147483647) % limit;
    const logs = [1, 2].map((number) => logOf(`random-${number}`, Array.from({ length: 30 }, () =>
        Array.from({ length: random(80) }, () => `key ${random(2 + 3 * number)}`))));
    const theirs = logs.flatMap(patternsOf).map(({ count, occurrences, recordings, keys }) =>
        [count, occurrences, recordings, ...keys].join());
    assert.ok(theirs.length > 200);
    assert.deepEqual(linesOf(pageOf("random", ...logs)).sort(), theirs.sort());
});

test("filters by number and by text, and a link leads to the same view", async () => {
    const tab = await open(browser, page);
    let left = patternsOf(EDITING);
    assert.equal(await shownCount(tab), left.length);
    for (const [name, value] of EXAMPLES) {
        await tab.fill(`#${name}`, value);
        assert.equal(await shownCount(tab), left.filter((pattern) => RULES[name](pattern, value)).length, name);
        await tab.click("#reset");
    }
    for (const [name, value] of EXAMPLES.slice(0, 3)) {
        await tab.fill(`#${name}`, value);
        left = left.filter((pattern) => RULES[name](pattern, value));
    }
    assert.equal(await shownCount(tab), left.length);
    await tab.click("[data-column=length] button");
    await tab.locator(".body [role=row]").nth(1).click();
    await tab.waitForFunction(() => location.hash.includes("chosen"));
    const linked = await open(browser, page, await tab.evaluate(() => location.hash));
    for (const part of ["#shown", "#choice", ".body"])
        assert.equal(await linked.locator(part).textContent(), await tab.locator(part).textContent());
    assert.deepEqual([...tab.faults, ...linked.faults], []);
});

test("sliders step through the numbers that there are", async () => {
    const tab = await open(browser, page);
    const counts = [...new Set(patternsOf(EDITING).map(({ count }) => count))].sort((a, b) => a - b);
    await tab.focus("#minCount-slider");
    await tab.keyboard.press("ArrowRight");
    await tab.keyboard.press("ArrowRight");
    assert.equal(await tab.inputValue("#minCount"), String(counts[2]));
    await tab.keyboard.press("End");
    assert.equal(await tab.inputValue("#minCount"), String(counts.at(-1)));
    assert.equal(await shownCount(tab), 1);
});

test("sorts by each column, both ways", async () => {
    const tab = await open(browser, page);
    const { compare } = new Intl.Collator(undefined, { numeric: true });
    for (const column of ["count", "occurrences", "recordings", "length", "sequence"]) {
        for (const press of [1, 2]) {
            const head = tab.locator(`[data-column=${column}]`);
            await head.locator("button").click();
            const ascending = await head.getAttribute("aria-sort") === "ascending";
            const shown = (await cells(tab, column)).map((text) => text.split(" → ")[0]);
            if (column === "sequence") { // by whole keys, of which the first row tells enough
                const firsts = patternsOf(EDITING).map(({ keys }) => keys[0]).sort(compare);
                assert.ok(firsts.at(ascending ? 0 : -1).endsWith(shown[0]), `press ${press}`);
                continue;
            }
            const sorted = shown.toSorted((a, b) => (parseInt(a) - parseInt(b)) * (ascending ? 1 : -1));
            assert.deepEqual(shown, sorted, `${column}, press ${press}`);
        }
    }
});

test("lists loops once as quillon-report does, and copies what is shown", async () => {
    const tab = await open(browser, page);
    await tab.check("#loopsOnce");
    await tab.click("#copy");
    await tab.locator("#copied:not(:empty)").waitFor();
    const rows = (text) => text.trim().split("\r\n").map((line) => line.split(",").slice(0, 7).join()).sort();
    const theirs = new Set(rows(report("--format", "csv", "--loops", "once", EDITING)));
    const ours = rows(await tab.evaluate(() => navigator.clipboard.readText()));
    assert.deepEqual(ours.filter((row) => !theirs.has(row)), []);
    assert.equal(ours.length, theirs.size);
});

/** Lets a tab note the curves and circles that it draws, by their points. */
async function noteDrawing(context) {
    await context.addInitScript(() => {
        const { moveTo, bezierCurveTo, arc } = CanvasRenderingContext2D.prototype;
        let from = [];
        window.curves = [];
        window.circles = [];
        Object.assign(CanvasRenderingContext2D.prototype, {
            moveTo(...point) {
                from = point;
                moveTo.apply(this, point);
            },
            bezierCurveTo(...points) {
                window.curves.push([...from, ...points]);
                bezierCurveTo.apply(this, points);
            },
            arc(...circle) {
                window.circles.push(circle.slice(0, 2));
                arc.apply(this, circle);
            },
        });
    });
}

/** What a picture of quillon-report's draws: the points of its curves, the centres of its circles. */
function drawnIn(svg) {
    const curves = [];
    const circles = [];
    for (const [, path] of svg.matchAll(/<path[^>]* d="([^"]*)"/g)) {
        const numbers = path.match(/-?[\d.]+(e-?\d+)?/g).map(Number);
        if (/^M[^ML]*C[^CL]*$/.test(path))
            curves.push(numbers);
    }
    for (const [, x, y] of svg.matchAll(/<circle cx="([^"]*)" cy="([^"]*)"/g))
        circles.push([Number(x), Number(y)]);
    return { curves, circles };
}

/** Whether each of some lists of numbers is near one of the others. */
function assertNear(ours, theirs, what) {
    assert.ok(theirs.length > 0, what);
    const isNear = (a, b) => a.length === b.length && a.every((number, i) => Math.abs(number - b[i]) < 0.06);
    for (const one of theirs)
        assert.ok(ours.some((other) => isNear(one, other)), `${what} at ${one}`);
    for (const one of ours)
        assert.ok(theirs.some((other) => isNear(one, other)), `${what} at ${one} too many`);
}

test("draws the picture that quillon-report draws", async () => {
    const context = await startBrowser();
    await noteDrawing(context);
    const tab = await open(context, page);
    await tab.evaluate(() => new Promise(requestAnimationFrame));
    const size = await tab.locator("#view").evaluate(({ clientWidth, clientHeight }) => [clientWidth, clientHeight]);
    const picture = join(FOLDER, "editing.svg");
    report("--image", picture, "--size", size.join("x"), EDITING);
    const theirs = drawnIn(readFileSync(picture, "utf8"));
    assertNear(await tab.evaluate(() => window.circles), theirs.circles, "circle");
    assertNear(await tab.evaluate(() => window.curves), theirs.curves, "curve");
});

test("zooms and moves by wheel, buttons and keys, and filters by a pressed leaf", async () => {
    const context = await startBrowser({ hasTouch: true });
    await noteDrawing(context);
    const tab = await open(context, page);
    const view = tab.locator("#view");
    /** The distance of two circles in the picture after `act`, and where the first is. */
    const drawnAfter = async (act) => {
        await tab.evaluate(() => { window.circles = []; });
        await act();
        await tab.waitForFunction(() => window.circles.length > 1);
        const [[x, y], [x2, y2]] = await tab.evaluate(() => window.circles.slice(0, 2));
        return { x, y, distance: Math.hypot(x2 - x, y2 - y) };
    };
    const first = await drawnAfter(() => tab.click("#zoom-fit"));
    const { x, y } = await view.boundingBox();
    await tab.mouse.move(x + 300, y + 300);
    const wheeled = await drawnAfter(() => tab.mouse.wheel(0, -400));
    assert.ok(wheeled.distance > 1.5 * first.distance);
    await view.focus();
    const keyed = await drawnAfter(() => tab.keyboard.press("+"));
    assert.ok(keyed.distance > 1.3 * wheeled.distance);
    const moved = await drawnAfter(() => tab.keyboard.press("Shift+ArrowLeft"));
    assert.ok(moved.x > keyed.x);
    const dragged = await drawnAfter(async () => {
        await tab.mouse.down();
        await tab.mouse.move(x + 250, y + 260, { steps: 3 });
        await tab.mouse.up();
    });
    assert.ok(dragged.distance > 1.3 * wheeled.distance);
    assert.equal(await shownCount(tab), patternsOf(EDITING).length);
    const again = await drawnAfter(() => tab.keyboard.press("0"));
    assert.ok(Math.abs(again.distance - first.distance) < 0.01);

    const devtools = await context.newCDPSession(tab);
    const touch = (type, ...across) => devtools.send("Input.dispatchTouchEvent",
        { type, touchPoints: across.map((at, id) => ({ x: x + at, y: y + 200, id })) });
    const pinched = await drawnAfter(async () => {
        await touch("touchStart", 200);
        await touch("touchStart", 200, 300);
        await touch("touchMove", 200, 400);
        await touch("touchEnd");
    });
    assert.ok(Math.abs(pinched.distance / first.distance - 2) < 0.1);
    await drawnAfter(() => tab.click("#zoom-fit"));

    await tab.mouse.click(x + again.x, y + again.y);
    const key = await tab.inputValue("#passes");
    assert.ok(key);
    assert.match(await tab.locator("#tip").textContent(), new RegExp(key));
    assert.equal(await shownCount(tab), patternsOf(EDITING).filter(({ keys }) => keys.includes(key)).length);
    await tab.mouse.click(x + again.x, y + again.y);
    assert.equal(await tab.inputValue("#passes"), "");
});

test("is used by keys alone", async () => {
    const tab = await open(browser, page);
    await tab.focus("#table");
    for (const press of ["ArrowDown", "ArrowDown", "End", "Home", "PageDown"])
        await tab.keyboard.press(press);
    const row = tab.locator(".body [aria-selected=true]");
    assert.equal(await tab.locator("#table").getAttribute("aria-activedescendant"), await row.getAttribute("id"));
    const steps = await tab.locator("#choice li").allTextContents();
    assert.equal(String(steps.length), await row.locator(".length").textContent());
    await tab.focus("#view");
    await tab.keyboard.press("ArrowRight");
    const first = await tab.locator("#tip").textContent();
    await tab.keyboard.press("ArrowRight");
    assert.notEqual(await tab.locator("#tip").textContent(), first);
    await tab.keyboard.press("Enter");
    assert.ok(await shownCount(tab) < patternsOf(EDITING).length);
});

test("has rows for as many patterns as there are, and elements for those in view", async () => {
    const steps = Array.from({ length: 3000 }, (_, i) => [`a${i}`, `b${i}`, `a${i}`]).flat();
    const tab = await open(browser, pageOf("many", "--top", "100000", logOf("many", [steps])));
    const count = await shownCount(tab);
    assert.ok(count >= 3000);
    assert.ok(await tab.locator(".body [role=row]").count() < 100);
    await tab.focus("#table");
    await tab.keyboard.press("End");
    await tab.locator(`.body [aria-rowindex="${count + 1}"]`).waitFor();
    assert.ok(await tab.locator(".body [role=row]").count() < 100);
});

const NASTY = ["</script><script>pwned()</script>", "<img src=x onerror=pwned()>", "<!--<script>", "\"'`${pwned()}",
    "\u202eesrever\u2066", "\u0000nul", "__proto__", "javascript:pwned()", "=1+1", "&lt;b&gt;", "]]>", "\u2028\u2029",
    "http://example.org/x.png", "x".repeat(1e7)];

test("does nothing that a key says", async () => {
    const keys = NASTY.flatMap((key) => [[key, 10, 20], ["home", 30, 40], [key, 10, 20]]);
    const raw = Buffer.from("{\"down\":[0,\"\xff\xfe\xed\xa0\x80 lone\",1,2]}", "latin1");
    const log = logOf("nasty", [keys, ["\ud800 lone", "home", "\ud800 lone"]]);
    const broken = join(FOLDER, "raw.json");
    writeFileSync(broken, raw);
    const tab = await open(browser, pageOf("nasty", log, broken), "#passes=%3Cimg%20src=x%20onerror=pwned()%3E");
    await tab.click("#reset");
    for (const row of (await tab.locator(".body [role=row]").all()).slice(0, 12))
        await row.click();
    await tab.focus("#passes");
    await tab.fill("#text", "<");
    await tab.selectOption("#log", "1");
    await tab.waitForTimeout(200);
    assert.equal(await tab.evaluate(() => document.scripts.length), 2);
    assert.equal(await tab.evaluate(() => document.images.length), 0);
    assert.deepEqual(tab.faults, []);
});

test("lets nothing in beside its own script", async () => {
    const tab = await open(browser, page);
    const ran = await tab.evaluate(() => {
        const script = document.createElement("script");
        script.textContent = "window.pwned = true";
        document.body.append(script);
        document.body.insertAdjacentHTML("beforeend", "<img src=x onerror='window.pwned = true'>");
        return new Promise((done) => { setTimeout(() => done(window.pwned ?? false), 100); });
    });
    assert.equal(ran, false);
    assert.ok(tab.faults.some((fault) => /Content Security Policy/.test(fault)));
});

test("compares two groups", async () => {
    const group = (name, ...recordings) => `${name}=${logOf(name, recordings)}`;
    const log = pageOf("compared", "--compare",
        group("before", ["a", "b", "a"], ["a", "b", "a"], ["a", "c", "a"]), group("after", ["a", "c", "a"], ["x"]));
    const tab = await open(browser, log);
    await tab.click("[data-column=difference] button");
    assert.deepEqual(await cells(tab, "first"), ["33%", "67%"]);
    assert.deepEqual(await cells(tab, "second"), ["50%", "0%"]);
    assert.deepEqual(await cells(tab, "difference"), ["+16.7", "\u221266.7"]);
    await tab.locator(".body [role=row]").nth(1).click();
    assert.match(await tab.locator("#choice").textContent(), /before 67% \(2 of 3\), after 0% \(0 of 2\): \u221266.7/);
    assert.deepEqual(tab.faults, []);
});

test("prints rows and picture", async () => {
    const tab = await open(browser, page);
    await tab.evaluate(() => addEventListener("beforeprint", () => {
        window.printed = document.querySelectorAll(".body [role=row]").length;
    }));
    const pdf = await tab.pdf();
    assert.match(pdf.subarray(0, 5).toString(), /%PDF-/);
    assert.equal(await tab.evaluate(() => window.printed), patternsOf(EDITING).length);
});

const SHAPES = [["large", 1400, 900, "light"], ["dark", 1400, 900, "dark"], ["phone", 380, 800, "light"],
    ["400 %", 320, 256, "dark"]];

for (const [name, width, height, colorScheme] of SHAPES) {
    test(`is accessible and fits: ${name}`, async () => {
        const tab = await open(browser, page, "#chosen=3&minLength=4");
        await tab.setViewportSize({ width, height });
        await tab.emulateMedia({ colorScheme });
        await tab.evaluate(AXE);
        const { violations } = await tab.evaluate(() => globalThis.axe.run());
        assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map(({ html }) => html.slice(0, 200))]), []);
        assert.ok(await tab.evaluate(() => document.documentElement.scrollWidth) <= width);
        await tab.close();
    });
}
