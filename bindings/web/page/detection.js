// What a file is in; and, where it is text, whether that text had been read wrongly before it was saved.
import { pieces } from "./pieces.js";

// Mojibake shows within the first lines; a long text need not be tried as a whole.
const mendingSample = 4096;

export async function detectFile(jkc, { file }, job) {
    const detector = jkc.createDetector();
    try {
        for await (const piece of pieces(file, job)) {
            detector.feed(piece);
        }
        const detection = detector.finish();
        const isText = detection.kind === "encoding" && file.size > 0;
        return { detection, mending: isText ? await sampleMending(jkc, file, detection.encoding) : null };
    } finally {
        detector.free();
    }
}

async function sampleMending(jkc, file, encoding) {
    const bytes = new Uint8Array(await file.slice(0, mendingSample).arrayBuffer());
    let text = jkc.decode(bytes, encoding);
    if (file.size > mendingSample) {
        // The sample may end within a character.
        text = text.slice(0, Math.max(text.lastIndexOf("\n"), text.length - 8));
    }
    return jkc.unmojibake(text);
}
