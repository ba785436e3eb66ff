// The cases of the C library: what this package makes of them, whole and split at every byte.
import { parseBytes, readCases } from "./case_file.js";
import { equal } from "./harness.js";

const lineEnds = { 0: "keep", 1: "lf", 2: "cr", 4: "crlf" };
const policies = { 1: "replace", 2: "omit", 3: "stop", 4: "escape" };
const letters = { "ill-formed": "i", unmappable: "u", truncated: "t" };
const hex = (number) => number.toString(16).toUpperCase();

function optionsOf(jkc, { src, dst, eol = "0", ...options }) {
    const nameOf = (number) => jkc.encodings.find(({ type }) => type === Math.max(1, Number(number))).name;
    const [compose, geta] = ["compose" in options, "geta" in options];
    return { from: nameOf(src), to: nameOf(dst), eol: lineEnds[eol], compose, geta };
}

// In pieces of `size` bytes; output and losses, or the losses up to an error.
function inPieces(jkc, data, options, size) {
    const converter = jkc.createConverter(options);
    const output = [];
    let status = 0;
    try {
        for (let from = 0; from < data.length; from += size) {
            output.push(...converter.feed(data.subarray(from, from + size)));
        }
        output.push(...converter.finish());
    } catch (error) {
        status = error.status;
    }
    const { losses } = converter;
    converter.free();
    return { output: Uint8Array.from(output), losses, status };
}

const describe = ({ kind, offset, length, code, character }) =>
    `${letters[kind]}${offset}+${length}:${hex(code)}` +
    (character === null ? ";" : `=${hex(character.codePointAt(0))};`);

const sameElsewhere = new Set(["jis", "euc", "flush", "judged", "src", "dst", "eol", "compose"]);

export default function tests({ test, jkc, read }) {
    const leastCompared = { from_sjis: 80, from_euc: 100, from_jis: 150, from_utf8: 100, from_utf16: 200 };
    for (const [name, least] of Object.entries(leastCompared)) {
        test(`${name}.txt comes out otherwise`, async () => {
            let compared = 0;
            for (const { options, input, output, line } of readCases(await read(`${name}.txt`))) {
                // What was lost, or left out, is written in another way there. So are codes of plane 2, and katakana
                // of JIS that are behind a shift-out.
                const isSame = Object.keys(options).every((key) => sameElsewhere.has(key)) && options.jis !== "plane2";
                if (!isSame || (name === "from_jis" && input.includes(0x0e)) || !((options.eol ?? "0") in lineEnds)) {
                    continue;
                }
                const wanted = optionsOf(jkc, options);
                const whole = jkc.convert(input, wanted);
                if (whole.lossCount === 0) {
                    equal(whole.data, parseBytes(output), `line ${line}`);
                    ++compared;
                }
                if (input.length < 100) {
                    equal(inPieces(jkc, input, wanted, 1).output, whole.data, `line ${line}, in bytes`);
                }
            }
            if (compared < least) {
                throw new Error(`only ${compared} cases were compared`);
            }
        });
    }

    test("losses.txt is lost otherwise", async () => {
        let compared = 0;
        for (const { name, options, input, output, line } of readCases(await read("losses.txt"))) {
            // The package reads all codes, and has neither observers nor the policy 0.
            const one = name.startsWith("one of the codes") && !("all_codes" in options);
            if (one || "observed" in options || "srg" in options || !(options.on_loss in policies)) {
                continue;
            }
            const wanted = { ...optionsOf(jkc, options), onLoss: policies[options.on_loss] };
            const behindMark = ({ offset, ...loss }) => ({ offset: offset - markLength(wanted.from, input), ...loss });
            for (const size of [1, input.length]) {
                const found = inPieces(jkc, input, wanted, size);
                const what = `line ${line}, in pieces of ${size}`;
                equal(found.status, Number(options.status ?? 0), what);
                equal(found.losses.map(behindMark).map(describe).join(""), options.losses, what);
                if (found.status === 0) {
                    equal(found.output, parseBytes(output), what);
                }
                ++compared;
            }
        }
        equal(compared > 80, true, `${compared} cases`);
    });

    test("decision.txt is decided otherwise", async () => {
        let compared = 0;
        const nameOf = (word) => jkc.encodings.find(({ label }) => label === word)?.name ?? null;
        for (const { input, output, line } of readCases(await read("decision.txt"))) {
            const [, decision, confidence, rule] = output.match(/^(\S+) (\d+)(?: open=\S+)?: (.*)$/) ?? [];
            if (decision === undefined) {
                continue;
            }
            const found = jkc.detect(input);
            const wanted = decision === "Empty" ? "US-ASCII" : nameOf(decision);
            equal([found.encoding, found.confidence, found.rule], [wanted, Number(confidence), rule], `line ${line}`);
            equal(found.kind, wanted === null ? decision : "encoding", `line ${line}`);
            ++compared;
        }
        equal(compared > 50, true, `${compared} cases`);
    });
}

function markLength(from, data) {
    const marks = { "UTF-8": [0xef, 0xbb, 0xbf], "UTF-16BE": [0xfe, 0xff], "UTF-16LE": [0xff, 0xfe] };
    const mark = marks[from.replace(/-BOM$/, "")];
    return mark?.every((byte, i) => data[i] === byte) ? mark.length : 0;
}
