// A window of a file: some of its text, and what of that would be lost; which bytes each of its characters comes from.
import { CodeUnits, isLineEnd } from "./code_units.js";
import { pieces } from "./pieces.js";

export const windowSize = 16 << 10;
// So much in front of a window is read as well: it brings the converter into step, and into the set that ISO-2022-JP has
// selected.
const runUp = 4096;

/**
 * {start, end, size, text, marks, bytes, before, skip}: the text of the bytes from `start` to `end`; marks are [{from, to, loss}] in
 * code units of it. `bytes` begin at `before`, and `skip` code units of them stand in front of the text.
 */
export async function readWindow(jkc, { file, near, isBeyondAscii, options }) {
    if (isBeyondAscii) {
        near = await beyondAscii(file);
    }
    near -= near % 2; // UTF-16 stays in step
    const before = Math.max(0, near - runUp);
    let bytes = new Uint8Array(await file.slice(before, near + windowSize).arrayBuffer());
    const start = before + lineStart(bytes, Math.min(near - before, bytes.length), options.from);
    if (before + bytes.length < file.size) {
        bytes = bytes.subarray(0, lastLineEnd(bytes, start - before, options.from));
    }
    const end = before + bytes.length;

    const units = new CodeUnits(jkc, bytes, options.from);
    const skip = units.before(start - before);
    const marks = jkc
        .convert(bytes, { ...options, onLoss: "replace", maxLosses: bytes.length })
        .losses.filter(({ kind, offset }) => before + offset >= start && (kind !== "truncated" || end === file.size))
        .map((loss) => {
            const from = units.before(loss.offset) - skip;
            const to = units.before(loss.offset + loss.length) - skip;
            return { from, to: Math.max(from + 1, to), loss: { ...loss, offset: before + loss.offset } };
        });
    return { start, end, size: file.size, text: units.text.slice(skip), marks, bytes, before, skip };
}

/** The bytes of a window that its code units from `index` to `next` come from: {from, to}, offsets in the file. */
export function findPlace(jkc, { shown: { bytes, before, skip }, index, next, encoding }) {
    const units = new CodeUnits(jkc, bytes, encoding);
    return { from: before + units.startOf(skip + index), to: before + units.startOf(skip + next) };
}

// Where the first byte stands that is not the same in every encoding.
async function beyondAscii(file) {
    const isSame = (byte) => byte < 0x80 && byte !== 0x1b;
    let at = 0;
    for await (const piece of pieces(file, { isStopped: () => false, progress() {} })) {
        const found = piece.findIndex((byte) => !isSame(byte));
        if (found >= 0) {
            return at + found;
        }
        at += piece.length;
    }
    return 0;
}

// The beginning of the line that stands at an offset, if it is near; else that offset.
function lineStart(bytes, at, encoding) {
    for (let back = at; back > 0; --back) {
        if (isLineEnd(bytes, back, encoding)) {
            return back;
        }
    }
    return at;
}

function lastLineEnd(bytes, from, encoding) {
    for (let at = bytes.length; at > from; --at) {
        if (isLineEnd(bytes, at, encoding)) {
            return at;
        }
    }
    return bytes.length;
}
