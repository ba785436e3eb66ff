// What to convert to.
import { find, make } from "./dom.js";

let encodings = [];

// The Unicode forms with a byte-order mark are the box beside the list, not entries of it.
const withMark = (name) => encodings.find((other) => other.name === `${name}-BOM`)?.name;

/** The names of all encodings that a text can be read in. */
export const sources = () => encodings.filter(({ name }) => !name.endsWith("-BOM"));

function drawMark() {
    find("bom").disabled = !withMark(find("to").value);
}

/** Calls `changed` when another target is chosen, `submitted` when all is to be converted. */
export function startTarget(known, changed, submitted) {
    encodings = known;
    find("to").replaceChildren(...sources().filter(({ name }) => name !== "US-ASCII").map(({ name }) => make("option", { value: name }, name)));
    find("to").value = "UTF-8";
    drawMark();
    find("target").onchange = () => {
        drawMark();
        changed();
    };
    find("target").onsubmit = (event) => {
        event.preventDefault();
        submitted();
    };
}

/** The options of a conversion from an encoding. */
export function target(from) {
    const name = find("to").value;
    return {
        from,
        to: (find("bom").checked && withMark(name)) || name,
        eol: find("eol").value,
        onLoss: find("on-loss").value,
        compose: find("compose").checked,
        maxLosses: 1000,
    };
}
