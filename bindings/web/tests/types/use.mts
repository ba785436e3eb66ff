// What users write must be accepted by TypeScript, and what is wrong must not.
import { load, JkcError, type Jkc, type Loss, type Detection } from "jkc";

const jkc: Jkc = await load(new URL("jkc.wasm", import.meta.url));
const found: Detection = jkc.detect(new Uint8Array());
const open: string[] = found.kind === "undecided" ? found.open : [];
const { data, losses, lossCount } = jkc.convert(new Uint8Array(), { to: "UTF-8", eol: "lf", onLoss: "escape", from: open[0] });
const first: Loss | undefined = losses[0];
const place: string = `${first?.line}:${first?.column} ${first?.character ?? ""} ${data.length + lossCount}`;
const stream = jkc.convertStream({ from: "EUC-JP", to: "UTF-8" });
const output: ReadableStream<Uint8Array> = new Blob([place]).stream().pipeThrough(stream);
const mended: string | undefined = jkc.unmojibake("a")?.steps.map(({ was, readAs }) => `${was} as ${readAs}`).join();
const detector = jkc.createDetector();
detector.feed(data);
detector.finish().evidence.every(({ illFormed }) => illFormed < 11);
detector.free();
try {
    jkc.encode(mended ?? "", "EUC-JP", { onLoss: "stop" });
} catch (error) {
    const status: number | undefined = error instanceof JkcError ? error.status : undefined;
    console.log(status, output.locked);
}

// @ts-expect-error a target is needed
jkc.convert(data, {});
// @ts-expect-error a stream needs to know what it is in
jkc.convertStream({ to: "UTF-8" });
// @ts-expect-error no such line end
jkc.convert(data, { to: "UTF-8", eol: "LF" });
// @ts-expect-error it may be null
const name: string = found.encoding;
console.log(name);
