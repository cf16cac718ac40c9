// Takes the pictures of docs/exploring.md.
// usage: QUILLON_REPORT=PROGRAM take-pictures.mjs LOG FOLDER
import { join } from "node:path";
import { open, pageOf, startBrowser, tidyUp } from "./browser.mjs";

const [, , log, folder] = process.argv;
const context = await startBrowser({ viewport: { width: 1240, height: 720 } });
const tab = await open(context, pageOf("editing", log));

async function shoot(name) {
    await tab.evaluate(() => new Promise(requestAnimationFrame));
    await tab.screenshot({ path: join(folder, `${name}.png`) });
}

await shoot("exploring-page");
await tab.fill("#minRecordings", "2");
await tab.check("#loopsOnce");
await tab.click("[data-column=recordings] button");
await shoot("exploring-several");
await tab.locator(".body [role=row]", { hasText: "address" }).first().click();
await shoot("exploring-link");
await tab.setViewportSize({ width: 380, height: 700 });
await tab.evaluate(() => scrollTo(0, 0));
await shoot("exploring-phone");
await tidyUp();
