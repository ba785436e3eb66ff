// A window of a file: some of its text, and what of that would be lost; which bytes each of its characters comes from.
import { pieces } from "./pieces.js";

export const windowSize = 16 << 10;
// So much in front of a window is read as well: it brings the converter into step, and into the set that ISO-2022-JP has
// selected.
const runUp = 4096;
const lineFeed = 10;
const utf16 = new TextDecoder("utf-16le", { ignoreBOM: true });

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
    const isWide = options.from.startsWith("UTF-16");
    const start = near <= 0 ? 0 : before + behindLineFeed(bytes, Math.min(near - before, bytes.length), isWide);
    if (before + bytes.length < file.size) {
        bytes = bytes.subarray(0, lastLineEnd(bytes, start - before, isWide));
    }
    const end = before + bytes.length;

    const units = (offset) => unitsBefore(jkc, bytes, options.from, offset - before);
    const skip = units(start);
    const text = utf16.decode(toUtf16(jkc, bytes, options.from).data).slice(skip);
    const marks = jkc
        .convert(bytes, { ...options, onLoss: "replace", maxLosses: bytes.length })
        .losses.map((loss) => ({ ...loss, offset: before + loss.offset }))
        .filter(({ kind, offset }) => offset >= start && (kind !== "truncated" || end === file.size))
        .map((loss) => ({ from: units(loss.offset) - skip, to: units(loss.offset + loss.length) - skip, loss }))
        .map(({ from, to, loss }) => ({ from, to: Math.max(from + 1, to), loss }));
    return { start, end, size: file.size, text, marks, bytes, before, skip };
}

/** The bytes of a window that its character at `index` comes from: {from, to}, offsets in the file. */
export function findPlace(jkc, { shown: { bytes, before, skip }, index, encoding }) {
    // The fewest bytes that give more code units than so many.
    const bytesFor = (units) => {
        let low = 0;
        let high = bytes.length;
        while (low < high) {
            const middle = (low + high) >> 1;
            if (unitsBefore(jkc, bytes, encoding, middle) > units) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        return low;
    };
    const unit = skip + index;
    return { from: before + (unit === 0 ? 0 : bytesFor(unit - 1)), to: before + bytesFor(unit) };
}

function toUtf16(jkc, bytes, from) {
    return jkc.convert(bytes, { from, to: "UTF-16LE", onLoss: "replace", maxLosses: bytes.length });
}

// How many code units so many bytes are; a character that is not whole is none.
function unitsBefore(jkc, bytes, from, end) {
    const { data, losses } = toUtf16(jkc, bytes.subarray(0, end), from);
    return data.length / 2 - (losses.at(-1)?.kind === "truncated" ? 1 : 0);
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
function behindLineFeed(bytes, at, isWide) {
    for (let back = at; back > 0; --back) {
        if (isLineFeed(bytes, back - 1, isWide)) {
            return isWide ? back + (back % 2) : back;
        }
    }
    return at;
}

function lastLineEnd(bytes, from, isWide) {
    for (let at = bytes.length; at > from; --at) {
        if (isLineFeed(bytes, at - 1, isWide)) {
            return isWide ? at + (at % 2) : at;
        }
    }
    return bytes.length;
}

// In UTF-16 either byte order has the line feed beside a NUL byte; other encodings have that byte in no other character.
function isLineFeed(bytes, at, isWide) {
    if (bytes[at] !== lineFeed) {
        return false;
    }
    return !isWide || (at % 2 === 0 ? bytes[at + 1] === 0 : bytes[at - 1] === 0);
}
