// How fast 1 MB of prose is decoded and detected, beside the decoder that is built in. Takes the folder of the package.
import { readFileSync } from "node:fs";
import { pathToFileURL } from "node:url";

const { load } = await import(new URL("jkc.js", pathToFileURL(`${process.argv[2] ?? "build/wasm/package"}/`)));
const jkc = await load();
const prose = readFileSync(new URL("../../../bench/text/prose.txt", import.meta.url), "utf8");
const text = prose.repeat(Math.ceil(2 ** 20 / Buffer.byteLength(prose)));

// The best of many runs, in MB of input a second.
function speed(data, run) {
    let best = Infinity;
    for (const end = performance.now() + 1500; performance.now() < end;) {
        const begin = performance.now();
        run(data);
        best = Math.min(best, performance.now() - begin);
    }
    return Math.round(data.length / best / 1000);
}

for (const encoding of ["Shift_JIS", "EUC-JP", "ISO-2022-JP", "UTF-8"]) {
    const data = jkc.encode(text, encoding);
    const builtIn = new TextDecoder(encoding);
    const row = {
        "decode()": speed(data, () => jkc.decode(data, encoding)),
        "convert() to UTF-8": speed(data, () => jkc.convert(data, { from: encoding, to: "UTF-8" })),
        "detect()": speed(data, () => jkc.detect(data)),
        TextDecoder: speed(data, () => builtIn.decode(data)),
    };
    console.log(encoding.padEnd(12), JSON.stringify(row), "MB/s");
}
