import { JkcError, EALLOC, check } from "./error.js";

/** An instance of jkc.wasm: calls, and text that goes in and out through its memory. */
export class Native {
    #exports;
    #piece;
    #sink = null;
    #forgotten = new FinalizationRegistry(({ free, handle }) => this.call(free, handle));

    static async instantiate(source) {
        const native = new Native();
        const imports = {
            jkc: {
                write: (data, length) => native.#sink.write(native.bytes(data, length)),
                lose: (...loss) => native.#sink.lose(...loss),
                memory_is_short: () => check(EALLOC),
            },
            wasi_snapshot_preview1: {
                proc_exit(code) {
                    throw new Error(`jkc.wasm has ended itself with ${code}`);
                },
            },
        };
        const made = await WebAssembly.instantiate(source, imports);
        native.#exports = (made.instance ?? made).exports;
        native.#exports._initialize();
        return native;
    }

    get memorySize() {
        return this.#exports.memory.buffer.byteLength;
    }

    call(name, ...values) {
        return this.#exports[name](...values);
    }

    /** Calls with an object that receives the output and the losses of the call. What that throws comes through. */
    callInto(sink, name, ...values) {
        const stack = this.#exports.stackSave();
        this.#sink = sink;
        try {
            return this.#exports[name](...values);
        } catch (error) {
            this.#exports.stackRestore(stack);
            throw error;
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
            throw new TypeError("data is no Uint8Array");
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

    /** Something that a function of the library has made. It is freed when `owner` is no more, unless it frees it. */
    own(owner, handle, free) {
        if (handle === 0) {
            check(EALLOC);
        }
        this.#forgotten.register(owner, { free, handle }, owner);
        return {
            get: () => {
                if (handle === 0) {
                    throw new JkcError("it is freed already", 0);
                }
                return handle;
            },
            free: () => {
                if (handle !== 0) {
                    this.#forgotten.unregister(owner);
                    this.call(free, handle);
                    handle = 0;
                }
            },
        };
    }
}
