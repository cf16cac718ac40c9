// Uses the page of this folder in Chromium as a person and as a test would, and writes what the two
// recorders recorded beside what was done.
// usage: record.mjs FOLDER    FOLDER: has the packages, and gets
//   rrweb.jsonl   an event and whether a new list begins with it on each line
//   packed.json   the same events, packed
//   touch.json    the events of a screen that is touched
//   clicks.json   those of a recorder that leaves out where presses begin and end
//   0.zip, 1.zip  the traces of two contexts
//   done.json     what was done, with the keys that are to come of it
//   notes.json    the sample page of examples/recorder-web, for the guide
//   notes.zip     a test of it
import {createRequire} from "node:module"
import {createServer} from "node:http"
import {mkdtempSync, readFileSync, rmSync, writeFileSync} from "node:fs"
import {tmpdir} from "node:os"
import {join} from "node:path"

const folder = process.argv[2]
const load = createRequire(join(folder, "node_modules/"))
const {chromium} = load("playwright-core")
const {pack} = load("@rrweb/packer")
const here = new URL(".", import.meta.url).pathname
const SECRET = "Zebra quartz 4711"
const FLAGS = ["--no-sandbox", "--disable-dev-shm-usage", "--disable-gpu", "--disable-quic",
  "--no-first-run", "--disable-background-networking", "--disable-component-update",
  "--disable-sync"]
const WINDOW = {width: 900, height: 700}

const frame = (page) => page.frameLocator("#frame")

// What is done, in order: what it tries, how, where (CSS), its key in the recording; how a test
// finds it and its key in the trace. A step without the latter two is none of the test's.
const STEPS = [
  ["a button's icon", "press", "#save path", "toolbar:save",
    (page) => page.getByRole("button", {name: "Save"}), "Save"],
  ["a test id", "press", "[data-testid] i", "toolbar:delete-note",
    (page) => page.getByTestId("delete-note"), "delete-note"],
  ["an icon in a span", "press", "[aria-label^=Search] i", "toolbar:Search the notes",
    (page) => page.getByLabel("Search the notes"), "Search the notes"],
  ["a text in parts", "press", "#toolbar b", "toolbar:button Plain text",
    (page) => page.locator("#toolbar").getByText("Plain text"), "toolbar:Plain text"],
  ["a title", "press", "[title]", "toolbar:A title", (page) => page.getByTitle("A title"), "A title"],
  ["an unstable id", "press", "[id^=b-]", "toolbar:button Unstable",
    (page) => page.locator("#toolbar").getByRole("button", {name: "Unstable"}), "toolbar:Unstable"],
  ["a link", "press", "a[href='#about']", "toolbar:link About us",
    (page) => page.getByRole("link", {name: "About us"}), "About us"],
  ["an input that is a button", "press", "[name=reset]", "toolbar:reset",
    (page) => page.locator("[name=reset]"), "reset"],
  ["nothing to press", "press", "#main em", "main:p>em",
    (page) => page.locator("#main em").describe("Nothing"), "Nothing"],
  ["a menu's button", "press", "#open", "open", (page) => page.locator("#open"), "open"],
  ["an icon in a menu", "menu", "#menu i", "menu:menuitem Copy",
    (page) => page.getByRole("menuitem", {name: "Copy"}), "Copy"],
  ["the menu again", "press", "#open", "open", (page) => page.locator("#open"), "open"],
  ["an item with an id", "menu", "#paste", "menu:paste", (page) => page.locator("#paste"), "paste"],
  ["a list that opens", "choose", "[name=style]", "fields:style:bold",
    (page) => page.locator("[name=style]"), "style:Bold", "Bold"],
  ["a list that is open", "option", "#sizes option:nth-child(2)", "fields:sizes:Medium",
    (page) => page.locator("#sizes"), "sizes:Large", "Large"],
  ["a label of a field", "press", "#name-of-title", "fields:name-of-title"],
  ["a field", "press", "#title", "fields:title", (page) => page.locator("#title"), "title"],
  ["its text", "type", "#title", "", (page) => page.locator("#title"), "title"],
  ["a password", "press", "[name=secret]", "fields:secret"],
  ["its text", "type", "[name=secret]", "", (page) => page.locator("[name=secret]"), "secret"],
  ["a label around a box", "press", "label:has([name=agree])", "fields:label"],
  ["a box", "press", "[name=agree]", "fields:agree", (page) => page.locator("[name=agree]"), "agree"],
  ["a text area", "press", "textarea", "fields:Body"],
  ["its text", "type", "textarea", "", (page) => page.getByLabel("Body"), "Body"],
  ["a word in an editable element", "press", "#rich b", "fields:rich"],
  ["its text", "type", "#rich", "", (page) => page.locator("#rich"), "rich"],
  ["an echo of what was written", "press", "#echo", "echo", (page) => page.locator("#echo"), "echo"],
  ["its accessible name", "press", ".echo:nth-child(1)", "echoes:button",
    (page) => page.locator(".echo").nth(0), ".echo"],
  ["its title", "press", ".echo:nth-child(2)", "echoes:button",
    (page) => page.getByTitle(SECRET), "title"],
  ["its id", "menu", ".echo:nth-child(3)", "echoes:div",
    (page) => page.getByRole("menuitem", {name: SECRET}), "menuitem"],
  ["scrolling a list", "scrollList", "#list"],
  ["what came up in it", "press", "#entry", "list:entry", (page) => page.locator("#entry"), "entry"],
  ["rows", "press", "#rows", "rows", (page) => page.locator("#rows"), "rows"],
  ["one of them", "press", "#row-2", "row-#", (page) => page.locator("#row-2"), "row-#"],
  ["another one", "press", "#row-3", "row-#", (page) => page.locator("#row-3"), "row-#"],
  ["what goes when pressed", "press", "#gone", "gone"],
  ["a drag", "drag", "#from", "from", null, "", "to"],
  ["a double click", "double", "#open", "open", (page) => page.locator("#open"), "open"],
  ["both menus away", "menu", "#menu >> nth=0 >> #paste", "menu:paste",
    (page) => page.locator("#menu").nth(0).locator("#paste"), "menu:paste"],
  ["the other button", "right", "#to", "to"],
  ["a button in a frame", "framed", "#framed", "frame:framed",
    (page) => frame(page).getByRole("button", {name: "In a frame"}), "frame:In a frame"],
  ["a field in a frame", "framed", "[name=framed-field]", "frame:framed-field"],
  ["its text", "type", "", "", (page) => frame(page).locator("[name=framed-field]"), "frame:framed-field"],
  ["a button in a shadow root", "press", "my-card b", "card:button Buy now",
    (page) => page.locator("#card").getByText("Buy now"), "card:Buy now"],
  ["a field in a shadow root", "press", "my-card input", "card:inside"],
  ["its text", "type", "", "", (page) => page.locator("my-card input"), "my-card input"],
  ["scrolling", "scroll", "", "", (page) => page, ""],
  ["a button below", "press", "#below", "low:below", (page) => page.locator("#below"), "below"],
  ["a link to another page", "press", "#next", "low:next", (page) => page.locator("#next"), "next"],
  ["its button", "press", "#last", "last", (page) => page.locator("#last"), "last"],
]

const done = {secret: SECRET, recorded: [], traced: [[], []], touched: [], clicked: []}

function note(list, what, gesture, key, place) {
  list.push({what, gesture, key, place: place ? [place.x, place.y] : null})
}

function startServer() {
  const recorder = readFileSync(join(folder, "node_modules/rrweb/dist/rrweb.umd.min.cjs"))
  const served = {
    "/rrweb.js": recorder,
    "/notes.html": readFileSync(join(here, "../../../examples/recorder-web/notes.html")),
    // In the place of the recorder that the sample page has.
    "/recorder.js": recorder + `
      rrweb.record({emit(event) { window.keep?.(JSON.stringify(event)) }})
      quillonRecorder = {save() {}}`,
  }
  const server = createServer((request, response) => {
    const path = new URL(request.url, "http://localhost").pathname
    response.setHeader("Content-Type", path.endsWith(".js") ? "text/javascript" : "text/html")
    try {
      response.end(served[path] ?? readFileSync(join(here, path)))
    } catch {
      response.writeHead(404).end()
    }
  })
  return new Promise((resolve) => server.listen(0, "127.0.0.1", () => resolve(server)))
}

async function middleOf(locator) {
  const box = await locator.boundingBox()
  return {x: box.x + box.width / 2, y: box.y + box.height / 2}
}

async function scrolled(page) {
  return page.evaluate(() => ({x: scrollX, y: scrollY}))
}

const settled = (page) => page.waitForTimeout(60)

// The mouse and the keyboard, without any help of the driver's.
class Person {
  constructor(page, list) {
    this.page = page
    this.list = list
  }

  async to(css) {
    const locator = (css.includes("framed") ? frame(this.page) : this.page).locator(css).first()
    await locator.waitFor()
    const at = await middleOf(locator)
    const by = await scrolled(this.page)
    await this.page.mouse.move(at.x, at.y)
    return {x: at.x + by.x, y: at.y + by.y}
  }

  note(what, gesture, key, place) {
    note(this.list, what, gesture, key, place)
  }

  async press(what, css, key, button = "left") {
    const place = await this.to(css)
    await this.page.mouse.down({button})
    await this.page.mouse.up({button})
    this.note(what, "down", key, place)
    this.note(what, "up", key, place)
  }

  right(what, css, key) {
    return this.press(what, css, key, "right")
  }

  async menu(what, css, key) {
    const place = await this.to(css)
    await this.page.mouse.down()
    await this.page.mouse.up()
    this.note(what, "menu", key, place)
  }

  option(what, css, key) {
    return this.menu(what, css, key)
  }

  async choose(what, css, key) {
    await this.page.locator(css).focus()
    await this.page.keyboard.press("ArrowDown")
    this.note(what, "menu", key)
  }

  async type() {
    await this.page.keyboard.type(SECRET)
  }

  async drag(what, css, key, target) {
    const from = await this.to(css)
    await this.page.mouse.down()
    const to = await this.to("#" + target)
    await this.page.mouse.up()
    this.note(what, "down", key, from)
    this.note(what, "up", target, to)
  }

  async double(what, css, key) {
    const place = await this.to(css)
    await this.page.mouse.dblclick(...Object.values(await middleOf(this.page.locator(css))))
    for (const gesture of ["down", "up", "down", "up"])
      this.note(what, gesture, key, place)
  }

  async framed(what, css, key) {
    await this.to(css)
    await this.page.mouse.down()
    await this.page.mouse.up()
    this.note(what, "down", key)
    this.note(what, "up", key)
  }

  async scrollList(what, css) {
    await this.to(css)
    await this.page.mouse.wheel(0, 150)
    await settled(this.page)
  }

  async scroll() {
    await this.page.mouse.move(5, 5)
    await this.page.mouse.wheel(0, 1300)
    await this.page.waitForFunction(() => scrollY >= 1300)
  }
}

// A test: elements are found and used by the driver.
class Tester {
  constructor(page, list) {
    this.page = page
    this.list = list
  }

  async click(what, locator, key, act = "click", presses = 1) {
    await locator.scrollIntoViewIfNeeded()
    const place = await middleOf(locator)
    await locator[act]()
    for (let i = 0; i < presses; ++i) {
      note(this.list, what, "down", key, place)
      note(this.list, what, "up", key, place)
    }
  }

  press(...step) { return this.click(...step) }
  menu(...step) { return this.click(...step) }
  framed(...step) { return this.click(...step) }

  double(what, locator, key) {
    return this.click(what, locator, key, "dblclick", 2)
  }

  async choose(what, locator, key, label) {
    await locator.selectOption({label})
    note(this.list, what, "menu", key)
  }

  option(...step) { return this.choose(...step) }

  // Once for all that is typed into the same field.
  async type(what, locator, key) {
    await locator.fill(SECRET)
    await locator.press("End")
    await locator.pressSequentially(SECRET)
    note(this.list, what, "down", key)
    note(this.list, what, "up", key)
  }

  async scroll() {
    await this.page.mouse.wheel(0, 1300)
  }
}

async function record(browser, base) {
  const context = await browser.newContext({viewport: WINDOW})
  const lines = []
  const packed = []
  await context.exposeBinding("keep", (_, event, isFirst) => {
    lines.push(`[${event},${isFirst}]\n`)
    packed.push(pack(JSON.parse(event)))
  })
  const page = await context.newPage()
  await page.goto(base + "/page.html")
  await frame(page).locator("#framed").waitFor()
  const person = new Person(page, done.recorded)
  for (const [what, how, css, key, , , more] of STEPS) {
    await person[how](what, css, key, more)
    await settled(page)
  }
  await settled(page)
  await context.close()
  writeFileSync(join(folder, "rrweb.jsonl"), lines.join(""))
  writeFileSync(join(folder, "packed.json"), JSON.stringify(packed))
}

async function eventsOf(browser, url, settings, use) {
  const context = await browser.newContext({viewport: WINDOW, ...settings})
  const events = []
  await context.exposeBinding("keep", (_, event) => { events.push(event) })
  const page = await context.newPage()
  await page.goto(url)
  await use(page)
  await settled(page)
  await context.close()
  return `[\n${events.join(",\n")}\n]\n`
}

async function touch(page) {
  const steps = [["#save path", "toolbar:save"], ["#open", "open"], ["#save", "toolbar:save"]]
  for (const [css, key] of steps) {
    const place = await middleOf(page.locator(css))
    await page.touchscreen.tap(place.x, place.y)
    note(done.touched, "a tap", "down", key, place)
    note(done.touched, "a tap", "up", key, place)
    await settled(page)
  }
}

// The label's click is one on its box too. What is chosen in a list is told before its click, and
// without a place.
async function click(page) {
  const person = new Person(page, done.clicked)
  const steps = ["a button's icon", "a label around a box", "a menu's button", "an icon in a menu",
    "a list that is open"]
  for (const [what, how, css, key] of STEPS.filter(([name]) => steps.includes(name))) {
    await person[how](what, css, key)
    if (how === "option")
      done.clicked.at(-1).place = null
    await settled(page)
  }
}

async function trace(browser, base, number, title, settings, use) {
  const context = await browser.newContext({viewport: WINDOW, ...settings})
  await context.tracing.start({title, snapshots: true, screenshots: true})
  const page = await context.newPage()
  page.setDefaultTimeout(10000)
  await page.goto(base + "/page.html")
  await use(page, new Tester(page, done.traced[number]))
  await context.tracing.stop({path: join(folder, `${number}.zip`)})
  await context.close()
}

async function test(browser, base) {
  await trace(browser, base, 0, "All steps", {}, async (page, tester) => {
    for (const [what, how, , , find, key, more] of STEPS) {
      if (find)
        await tester[how](what, find(page), key, more)
    }
  })
  await trace(browser, base, 1, "Some with taps", {hasTouch: true}, async (page, tester) => {
    await tester.click("a tap", page.locator("#save"), "save", "tap")
    await tester.click("a check", page.getByLabel("I agree"), "I agree", "check")
    await tester.click("an uncheck", page.getByLabel("I agree"), "I agree", "uncheck")
    await page.locator("#missing").click({timeout: 200}).catch(() => {})
  })
}

// What is done with the sample page: how, where, what is written there.
const NEW = ["press", "#new"]
const WRITE = ["write", "#page", "Bread, milk"]
const SAVE = ["press", "#save"]
const PLAIN = [NEW, WRITE, SAVE]
const CORRECTED = [NEW, WRITE, ["press", "#clear"], WRITE, SAVE]
const COPY = [["press", "[role=menuitem] >> text=Copy"], ["press", "#paste"]]
const DOUBLED = [NEW, WRITE, ...COPY, WRITE, SAVE]
const STYLED = [NEW, ["choose", "[name=style]"], WRITE, SAVE]
const NOTES = [PLAIN, PLAIN, CORRECTED, PLAIN, DOUBLED, STYLED, CORRECTED, PLAIN, DOUBLED, PLAIN]
  .flat()

async function writeNotes(page) {
  const person = new Person(page, [])
  const ways = {
    press: async (css) => {
      await page.mouse.wheel(0, css === "#save" ? 2000 : -2000)
      await page.waitForTimeout(200)
      await person.press("", css, "")
    },
    write: async (_, text) => {
      await page.mouse.click(100, 200)
      await page.keyboard.insertText(text)
    },
    choose: (css) => person.choose("", css, ""),
  }
  for (const [how, css, text] of NOTES)
    await ways[how](css, text)
}

async function testNotes(browser, url) {
  const context = await browser.newContext({viewport: WINDOW})
  await context.tracing.start({title: "Write notes"})
  const page = await context.newPage()
  await page.goto(url)
  const ways = {
    press: (css) => page.locator(css).click(),
    write: (css, text) => page.locator(css).fill(text),
    choose: (css) => page.locator(css).selectOption({label: "Quoted: \"so\""}),
  }
  for (const [how, css, text] of NOTES)
    await ways[how](css, text)
  await context.tracing.stop({path: join(folder, "notes.zip")})
  await context.close()
}

function versionOf(name) {
  return JSON.parse(readFileSync(join(folder, "node_modules", name, "package.json"))).version
}

const user = mkdtempSync(join(tmpdir(), "recorders-"))
process.env.HOME = user
const server = await startServer()
const browser = await chromium.launch({executablePath: "/usr/bin/chromium", args: FLAGS})
try {
  const base = `http://127.0.0.1:${server.address().port}`
  await record(browser, base)
  const url = base + "/page.html"
  writeFileSync(join(folder, "touch.json"), await eventsOf(browser, url, {hasTouch: true}, touch))
  writeFileSync(join(folder, "clicks.json"), await eventsOf(browser, url + "?clicks", {}, click))
  await test(browser, base)
  const notes = base + "/notes.html"
  writeFileSync(join(folder, "notes.json"), await eventsOf(browser, notes, {}, writeNotes))
  await testNotes(browser, notes)
  done.versions = {Chromium: browser.version(), Node: process.version}
  for (const name of ["rrweb", "@rrweb/packer", "playwright-core"])
    done.versions[name] = versionOf(name)
  writeFileSync(join(folder, "done.json"), JSON.stringify(done, null, 1))
} finally {
  await browser.close()
  server.close()
  rmSync(user, {recursive: true, force: true})
}
