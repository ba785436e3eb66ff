// What the package adds to the library: places, streams, errors, memory.
import { collected, equal, failure, streamOf } from "./harness.js";

const bytes = (text) => new TextEncoder().encode(text);
const MEGABYTE = 2 ** 20;

export default function tests({ test, jkc, loadAnew }) {
    test("a loss is told at a wrong place", () => {
        const places = (data, options) =>
            jkc
                .convert(data, { to: "Shift_JIS", ...options })
                .losses.map(({ offset, line, column }) => [offset, line, column]);
        const text = "ab\r\n\u3042\u2665\r\u{20bb7}\u2665\n\n\u2665";
        equal(places(bytes(text), { from: "UTF-8" }), [[7, 2, 2], [11, 3, 1], [15, 3, 2], [20, 5, 1]]);
        equal(places(bytes(`\ufeff${text}`), { from: "UTF-8" })[0], [10, 2, 2], "behind a BOM");
    });

    test("losses beyond those that are told are not counted", () => {
        const options = { from: "UTF-8", to: "SJIS", maxLosses: 7 };
        const { losses, lossCount } = jkc.convert(bytes("\u2665".repeat(5000)), options);
        equal([losses.length, lossCount], [7, 5000]);
    });

    test("a stream gives something else than the whole", async () => {
        const text = "日本語のテキスト、\u2665。\r\n".repeat(9000);
        const data = jkc.encode(text, "EUC-JP");
        const options = { from: "EUC-JP", to: "ISO-2022-JP", eol: "lf" };
        const stream = jkc.convertStream(options);
        equal(await collected(streamOf(data).pipeThrough(stream)), jkc.convert(data, options).data);
        equal([stream.lossCount, stream.losses.length], [0, 0]);
        const failed = jkc.convertStream({ from: "UTF-8", to: "EUC-JP", onLoss: "stop" });
        const error = await failure(() => collected(streamOf(bytes("a\u2665b")).pipeThrough(failed)));
        equal([error.name, error.status, error.losses.length, failed.lossCount], ["JkcError", -25, 1, 1]);
    });

    test("a stream takes memory for its length", async () => {
        const chunk = jkc.encode("吾輩は猫である。名前はまだ無い。\n".repeat(MEGABYTE / 34), "Shift_JIS");
        const count = Math.ceil((200 * MEGABYTE) / chunk.length);
        const before = jkc.memorySize;
        let [length, units] = [0, 0];
        const converted = streamOf(chunk, count).pipeThrough(jkc.convertStream({ from: "Shift_JIS", to: "EUC-JP" }));
        await converted.pipeTo(new WritableStream({ write: (piece) => void ((length += piece.length), ++units) }));
        equal([length, units >= count], [count * chunk.length, true]);
        equal(jkc.memorySize - before, 0, "bytes of memory more");
    });

    test("a detector in pieces finds something else", () => {
        const data = jkc.encode("半角ｶﾅと漢字\r\n".repeat(20), "UTF-16LE-BOM");
        const detector = jkc.createDetector();
        for (const byte of data) {
            detector.feed(Uint8Array.of(byte));
        }
        const found = detector.finish();
        equal(found, jkc.detect(data));
        equal([found.encoding, found.bom, found.lineEnds], ["UTF-16LE-BOM", true, ["crlf"]]);
        detector.free();
        const open = jkc.detect(Uint8Array.of(0xb1, 0xb2, 0x0a));
        equal([open.encoding, open.kind, open.open.length > 1], [null, "undecided", true]);
    });

    test("a text does not come back as a string", () => {
        const text = `\ufeff表示 ｶﾅ \u{20bb7}`.repeat(30000);
        for (const { name } of jkc.encodings.filter(({ type }) => type >= 11)) {
            equal(jkc.decode(jkc.encode(text, name), name), text.slice(1), name);
        }
        equal(jkc.decode(Uint8Array.of(0x82, 0xa0, 0x82), "x-sjis"), "あ\ufffd");
        equal(jkc.decode(Uint8Array.of(0xff, 0xfe, 0x42, 0x30)), "あ");
        equal(jkc.decode(new Uint8Array()), "");
        equal([...jkc.encode("♥あ", "cp932", { onLoss: "omit" })], [0x82, 0xa0]);
    });

    test("mojibake stays, or a sound text does not", () => {
        const text = "文字化けしたテキストです";
        const read = String.fromCharCode(...bytes(text));
        const { text: mended, lost, steps } = jkc.unmojibake(read);
        equal([mended, lost, steps], [text, 0, [{ was: "UTF-8", readAs: "ISO-8859-1" }]]);
        equal(jkc.unmojibake(text), null);
        const before = jkc.memorySize;
        for (let i = 0; i < 40; ++i) {
            jkc.unmojibake(read.repeat(4000)); // 264 kB, which become 132 kB
        }
        equal(jkc.memorySize - before < 4 * MEGABYTE, true, "memory is freed");
    });

    test("an error has the wrong status", async () => {
        const detection = await failure(() => jkc.convert(Uint8Array.of(0xb1, 0xb2, 0x0a), { to: "UTF-8" }));
        equal([detection.status, detection.detection.kind], [-20, "undecided"]);
        for (const [what, status, run] of [
            ["no such encoding", -20, () => jkc.encode("a", "Shift_JISX")],
            ["a stream in anything", -20, () => jkc.convertStream({ to: "UTF-8" })],
            ["a loss", -25, () => jkc.encode("\u2665", "EUC-JP", { onLoss: "stop" })],
            ["an option", undefined, () => jkc.encode("a", "EUC-JP", { onLoss: "toString" })],
            ["an array", undefined, () => jkc.detect([1, 2])],
        ]) {
            const error = await failure(run);
            equal([error.name, error.status], [status === undefined ? "TypeError" : "JkcError", status], what);
        }
        const converter = jkc.createConverter({ from: "UTF-8", to: "EUC-JP" });
        converter.free();
        converter.free();
        equal((await failure(() => converter.finish())).name, "JkcError");
    });

    test("short memory is no error that can be caught, or what was freed is not", async () => {
        const other = await loadAnew();
        const made = [];
        const error = await failure(() => {
            for (;;) {
                made.push(other.createConverter({ from: "UTF-8", to: "EUC-JP" }));
            }
        });
        equal([error.name, error.status, made.length > 1000], ["JkcError", -4, true], error.message);
        equal((await failure(() => other.unmojibake("x".repeat(8 * MEGABYTE)))).status, -4);
        made.forEach((converter) => converter.free());
        equal(other.decode(other.encode("あ".repeat(MEGABYTE), "EUC-JP"), "EUC-JP").length, MEGABYTE);
    });
}
