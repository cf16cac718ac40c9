/**
 * A new element. Text becomes text whatever it reads: nothing of a log is ever taken for markup.
 *
 * @template {keyof HTMLElementTagNameMap} Tag
 * @param {Tag} tag
 * @param {Record<string, string>} [attributes]
 * @param {...(Node | string)} children
 * @returns {HTMLElementTagNameMap[Tag]}
 */
export function element(tag, attributes = {}, ...children) {
    const made = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes))
        made.setAttribute(name, value);
    made.append(...children);
    return made;
}

/**
 * The element of the page with that id.
 *
 * @template {HTMLElement} Kind
 * @param {string} id
 * @param {new () => Kind} kind
 * @returns {Kind}
 */
export function byId(id, kind) {
    const found = document.getElementById(id);
    if (!(found instanceof kind))
        throw new Error(`The page has no ${id}`);
    return found;
}
