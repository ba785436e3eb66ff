// What a file is in, in a few words.
import { say } from "./strings.js";

const kinds = { undecided: "undecided", unknown: "unknown", binary: "binary" };

/** {text, kind}: kind is "sure", "open", or "none". */
export function verdict(item) {
    const { detection } = item;
    if (item.file?.size === 0) {
        return { text: say("empty"), kind: "none" };
    }
    if (item.from) {
        return { text: item.from, kind: "sure" };
    }
    if (detection.kind in kinds) {
        return { text: say(kinds[detection.kind]), kind: detection.kind === "binary" ? "none" : "open" };
    }
    return { text: detection.encoding, kind: "sure" };
}

export function lineEnds({ detection }) {
    const ends = detection.lineEnds.map((end) => end.toUpperCase());
    if (ends.length === 0) {
        return say("noLineEnds");
    }
    return ends.length === 1 ? ends[0] : say("mixedEnds", ends.join(", "));
}
