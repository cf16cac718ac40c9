"use strict";

// Records mouse presses and releases and menu choices on a page into a log for Quillon. Load it with
// a script element; quillonRecorder.save() downloads what was recorded and begins new recordings.
// A recording goes on over the pages of a site in one tab and in those that they open.
const quillonRecorder = (() => {
    const STORE = "quillon-recording-";
    const MENUS = "select, [role=menu], [role=menubar]";

    // The recording is the text in the site's store, written at every event, under the tab's number.
    // Pages that the browser brings back as they were left, after Back, have missed what came since,
    // and may even have missed changes of the tab's own store; so that has nothing but the number.
    // `kept` stands in where a page empties the stores, as many do when someone logs out.
    const tab = sessionStorage.getItem(STORE) ?? crypto.getRandomValues(new Uint32Array(2)).join("-");
    let kept = localStorage.getItem(STORE + tab) ?? "";
    const recorded = () => localStorage.getItem(STORE + tab) ?? kept;
    sessionStorage.setItem(STORE, tab);

    function keep(events) {
        kept = events;
        localStorage.setItem(STORE + tab, events);
    }

    // Without what would part a key or end a string.
    const cleaned = (name) => name.trim().replace(/[":\\\x00-\x1f]/g, "_");

    const nameOf = (element) => element.dataset?.name ?? (element.id || element.getAttribute("name"));

    // The names of an element and all around it, from the page inwards: "notes:toolbar:save".
    function keyOf(element) {
        const names = [];
        for (let at = element; at; at = at.parentElement)
            if (nameOf(at))
                names.unshift(cleaned(nameOf(at)));
        return names.join(":") || element.localName;
    }

    // A place on the page stays what it is when the page is scrolled.
    function record(gesture, key, x, y) {
        const place = `${Math.round(x + scrollX)}, ${Math.round(y + scrollY)}`;
        const events = recorded();
        keep(`${events}${events && ",\n"}"${gesture}": [${Date.now()}, "${key}", ${place}]`);
    }

    function recordMouse(gesture, event) {
        if (event.target instanceof Element && !event.target.closest(MENUS))
            record(gesture, keyOf(event.target), event.clientX, event.clientY);
    }

    function recordChoice(menu, item) {
        const box = menu.getBoundingClientRect();
        record("menu", item, box.x + box.width / 2, box.y + box.height / 2);
    }

    function on(type, listener) {
        addEventListener(type, listener, { capture: true, passive: true });
    }

    on("mousedown", (event) => recordMouse("down", event));
    on("mouseup", (event) => recordMouse("up", event));
    on("change", ({ target }) => {
        if (target instanceof HTMLSelectElement)
            recordChoice(target, `${keyOf(target)}:${cleaned(target.value)}`);
    });
    on("click", ({ target }) => {
        const item = target.closest?.("[role=menuitem]");
        if (item)
            recordChoice(item, nameOf(item) ? keyOf(item) : `${keyOf(item)}:${cleaned(item.textContent)}`);
    });
    // What a page that is left does comes late at times, when the next page has recorded already.
    on("pagehide", () => {
        sessionStorage.setItem(STORE, tab);
        if (localStorage.getItem(STORE + tab) === null)
            keep(kept);
    });

    // One recording behind the other: this one, and those of other tabs, closed ones too.
    function save() {
        keep(recorded());
        const names = Object.keys(localStorage).filter((name) => name.startsWith(STORE));
        const found = names.map((name) => localStorage.getItem(name)).filter((events) => events);
        const link = document.createElement("a");
        link.download = `recording-${Date.now()}.json`;
        link.href = URL.createObjectURL(new Blob(found.map((events) => `{\n${events}\n}\n`)));
        link.click();
        names.forEach((name) => localStorage.setItem(name, ""));
        kept = "";
        setTimeout(() => URL.revokeObjectURL(link.href));
    }

    return { save };
})();
