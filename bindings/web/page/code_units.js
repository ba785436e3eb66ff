// Which bytes of a text become which of its code units. A converter keeps output back, so it cannot be watched byte by byte; but
// the output of the first bytes tells how many code units they are, with U+FFFD for a character that is cut. Short segments,
// which end at line ends, make that quick.
const segmentSize = 256;
const lineFeed = 10;
const utf16 = new TextDecoder("utf-16le", { ignoreBOM: true });

// In UTF-16 either byte order has the line feed beside a NUL byte; other encodings have that byte in no other character.
export function isLineEnd(bytes, at, encoding) {
    if (!encoding.startsWith("UTF-16")) {
        return bytes[at - 1] === lineFeed;
    }
    return at % 2 === 0 && ((bytes[at - 1] === lineFeed && bytes[at - 2] === 0) || (bytes[at - 2] === lineFeed && bytes[at - 1] === 0));
}

export class CodeUnits {
    #segments = [{ start: 0, units: 0 }];

    constructor(jkc, bytes, encoding) {
        this.convert = (from, to) => jkc.convert(bytes.subarray(from, to), { from: encoding, to: "UTF-16LE", onLoss: "replace", maxLosses: 0 }).data;
        this.size = bytes.length;
        // ISO-2022-JP may carry a set that is selected into the next line.
        for (let at = segmentSize; at < bytes.length && !encoding.startsWith("ISO-2022"); ++at) {
            const { start, units } = this.#segments.at(-1);
            if (at - start >= segmentSize && isLineEnd(bytes, at, encoding)) {
                this.#segments.push({ start: at, units: units + this.convert(start, at).length / 2 });
            }
        }
    }

    get text() {
        return utf16.decode(this.convert(0, this.size));
    }

    /** How many code units so many bytes are. */
    before(offset) {
        const { start, units } = this.#segments.findLast((segment) => segment.start <= offset);
        return units + this.convert(start, offset).length / 2;
    }

    /** The offset of the byte with which a code unit begins. */
    startOf(unit) {
        const at = this.#segments.findLastIndex((segment) => segment.units <= unit);
        let low = this.#segments[at].start;
        let high = this.#segments[at + 1]?.start ?? this.size;
        // The fewest bytes that give it, if only as U+FFFD, end with its first byte.
        while (low < high) {
            const middle = (low + high) >> 1;
            if (this.before(middle) > unit) {
                high = middle;
            } else {
                low = middle + 1;
            }
        }
        return this.before(low) > unit ? low - 1 : this.size;
    }
}
