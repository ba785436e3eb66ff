// Small helpers for elements.
export const find = (id) => document.getElementById(id);

/** An element with properties (dashed names are attributes) and children: elements, texts; null is left out. */
export function make(tag, properties = {}, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(properties)) {
        if (value === undefined || value === null) {
            continue;
        }
        if (name.includes("-") || !(name in element)) {
            element.setAttribute(name, value);
        } else {
            element[name] = value;
        }
    }
    element.append(...children.flat().filter((child) => child !== null && child !== undefined));
    return element;
}

/** Tells people who do not see the page what has happened. */
export function tell(text) {
    find("told").textContent = text;
}
