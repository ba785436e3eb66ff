import { JkcError, check, EALLOC, ETYPE } from "./error.js";

const lineTypes = { keep: 0, lf: 1, cr: 2, crlf: 4 };
const policies = { replace: 1, omit: 2, stop: 3, escape: 4 };
const kinds = [null, "ill-formed", "unmappable", "truncated"];
const MOST_LOSSES = 1000; // that are told, where nothing else is asked for

function choice(choices, name, what) {
    if (!Object.hasOwn(choices, name)) {
        throw new TypeError(`no ${what} "${name}"`);
    }
    return choices[name];
}

/** A conversion in pieces. Its output goes to a function, which may keep no view of it. */
export class Conversion {
    losses = [];
    lossCount = 0;
    #native;
    #handle;
    #sink;
    #status = 0;

    constructor(native, encodings, options, write) {
        const { from, to, eol = "keep", onLoss = "replace", compose, geta, maxLosses = MOST_LOSSES } = options;
        if (from === undefined) {
            throw new JkcError("text that comes in pieces needs `from`: a detector finds it", ETYPE);
        }
        const choices = [choice(lineTypes, eol, "line end"), choice(policies, onLoss, "way to treat a loss")];
        const most = Math.max(0, Math.min(maxLosses, 2 ** 31));
        const types = [encodings.type(from), encodings.type(to)];
        const handle = native.callInto(null, "web_converter", ...types, ...choices, !!compose, !!geta, most);
        this.#native = native;
        this.#handle = native.own(this, handle, "web_converter_free");
        const { losses } = this; // not all of this: the library must not keep it alive
        this.#sink = {
            write,
            lose(kind, offset, length, code, codePoint, line, column) {
                const character = codePoint >= 0 ? String.fromCodePoint(codePoint) : null;
                losses.push({ kind: kinds[kind], offset, length, code, character, line, column });
            },
        };
    }

    feed(data) {
        this.#native.forEachPiece(data, (length) => this.#run("web_converter_feed", length));
    }

    finish() {
        this.#run("web_converter_finish");
    }

    free() {
        this.#handle.free();
    }

    #run(name, ...values) {
        const handle = this.#handle.get();
        if (this.#status === 0) {
            this.#status = EALLOC; // unless the call comes back
            this.#status = this.#native.callInto(this.#sink, name, handle, ...values);
            this.lossCount = this.#native.call("web_converter_loss_count", handle);
        }
        try {
            check(this.#status);
        } catch (error) {
            throw Object.assign(error, { losses: this.losses });
        }
    }
}
