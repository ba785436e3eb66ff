// The text of a file, a window at a time, with what would be lost marked in place. A character that is pointed at, or moved
// to with the keys, shows its bytes.
import { make } from "./dom.js";
import { ask } from "./engine.js";
import { hexView, lossWords } from "./hex_view.js";
import { count, say } from "./strings.js";

const windowSize = 16 << 10;
const linesAtOnce = 40;
const frame = () => new Promise(requestAnimationFrame);
const visible = (text) => text.replace(/[\0-\x08\x0b-\x1f]/g, (control) => String.fromCharCode(0x2400 + control.charCodeAt(0)));

// The lines of a window: [{from, to}] in code units, without the line ends.
function linesOf(text) {
    const lines = [];
    let from = 0;
    for (const { 0: end, index } of text.matchAll(/\r\n|\r|\n/g)) {
        lines.push({ from, to: index });
        from = index + end.length;
    }
    if (from < text.length) {
        lines.push({ from, to: text.length });
    }
    return lines;
}

function lineElement(shown, line, target) {
    const element = make("div", { className: "line" });
    let at = line.from;
    for (const mark of shown.marks) {
        if (mark.to <= at || mark.from >= line.to) {
            continue;
        }
        const from = Math.max(mark.from, at);
        const to = Math.min(mark.to, line.to);
        element.append(visible(shown.text.slice(at, from)), make("mark", { title: lossWords(mark.loss, target) }, visible(shown.text.slice(from, to))));
        at = to;
    }
    element.append(visible(shown.text.slice(at, line.to)));
    return element;
}

export class TextView {
    #text = make("div", { className: "text", tabIndex: 0, role: "textbox", lang: "ja" });
    #cursor = make("div", { className: "cursor", hidden: true });
    #hex = hexView();
    #where = make("span", { className: "faint" });
    #back = make("button", { type: "button", onclick: () => this.open(this.#shown.start - windowSize) }, say("back"));
    #on = make("button", { type: "button", onclick: () => this.open(this.#shown.end) }, say("on"));
    #shown = null;
    #lines = [];
    #index = 0;
    #turn = 0;
    #wanted = 0;

    constructor(item, options) {
        this.item = item;
        this.options = options;
        this.#text.setAttribute("aria-readonly", "true");
        this.#text.setAttribute("aria-multiline", "true");
        this.#text.setAttribute("aria-label", say("textOf", item.path));
        this.#text.onpointermove = (event) => this.#point(event);
        this.#text.onpointerdown = (event) => this.#point(event);
        this.#text.onkeydown = (event) => this.#key(event);
        this.element = make("section", { className: "reading" },
            make("div", { className: "bar" }, make("h3", {}, say("text")), make("span", { className: "pager" }, this.#where, this.#back, this.#on)),
            this.#text,
            this.#hex);
    }

    /** Shows the window around an offset, and moves to what stands there. */
    async open(near, place = null) {
        const turn = ++this.#turn;
        const shown = await ask("window", { file: this.item.file, near: Math.max(0, near), options: this.options });
        if (turn !== this.#turn) {
            return;
        }
        this.#shown = shown;
        this.#lines = linesOf(shown.text);
        this.#cursor.hidden = true;
        this.#text.replaceChildren(this.#cursor);
        this.#text.scrollTop = 0;
        this.#where.textContent = say("windowPlace", count(shown.start), count(shown.end), count(shown.size));
        this.#back.disabled = shown.start === 0;
        this.#on.disabled = shown.end >= shown.size;
        this.#back.hidden = this.#on.hidden = shown.start === 0 && shown.end >= shown.size;
        for (let at = 0; at < this.#lines.length; at += linesAtOnce) {
            for (const line of this.#lines.slice(at, at + linesAtOnce)) {
                line.element = lineElement(shown, line, this.options.to);
                this.#text.append(line.element);
            }
            if (at + linesAtOnce < this.#lines.length) {
                await frame();
                if (turn !== this.#turn) {
                    return;
                }
            }
        }
        this.#index = 0;
        if (place !== null) {
            const mark = shown.marks.find(({ loss }) => loss.offset === place);
            this.#move(mark?.from ?? 0);
            this.#text.focus({ preventScroll: true });
            this.#text.scrollIntoView({ block: "nearest" });
        }
    }

    // The next character; a line end of two is one.
    #after(index) {
        const { text } = this.#shown;
        return index + (text.codePointAt(index) > 0xffff || text.startsWith("\r\n", index) ? 2 : 1);
    }

    #lineAt(index) {
        const next = this.#lines.findIndex(({ from }) => from > index);
        return (next < 0 ? this.#lines.length : next) - 1;
    }

    // The range of the character at an index, or null at a line end.
    #range(index) {
        const line = this.#lines[this.#lineAt(index)];
        let left = index - line.from;
        const walker = document.createTreeWalker(line.element, NodeFilter.SHOW_TEXT);
        while (walker.nextNode()) {
            const { length } = walker.currentNode;
            if (left < length) {
                const range = document.createRange();
                range.setStart(walker.currentNode, left);
                range.setEnd(walker.currentNode, Math.min(length, left + (this.#shown.text.codePointAt(index) > 0xffff ? 2 : 1)));
                return range;
            }
            left -= length;
        }
        return null;
    }

    #show(index, isTold) {
        this.#index = index;
        const line = this.#lines[this.#lineAt(index)].element;
        const range = this.#range(index);
        const box = (range ?? line).getBoundingClientRect();
        const frame = this.#text.getBoundingClientRect();
        Object.assign(this.#cursor.style, {
            left: `${(range ? box.left : box.left + this.#width(line)) - frame.left + this.#text.scrollLeft}px`,
            top: `${(range ? box.top : box.bottom - 24) - frame.top + this.#text.scrollTop}px`,
            width: `${range ? Math.max(box.width, 3) : 8}px`,
            height: `${range ? box.height : 22}px`,
        });
        this.#cursor.hidden = false;
        this.#showBytes(index, isTold);
    }

    async #showBytes(index, isTold) {
        const shown = this.#shown;
        const wanted = ++this.#wanted;
        const loss = shown.marks.find(({ from, to }) => from <= index && index < to)?.loss;
        const place = loss
            ? { from: loss.offset, to: loss.offset + loss.length }
            : await ask("place", { shown: { bytes: shown.bytes, before: shown.before, skip: shown.skip }, index, next: this.#after(index), encoding: this.options.from });
        if (wanted === this.#wanted && shown === this.#shown) {
            const words = loss ? lossWords(loss, this.options.to) : "";
            this.#hex.show(shown, String.fromCodePoint(shown.text.codePointAt(index)), place, words, isTold);
        }
    }

    #width(line) {
        const range = document.createRange();
        range.selectNodeContents(line);
        const boxes = range.getClientRects();
        return boxes.length ? boxes[boxes.length - 1].right - line.getBoundingClientRect().left : 0;
    }

    #move(index) {
        const { text } = this.#shown;
        if (text.length === 0) {
            return;
        }
        this.#show(Math.min(Math.max(0, index), text.length - 1), true);
        this.#cursor.scrollIntoView({ block: "nearest", inline: "nearest" });
    }

    #point({ clientX, clientY }) {
        const hit = document.caretPositionFromPoint?.(clientX, clientY);
        const old = hit ? null : document.caretRangeFromPoint?.(clientX, clientY);
        const node = hit?.offsetNode ?? old?.startContainer;
        const line = node && this.#lines.find(({ element }) => element?.contains(node));
        if (!line) {
            return;
        }
        const range = document.createRange();
        range.setStart(line.element, 0);
        range.setEnd(node, hit?.offset ?? old.startOffset);
        let index = line.from + range.toString().length;
        // The caret that is nearest may be behind the character.
        if (index > line.from && (index >= line.to || clientX < this.#range(index)?.getBoundingClientRect().left)) {
            const before = index - (this.#shown.text.codePointAt(index - 2) > 0xffff ? 2 : 1);
            if (clientX <= (this.#range(before)?.getBoundingClientRect().right ?? -1)) {
                index = before;
            }
        }
        if (index < this.#shown.text.length) {
            this.#show(index, false);
        }
    }

    #key(event) {
        if (!this.#shown || event.ctrlKey || event.metaKey || event.altKey) {
            return;
        }
        const { text } = this.#shown;
        const index = this.#index;
        const at = this.#lineAt(index);
        const line = this.#lines[at];
        const inLine = (number) => {
            const other = this.#lines[Math.min(Math.max(0, number), this.#lines.length - 1)];
            return Math.min(other.from + index - line.from, other.to);
        };
        const moves = {
            ArrowRight: () => (this.#cursor.hidden ? 0 : this.#after(index)),
            ArrowLeft: () => index - (text.codePointAt(index - 2) > 0xffff || text.startsWith("\r\n", index - 2) ? 2 : 1),
            ArrowDown: () => (this.#cursor.hidden ? 0 : inLine(at + 1)),
            ArrowUp: () => inLine(at - 1),
            Home: () => line.from,
            End: () => line.to,
            PageDown: () => inLine(at + 10),
            PageUp: () => inLine(at - 10),
        };
        if (line && moves[event.key]) {
            event.preventDefault();
            this.#move(moves[event.key]());
        }
    }
}
