// What speaks for and against each candidate, as bars and in figures.
import { make } from "./dom.js";
import { count, say } from "./strings.js";

function bar(share, kind) {
    const element = make("span", { className: kind });
    element.style.width = `${share * 100}%`;
    return element;
}

// A candidate is out with so many bytes that do not fit, and not counted on.
const tooMany = 11;

function row(evidence, detection, most) {
    const { encoding, valid, illFormed, kana, firstError } = evidence;
    const isTie = detection.open.includes(encoding);
    const isFound = detection.encoding === encoding;
    const against = count(illFormed) + (illFormed < tooMany ? "" : "+");
    return make("tr", { className: isFound || isTie ? "likely" : "" },
        make("th", { scope: "row" }, encoding, isTie ? make("span", { className: "chip open" }, say("tie")) : null, isFound ? make("span", { className: "chip sure" }, "✓") : null),
        make("td", { className: "bars" }, make("span", { className: "track", "aria-hidden": "true" }, bar(kana / most, "kana"), bar((valid - kana) / most, "valid"), bar(illFormed / most, "against"))),
        make("td", {}, count(valid)),
        make("td", { className: "minor" }, count(kana)),
        make("td", { className: illFormed ? "alarm" : "faint" }, against),
        make("td", { className: "minor" }, illFormed ? count(firstError) : ""));
}

export function evidenceView(detection) {
    const shown = detection.evidence.filter(({ valid, illFormed }) => valid > 0 || illFormed > 0);
    const title = make("h3", {}, say("evidence"));
    if (shown.length === 0) {
        return make("section", {}, title, make("p", { className: "faint" }, say("evidenceNone")));
    }
    const isLikely = ({ encoding }) => detection.open.includes(encoding) || detection.encoding === encoding;
    const weight = (evidence) => (isLikely(evidence) ? 1e15 : 0) + evidence.valid - 4 * evidence.illFormed;
    shown.sort((one, other) => weight(other) - weight(one));
    const most = Math.max(...shown.map(({ valid, illFormed }) => valid + illFormed));
    const column = (key, className) => make("th", { scope: "col", className }, say(key));
    return make("section", {}, title,
        make("p", { className: "faint" }, say("evidenceHint")),
        make("div", { className: "scroll", tabIndex: 0, role: "region", "aria-label": say("evidence") },
            make("table", { className: "evidence" },
                make("thead", {}, make("tr", {}, column("candidate"), make("td"), column("fits"), column("kana", "minor"), column("illFormed"), column("firstError", "minor"))),
                make("tbody", {}, ...shown.map((evidence) => row(evidence, detection, most))))));
}
