// The same bytes read in each encoding that is open, side by side.
import { make } from "./dom.js";
import { ask } from "./engine.js";
import { say } from "./strings.js";

const mostLines = 12;
const mostUnits = 120;

function lines(shown) {
    const found = [];
    let at = 0;
    for (const line of shown.text.split("\n")) {
        // Lines in ASCII are the same in each.
        if (/[^\x20-\x7e\s]/.test(line)) {
            const element = make("div", { className: "line" });
            const end = at + Math.min(line.length, mostUnits);
            let from = at;
            for (const mark of shown.marks.filter((one) => one.from >= at && one.from < end)) {
                element.append(shown.text.slice(from, mark.from), make("mark", {}, shown.text.slice(mark.from, mark.to)));
                from = mark.to;
            }
            element.append(shown.text.slice(from, Math.max(from, end)), line.length > mostUnits ? "…" : "");
            found.push(element);
        }
        if (found.length === mostLines) {
            break;
        }
        at += line.length + 1;
    }
    return found;
}

/** `choose` is called with the encoding that the user takes. */
export function compareView(item, encodings, choose) {
    const columns = encodings.map((from) => {
        const text = make("div", { className: "sample", lang: "ja", tabIndex: 0, role: "region", "aria-label": from });
        ask("window", { file: item.file, near: 0, isBeyondAscii: true, options: { from, to: "UTF-8" } }).then(
            (shown) => text.replaceChildren(...lines(shown)),
            (error) => text.replaceChildren(error.message),
        );
        return make("li", {}, make("h4", {}, from), text, make("button", { type: "button", onclick: () => choose(from) }, say("readAsThis", from)));
    });
    return make("ul", { className: "compare" }, ...columns);
}
