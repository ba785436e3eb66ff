import { JkcError, check, EALLOC, ETYPE, ELOSS } from "./error.js";

const lineTypes = { keep: 0, lf: 1, cr: 2, crlf: 4 };
const policies = { replace: 1, omit: 2, stop: 3, escape: 4 };
const kinds = [null, "ill-formed", "unmappable", "truncated"];
const MOST_LOSSES = 1000; // that are told, where nothing else is asked for

function choice(choices, name, otherwise, what) {
    const chosen = choices[name ?? otherwise];
    if (chosen === undefined) {
        throw new TypeError(`no ${what} "${name}"`);
    }
    return chosen;
}

/** Converts a text in pieces. */
export class Converter {
    #native;
    #handle;
    #output;
    #length = 0;
    #status = 0;
    #lossCount = 0;
    /** Those losses that are told, in the order of the text. */
    losses = [];

    constructor(native, encodings, options) {
        const { from, to, eol, onLoss, compose = false, geta = false, maxLosses = MOST_LOSSES } = options;
        if (from === undefined) {
            throw new JkcError("text that comes in pieces needs `from`: a Detector finds it", ETYPE);
        }
        const most = Math.max(0, Math.min(Math.floor(maxLosses), 0xffffffff));
        const handle = native.call(
            "web_converter", encodings.type(from), encodings.type(to), choice(lineTypes, eol, "keep", "line end"),
            choice(policies, onLoss, "replace", "way to treat losses"), compose ? 1 : 0, geta ? 1 : 0, most,
        );
        if (handle === 0) {
            check(native.call("web_made"));
        }
        this.#native = native;
        this.#handle = native.own(this, handle, "web_converter_free");
    }

    /** How many losses there are, told or not. */
    get lossCount() {
        return this.#lossCount;
    }

    feed(chunk) {
        this.#begin(chunk.length);
        this.#native.forEachPiece(chunk, (length) => this.#run("web_converter_feed", length));
        return this.#end();
    }

    finish() {
        this.#begin(0);
        this.#run("web_converter_finish");
        return this.#end();
    }

    /** A whole text, with what finish() gives. */
    convert(data) {
        this.#begin(data.length);
        this.#native.forEachPiece(data, (length) => this.#run("web_converter_feed", length));
        this.#run("web_converter_finish");
        return this.#end();
    }

    free() {
        if (this.#handle !== 0) {
            this.#native.free(this, this.#handle, "web_converter_free");
            this.#handle = 0;
        }
    }

    // What jkc.wasm calls.
    write(bytes) {
        if (this.#length + bytes.length > this.#output.length) {
            const grown = new Uint8Array(Math.max(2 * this.#output.length, this.#length + bytes.length));
            grown.set(this.#output.subarray(0, this.#length));
            this.#output = grown;
        }
        this.#output.set(bytes, this.#length);
        this.#length += bytes.length;
    }

    lose(kind, offset, length, code, codePoint, line, column) {
        const character = codePoint >= 0 ? String.fromCodePoint(codePoint) : null;
        this.losses.push({ kind: kinds[kind], offset, length, code, character, line, column });
    }

    #begin(length) {
        if (this.#handle === 0) {
            throw new JkcError("the converter is freed", 0);
        }
        check(this.#status);
        this.#output = new Uint8Array(length + (length >> 1) + 64);
        this.#length = 0;
    }

    #run(name, ...values) {
        if (this.#status === 0) {
            const sink = { write: (bytes) => this.write(bytes), lose: (...loss) => this.lose(...loss) };
            this.#status = this.#native.callInto(sink, name, this.#handle, ...values);
        }
    }

    #end() {
        this.#lossCount = this.#native.call("web_converter_loss_count", this.#handle);
        check(this.#status);
        const output = this.#output.slice(0, this.#length);
        this.#output = null;
        return output;
    }
}
