// What speaks for and against each candidate, as bars and in figures.
import { make } from "./dom.js";
import { count, say } from "./strings.js";

function bar(share, kind) {
    const element = make("span", { className: kind });
    element.style.width = `${share * 100}%`;
    return element;
}

function row(evidence, detection, most) {
    const { encoding, valid, illFormed, kana, firstError } = evidence;
    const isTie = detection.open.includes(encoding);
    const isFound = detection.encoding === encoding;
    const figures = [say("bytes", count(valid)), kana ? `${say("kana")} ${count(kana)}` : null].filter(Boolean).join(", ");
    const against = illFormed ? `${say("bytes", count(illFormed))}, ${say("firstError")} ${count(firstError)}` : "0";
    return make("tr", { className: isFound || isTie ? "likely" : "" },
        make("th", { scope: "row" }, encoding, isTie ? make("span", { className: "chip open" }, say("tie")) : null, isFound ? make("span", { className: "chip sure", "aria-label": "" }, "✓") : null),
        make("td", { className: "bars" }, make("span", { className: "track", "aria-hidden": "true" }, bar(kana / most, "kana"), bar((valid - kana) / most, "valid"), bar(illFormed / most, "against"))),
        make("td", {}, figures),
        make("td", { className: illFormed ? "alarm" : "faint" }, against));
}

export function evidenceView(detection) {
    const shown = detection.evidence.filter(({ valid, illFormed }) => valid > 0 || illFormed > 0);
    const title = make("h3", {}, say("evidence"));
    if (shown.length === 0) {
        return make("section", {}, title, make("p", { className: "faint" }, say("evidenceNone")));
    }
    const weight = ({ encoding, valid, illFormed }) => (detection.open.includes(encoding) || detection.encoding === encoding ? 1e15 : 0) + valid - 100 * illFormed;
    shown.sort((one, other) => weight(other) - weight(one));
    const most = Math.max(...shown.map(({ valid, illFormed }) => valid + illFormed));
    return make("section", {}, title,
        make("div", { className: "scroll", tabIndex: 0, role: "region", "aria-label": say("evidence") },
            make("table", { className: "evidence" },
                make("thead", {}, make("tr", {}, make("th", { scope: "col" }, say("candidate")), make("td", {}), make("th", { scope: "col" }, say("fits")), make("th", { scope: "col" }, say("illFormed")))),
                make("tbody", {}, ...shown.map((evidence) => row(evidence, detection, most))))));
}
