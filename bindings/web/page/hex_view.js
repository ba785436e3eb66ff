// The bytes of one character, among those around it.
import { make, tell } from "./dom.js";
import { count, say } from "./strings.js";

const around = 6;
const hex = (number, digits = 2) => number.toString(16).toUpperCase().padStart(digits, "0");

export const lossWords = ({ kind }, to) => say(kind, to);

/** An element with show(window, character, {from, to}, loss words, whether it is told). */
export function hexView() {
    const element = make("div", { className: "hex" });
    element.append(make("p", { className: "faint" }, say("textHelp")));
    element.show = ({ bytes, before }, character, { from, to }, words, isTold) => {
        const dump = (begin, end) => Array.from(bytes.subarray(Math.max(0, begin - before), end - before), (byte) => hex(byte)).join(" ");
        const isEnd = character === "\n" || character === "\r";
        const name = isEnd ? say("endOfLine") : `U+${hex(character.codePointAt(0), 4)}`;
        const where = say("hexAt", count(from), hex(from));
        element.replaceChildren(
            make("span", { className: "character", lang: "ja" }, isEnd ? "↵" : character),
            make("span", { className: "about" }, make("span", {}, `${name} · ${where}`), words ? make("span", { className: "alarm" }, words) : null),
            make("code", {}, dump(from - around, from), " ", make("b", {}, dump(from, to)), " ", dump(to, to + around)),
        );
        if (isTold) {
            tell([isEnd ? "" : character, words, name, dump(from, to), where].filter(Boolean).join(", "));
        }
    };
    return element;
}
