import { Conversion } from "./conversion.js";

/** Bytes that come in pieces. */
class Output {
    #bytes;
    #length = 0;

    constructor(room) {
        this.#bytes = new Uint8Array(room);
    }

    add(bytes) {
        const length = this.#length + bytes.length;
        if (length > this.#bytes.length) {
            const grown = new Uint8Array(Math.max(2 * this.#bytes.length, length));
            grown.set(this.#bytes.subarray(0, this.#length));
            this.#bytes = grown;
        }
        this.#bytes.set(bytes, this.#length);
        this.#length = length;
    }

    taken() {
        return this.#bytes.slice(0, this.#length);
    }
}

/** Converts a text in pieces. */
export class Converter {
    #conversion;
    #output;

    constructor(native, encodings, options) {
        this.#conversion = new Conversion(native, encodings, options, (bytes) => this.#output.add(bytes));
    }

    get losses() {
        return this.#conversion.losses;
    }

    get lossCount() {
        return this.#conversion.lossCount;
    }

    feed(chunk) {
        return this.#collect(chunk.length, () => this.#conversion.feed(chunk));
    }

    finish() {
        return this.#collect(0, () => this.#conversion.finish());
    }

    /** A text that comes as a whole. */
    convert(data) {
        return this.#collect(data.length, () => {
            this.#conversion.feed(data);
            this.#conversion.finish();
        });
    }

    free() {
        this.#conversion.free();
    }

    #collect(length, run) {
        this.#output = new Output(length + (length >> 1) + 64);
        try {
            run();
            return this.#output.taken();
        } finally {
            this.#output = null;
        }
    }
}
