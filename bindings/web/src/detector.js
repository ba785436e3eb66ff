const kinds = new Map([[-1, "undecided"], [-2, "unknown"], [-3, "binary"]]);
const lineEnds = [[1, "lf"], [2, "cr"], [4, "crlf"]];
const CANDIDATES = 8;

/** Detects a text in pieces. */
export class Detector {
    #native;
    #encodings;
    #handle;

    constructor(native, encodings) {
        this.#native = native;
        this.#encodings = encodings;
        this.#handle = native.own(this, native.call("web_detector"), "web_detector_free");
    }

    feed(chunk) {
        const handle = this.#handle.get();
        this.#native.forEachPiece(chunk, (length) => this.#native.call("web_detector_feed", handle, length));
    }

    finish() {
        const at = this.#native.call("web_detector_finish", this.#handle.get());
        const [decision, open, rule, confidence, ends, ...rows] = this.#native.numbers(at, 5 + 6 * CANDIDATES);
        const nameOf = (type) => this.#encodings.name(type);
        const evidence = [];
        for (let i = 0; i < rows.length; i += 6) {
            const [type, valid, illFormed, kana, penalty, firstError] = rows.slice(i, i + 6);
            evidence.push({ encoding: nameOf(type), valid, illFormed, kana, penalty, firstError });
        }
        return {
            encoding: decision === 0 ? "US-ASCII" : nameOf(decision), // an empty text is in it, too
            kind: kinds.get(decision) ?? "encoding",
            open: this.#encodings.all.filter(({ type }) => (open & (1 << (type + 5))) !== 0).map(({ name }) => name),
            rule: this.#native.string(this.#native.call("web_rule", rule)),
            confidence,
            lineEnds: lineEnds.filter(([bit]) => (ends & bit) !== 0).map(([, name]) => name),
            bom: nameOf(decision)?.endsWith("-BOM") ?? false,
            evidence,
        };
    }

    free() {
        this.#handle.free();
    }
}
