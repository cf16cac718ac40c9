// A browser of its own, and pages for it.
import { execFileSync } from "node:child_process";
import { mkdtempSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { pathToFileURL } from "node:url";
import { chromium } from "playwright-core";

// All pages are our own, and the sandbox works neither as root nor in every container. Shared memory
// is scarce there too.
const FLAGS = ["--headless", "--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu", "--disable-quic",
    "--no-first-run", "--disable-background-networking", "--disable-component-update", "--disable-sync"];

export const FOLDER = mkdtempSync(join(tmpdir(), "quillon-page-"));

/** What quillon-report prints; what it warns of is no matter here. */
export function report(...options) {
    try {
        return execFileSync(process.env.QUILLON_REPORT, options,
            { encoding: "utf8", maxBuffer: 2 ** 30, stdio: ["ignore", "pipe", "ignore"] });
    } catch (error) {
        if (error.status !== 3)
            throw error;
        return error.stdout;
    }
}

/** The file of a page of these logs, or whatever the options ask for. */
export function pageOf(name, ...options) {
    const path = join(FOLDER, `${name}.html`);
    report("--format", "html", "--output", path, ...options);
    return path;
}

/** The file of a log of recordings, each a list of keys, or of keys with their places. */
export function logOf(name, recordings) {
    const path = join(FOLDER, `${name}.json`);
    const texts = recordings.map((events) => "{" + events.map((event, i) => {
        const [key, ...place] = [event].flat();
        return `"down":${JSON.stringify([i, key, ...place])}`;
    }) + "}");
    writeFileSync(path, `[${texts}]`);
    return path;
}

const contexts = [];

export async function startBrowser(options = {}) {
    const context = await chromium.launchPersistentContext(join(FOLDER, `user-${process.hrtime.bigint()}`), {
        executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium",
        args: FLAGS,
        viewport: { width: 1400, height: 900 },
        permissions: ["clipboard-read", "clipboard-write"],
        ...options,
    });
    contexts.push(context);
    return context;
}

/** Opens a page in a tab of its own; `faults` gets whatever it does that no page of ours should. */
export async function open(context, path, fragment = "") {
    const tab = await context.newPage();
    const url = pathToFileURL(path).href;
    tab.faults = [];
    tab.on("console", (message) => tab.faults.push(message.text()));
    tab.on("pageerror", (error) => tab.faults.push(String(error)));
    tab.on("dialog", (dialog) => tab.faults.push(dialog.message()));
    tab.on("request", (request) => {
        if (request.url().split("#")[0] !== url && !request.url().startsWith("data:"))
            tab.faults.push(request.url());
    });
    await tab.goto(url + fragment);
    await tab.locator("#shown:not(:empty)").waitFor();
    return tab;
}

export async function tidyUp() {
    await Promise.all(contexts.map((context) => context.close()));
    rmSync(FOLDER, { recursive: true, force: true });
}
