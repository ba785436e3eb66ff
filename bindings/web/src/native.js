import { JkcError, EALLOC } from "./error.js";

/** An instance of jkc.wasm: calls, and text that goes in and out through its memory. */
export class Native {
    #exports;
    #piece;
    #sink = null;
    #forgotten;

    static async instantiate(source) {
        const native = new Native();
        const imports = {
            jkc: {
                write: (data, length) => native.#sink.write(native.bytes(data, length)),
                lose: (...loss) => native.#sink.lose(...loss),
            },
            env: { emscripten_notify_memory_growth() {} },
            wasi_snapshot_preview1: {
                proc_exit(code) {
                    throw new Error(`jkc.wasm has ended itself with ${code}`);
                },
            },
        };
        const made = await WebAssembly.instantiate(source, imports);
        native.#exports = (made.instance ?? made).exports;
        native.#exports._initialize();
        native.#forgotten = new FinalizationRegistry(({ free, handle }) => native.call(free, handle));
        return native;
    }

    call(name, ...values) {
        return this.#exports[name](...values);
    }

    /** Calls with an object that receives the output and the losses of the call. */
    callInto(sink, name, ...values) {
        this.#sink = sink;
        try {
            return this.#exports[name](...values);
        } finally {
            this.#sink = null;
        }
    }

    /** A view of the memory, good until the next call. */
    bytes(at, length) {
        return new Uint8Array(this.#exports.memory.buffer, at, length);
    }

    numbers(at, count) {
        return new Float64Array(this.#exports.memory.buffer, at, count);
    }

    /** A string of the library's, which ends with a NUL byte. */
    string(at) {
        const bytes = new Uint8Array(this.#exports.memory.buffer, at);
        return new TextDecoder().decode(bytes.subarray(0, bytes.indexOf(0)));
    }

    /** Puts data piece by piece where the library reads it, and calls for each with its length. */
    forEachPiece(data, take) {
        if (!(data instanceof Uint8Array)) {
            throw new TypeError("not a Uint8Array");
        }
        const address = this.call("web_piece");
        const size = this.call("web_piece_size");
        for (let from = 0; from < data.length; from += size) {
            if (this.#piece?.buffer !== this.#exports.memory.buffer) {
                this.#piece = this.bytes(address, size); // the memory has grown, and moved
            }
            const piece = data.subarray(from, from + size);
            this.#piece.set(piece);
            take(piece.length);
        }
    }

    /** Keeps what the library has made: freed with `owner`, or by free(). */
    own(owner, handle, free) {
        if (handle === 0) {
            throw new JkcError("memory is short", EALLOC);
        }
        this.#forgotten.register(owner, { free, handle }, owner);
        return handle;
    }

    free(owner, handle, free) {
        this.#forgotten.unregister(owner);
        this.call(free, handle);
    }
}
