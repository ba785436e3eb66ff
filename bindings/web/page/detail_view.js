// All about the file that is selected.
import { compareView } from "./compare_view.js";
import { find, make, tell } from "./dom.js";
import { ask } from "./engine.js";
import { evidenceView } from "./evidence_view.js";
import { changed, encodingOf, fileName, whenChanged } from "./items.js";
import { lossesView } from "./losses_view.js";
import { mendingView } from "./mending_view.js";
import { save, saveOne } from "./saving.js";
import { count, ruleName, say } from "./strings.js";
import { sources, target } from "./target.js";
import { TextView } from "./text_view.js";
import { lineEnds, verdict } from "./verdict.js";

let item = null;
let drawnState = null;
let checking = null;

function choose(encoding) {
    item.from = encoding || undefined;
    item.lossCount = 0;
    changed(item);
    draw();
    find("read-as").focus();
}

function readAs() {
    return make("label", {}, make("span", {}, say("readAs")),
        make("select", { id: "read-as", onchange: ({ target: { value } }) => choose(value) },
            make("option", { value: "" }, say(item.detection.kind === "encoding" ? "asDetected" : "notChosen")),
            ...sources().map(({ name }) => make("option", { value: name, selected: name === item.from }, name))));
}

function head() {
    const { detection } = item;
    const { text, kind } = verdict(item);
    const facts = [say("bytes", count(item.file.size)), lineEnds(item), detection.bom ? say("withBom") : null];
    const isSure = detection.kind === "encoding";
    const why = item.from ? [say("chosen")] : [isSure ? say("confidence", detection.confidence) : null, detection.kind === "undecided" ? null : say("byRule", ruleName(detection.rule))];
    return make("header", {},
        make("h3", { id: "detail-title", className: "faint" }, item.path),
        make("p", { className: `verdict ${kind}` }, text),
        make("p", { className: "faint" }, facts.filter(Boolean).join(" · ")),
        item.file.size > 0 ? make("p", { className: "faint" }, why.filter(Boolean).join(" · ")) : null);
}

function hint() {
    if (item.file.size === 0) {
        return say("emptyHint");
    }
    if (item.from || item.detection.kind === "encoding") {
        return null;
    }
    const { kind, open } = item.detection;
    return { undecided: say("openBetween", open.join(", ")), unknown: say("unknownHint"), binary: say("binaryHint") }[kind];
}

// Where nothing is decided, the readings that are worth a look.
function readings({ kind, open }) {
    return { undecided: open, unknown: ["Shift_JIS", "EUC-JP", "UTF-8"] }[kind] ?? [];
}

function mending() {
    const button = make("button", { type: "button", onclick: async () => {
        const whole = await ask("mendFile", { file: item.file, from: encodingOf(item) });
        if (whole) {
            save(whole.blob, fileName(item));
        } else {
            tell(say("mendNone"));
        }
    } }, say("mendSave"));
    const sample = { ...item.mending, text: item.mending.text.slice(0, 300) };
    return make("section", { className: "notice" }, make("h3", {}, say("mendFile")), ...mendingView(sample, button), make("p", { className: "faint" }, say("mendNotApplied")));
}

// Looks through the whole file for what would be lost.
async function check(view, options) {
    checking?.abort();
    const mine = (checking = new AbortController());
    const about = item;
    try {
        // "stop" would end at the first; all are to be listed.
        const result = await ask("check", { file: about.file, options: { ...options, onLoss: "replace" } }, { signal: mine.signal });
        Object.assign(about, { losses: result.losses, lossCount: result.lossCount });
        view.show(result.losses, result.lossCount, options.to);
        changed(about);
    } catch (error) {
        if (error.name !== "AbortError") {
            view.fail(error.message);
        }
    }
}

function draw() {
    const detail = find("detail");
    checking?.abort();
    drawnState = item?.detection ?? null;
    if (!item) {
        detail.replaceChildren();
        return;
    }
    if (!item.detection) {
        detail.replaceChildren(make("h3", { id: "detail-title", className: "faint" }, item.path), make("p", { className: item.error ? "alarm" : "faint" }, item.error ?? say(item.state)));
        return;
    }
    const encoding = encodingOf(item);
    const isText = item.file.size > 0 && item.detection.kind !== "binary";
    const words = hint();
    const parts = [head(), words ? make("p", { className: "notice" }, words) : null];
    if (item.mending) {
        parts.push(mending());
    }
    if (isText || item.from) {
        parts.push(make("div", { className: "bar controls" }, readAs(), encoding ? make("button", { type: "button", className: "primary", id: "save-one", onclick: () => saveOne(item) }, say("saveOne")) : null));
    }
    if (isText && !item.from) {
        const open = readings(item.detection);
        parts.push(open.length > 0 ? compareView(item, open, choose) : null);
    }
    if (encoding && item.file.size > 0) {
        const options = target(encoding);
        const text = new TextView(item, options);
        const losses = lossesView((offset) => text.open(offset - 2048, offset));
        text.open(0);
        check(losses, options);
        parts.push(text.element, losses);
    }
    if (item.file.size > 0) {
        parts.push(evidenceView(item.detection));
    }
    detail.replaceChildren(...parts.filter(Boolean));
}

export function show(selected) {
    item = selected;
    draw();
}

export const redraw = draw;

whenChanged((one) => {
    if (one && one === item && (one.detection ?? null) !== drawnState) {
        draw();
    }
});
