// The list of files, a hundred at a time.
import { find, make } from "./dom.js";
import { items, whenChanged } from "./items.js";
import { count, say } from "./strings.js";
import { verdict } from "./verdict.js";

const perPage = 100;
let first = 0;
let selected = null;
const rows = new Map();

function state(item) {
    switch (item.state) {
        case "failed":
            return say(item.file ? "failed" : "unreadable", item.error);
        case "waiting":
        case "looking":
        case "converting":
            return say(item.state) + (item.share ? ` ${Math.floor(item.share * 100)} %` : "");
        default: {
            const told = [];
            if (item.state !== "ready") {
                told.push(say(item.state));
            }
            if (item.lossCount) {
                told.push(say("lost", count(item.lossCount)));
            }
            if (item.mending) {
                told.push(say("garbled"));
            }
            return told.join(" · ");
        }
    }
}

function fill(button, item) {
    const slash = item.path.lastIndexOf("/") + 1;
    const { text, kind } = item.detection ? verdict(item) : { text: "", kind: "" };
    const alarm = item.lossCount || item.mending || item.state === "failed";
    button.replaceChildren(
        make("span", { className: "path" }, make("span", { className: "folder" }, item.path.slice(0, slash)), make("wbr"), item.path.slice(slash)),
        make("span", { className: "facts" }, text ? make("span", { className: `chip ${kind}` }, text) : null, make("span", { className: alarm ? "alarm" : "faint" }, state(item))),
    );
}

function draw() {
    first = Math.min(first, Math.max(0, items.length - 1));
    first -= first % perPage;
    rows.clear();
    const shown = items.slice(first, first + perPage);
    find("list").replaceChildren(
        ...shown.map((item) => {
            const button = make("button", { type: "button", onclick: () => select(item) });
            if (item === selected) {
                button.setAttribute("aria-current", "true");
            }
            fill(button, item);
            rows.set(item, button);
            return make("li", {}, button);
        }),
    );
    find("list-title").textContent = say("listTitle", count(items.length));
    find("list-pager").hidden = items.length <= perPage;
    find("list-place").textContent = say("listPlace", count(first + 1), count(first + shown.length), count(items.length));
    find("list-back").disabled = first === 0;
    find("list-on").disabled = first + perPage >= items.length;
}

let whenSelected;

export function select(item) {
    rows.get(selected)?.removeAttribute("aria-current");
    selected = item;
    rows.get(item)?.setAttribute("aria-current", "true");
    whenSelected(item);
}

/** Calls `chosen` with the item that is selected. */
export function startList(chosen) {
    whenSelected = chosen;
    const turn = (by) => {
        first += by;
        draw();
        find("list").querySelector("button")?.focus();
    };
    find("list-back").onclick = () => turn(-perPage);
    find("list-on").onclick = () => turn(perPage);
    whenChanged((item) => {
        if (item === null) {
            draw();
        } else if (rows.has(item)) {
            fill(rows.get(item), item);
        }
    });
}
