import { Conversion } from "./conversion.js";
import { Converter } from "./converter.js";
import { Detector } from "./detector.js";
import { Encodings } from "./encodings.js";
import { JkcError, ETYPE } from "./error.js";
import { Native } from "./native.js";
import { unmojibake } from "./unmojibake.js";

export { JkcError };

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

    get memorySize() {
        return this.#native.memorySize;
    }

    createDetector() {
        return new Detector(this.#native, this.#encodings);
    }

    detect(data) {
        return using(this.createDetector(), (detector) => {
            detector.feed(data);
            return detector.finish();
        });
    }

    createConverter(options) {
        return new Converter(this.#native, this.#encodings, options);
    }

    convert(data, options) {
        const from = this.#from(data, options.from);
        return using(this.createConverter({ ...options, from }), (converter) => {
            const output = converter.convert(data);
            return { data: output, from, losses: converter.losses, lossCount: converter.lossCount };
        });
    }

    decode(data, from) {
        // What is built in makes strings of code units faster than of bytes.
        const units = new TextDecoder("utf-16le", { ignoreBOM: true });
        const options = { from: this.#from(data, from), to: "UTF-16LE", maxLosses: 0 };
        let text = "";
        const write = (bytes) => {
            text += units.decode(bytes, { stream: true });
        };
        return using(new Conversion(this.#native, this.#encodings, options, write), (conversion) => {
            conversion.feed(data);
            conversion.finish();
            return text;
        });
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

    unmojibake(text) {
        return unmojibake(this.#native, text);
    }

    // The name of what a text is in, which is detected unless it is said.
    #from(data, said) {
        if (said !== undefined) {
            return this.#encodings.name(this.#encodings.type(said));
        }
        const detection = this.detect(data);
        if (detection.kind !== "encoding") {
            const between = detection.open.length > 0 ? ` between ${detection.open.join(", ")}` : "";
            const message = `the encoding is ${detection.kind}${between}: say it as \`from\``;
            throw Object.assign(new JkcError(message, ETYPE), { detection });
        }
        return detection.encoding;
    }
}

function using(freed, run) {
    try {
        return run(freed);
    } finally {
        freed.free();
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
    } else if (source instanceof Response) {
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
