// The list of what would be lost; each leads to its place in the text.
import { make } from "./dom.js";
import { lossWords } from "./hex_view.js";
import { count, say } from "./strings.js";

const hex = (bytes) => bytes.toString(16).toUpperCase();

/** An element with show(losses, lossCount, to). `go` is called with the offset of one that is chosen. */
export function lossesView(go) {
    const body = make("div", {}, make("p", { className: "faint" }, say("lossesChecking")));
    const element = make("section", { className: "losses" }, make("h3", {}, say("losses")), body);
    element.show = (losses, lossCount, to) => {
        if (lossCount === 0) {
            body.replaceChildren(make("p", { className: "fine" }, say("lossesNone")));
            return;
        }
        const total = say("lossesCount", count(lossCount)) + (lossCount > losses.length ? `; ${say("lossesMore", count(losses.length))}` : "");
        body.replaceChildren(
            make("p", { className: "alarm" }, total),
            make("ul", { className: "places" }, ...losses.map((loss) => make("li", {},
                make("button", { type: "button", onclick: () => go(loss.offset) },
                    make("span", { className: "character", lang: "ja" }, loss.character ?? "�"),
                    make("span", {}, lossWords(loss, to)),
                    make("code", {}, hex(loss.code)),
                    make("span", { className: "faint" }, say("lossPlace", count(loss.line), count(loss.column))))))));
    };
    element.fail = (message) => body.replaceChildren(make("p", { className: "alarm" }, message));
    return element;
}
