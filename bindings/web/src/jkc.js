import { Converter } from "./converter.js";
import { Detector } from "./detector.js";
import { Encodings } from "./encodings.js";
import { JkcError, ETYPE } from "./error.js";
import { Native } from "./native.js";

export { JkcError };

const utf8 = new TextDecoder("utf-8", { ignoreBOM: true });

class Jkc {
    #native;
    #encodings;

    constructor(native) {
        this.#native = native;
        this.#encodings = new Encodings((type) => native.string(native.call("web_label", type)));
        const number = native.call("web_version");
        this.version = [Math.floor(number / 10000), Math.floor(number / 100) % 100, number % 100].join(".");
        this.encodings = this.#encodings.all;
    }

    createDetector() {
        return new Detector(this.#native, this.#encodings);
    }

    detect(data) {
        const detector = this.createDetector();
        try {
            detector.feed(data);
            return detector.finish();
        } finally {
            detector.free();
        }
    }

    createConverter(options) {
        return new Converter(this.#native, this.#encodings, options);
    }

    convert(data, options) {
        const from = options.from ?? this.#detected(data);
        const converter = this.createConverter({ ...options, from });
        try {
            const output = converter.convert(data);
            const name = this.#encodings.name(this.#encodings.type(from));
            return { data: output, from: name, losses: converter.losses, lossCount: converter.lossCount };
        } finally {
            converter.free();
        }
    }

    decode(data, from) {
        return utf8.decode(this.convert(data, { from, to: "UTF-8", maxLosses: 0 }).data);
    }

    encode(text, to, options) {
        return this.convert(new TextEncoder().encode(text), { maxLosses: 0, ...options, from: "UTF-8", to }).data;
    }

    convertStream(options) {
        const converter = this.createConverter(options);
        const pass = (output, controller) => output.length > 0 && controller.enqueue(output);
        const stream = new TransformStream({
            transform: (chunk, controller) => pass(converter.feed(chunk), controller),
            flush(controller) {
                pass(converter.finish(), controller);
                converter.free();
            },
        });
        return Object.defineProperties(stream, {
            losses: { get: () => converter.losses },
            lossCount: { get: () => converter.lossCount },
        });
    }

    #detected(data) {
        const found = this.detect(data);
        if (found.kind !== "encoding") {
            const between = found.open.length > 0 ? ` between ${found.open.join(", ")}` : "";
            const error = new JkcError(`the encoding is ${found.kind}${between}: say it as \`from\``, ETYPE);
            throw Object.assign(error, { detection: found });
        }
        return found.encoding;
    }
}

// What is beside the module: by fetch(), which Node does not have for files.
async function read(url) {
    if (url.protocol === "file:" && globalThis.process?.versions?.node) {
        const { readFile } = await import(/* webpackIgnore: true */ /* @vite-ignore */ "node:fs/promises");
        return readFile(url);
    }
    return body(await fetch(url));
}

function body(response) {
    if (!response.ok) {
        throw new Error(`${response.url}: ${response.status} ${response.statusText}`);
    }
    return response.arrayBuffer();
}

async function instantiate(source) {
    if (typeof source === "string" || source instanceof URL) {
        source = await read(new URL(source, globalThis.location?.href ?? import.meta.url));
    } else if (typeof Response === "function" && source instanceof Response) {
        source = await body(source);
    }
    return new Jkc(await Native.instantiate(source));
}

let loaded;

/** Makes the library ready, once: further calls answer the same. */
export function load(source = new URL("./jkc.wasm", import.meta.url)) {
    loaded ??= instantiate(source).catch((error) => {
        loaded = undefined;
        throw error;
    });
    return loaded;
}
