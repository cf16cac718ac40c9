"use strict";

// Records mouse presses and releases and menu choices on a page into a log for Quillon. Load it with
// a script element; quillonRecorder.save() downloads what was recorded and begins a new recording.
// A recording goes on over the pages of a site, for as long as their tab stays open.
const quillonRecorder = (() => {
    const STORE = "quillon-recording";
    const MENUS = "select, [role=menu], [role=menubar]";
    const events = JSON.parse(sessionStorage.getItem(STORE)) ?? [];

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
        events.push(`"${gesture}": [${Date.now()}, "${key}", ${place}]`);
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
    on("pagehide", () => sessionStorage.setItem(STORE, JSON.stringify(events)));

    function save() {
        const link = document.createElement("a");
        link.download = `recording-${Date.now()}.json`;
        link.href = URL.createObjectURL(new Blob([`{\n${events.splice(0).join(",\n")}\n}\n`]));
        link.click();
        setTimeout(() => URL.revokeObjectURL(link.href));
    }

    return { save };
})();
