// Writes a zip archive of blobs without copying or compressing them: the archive is a blob of these blobs and what stands
// between them, so its size does not matter. Debian's JSZip would hold it all in memory, and has no Zip64.
const encoder = new TextEncoder();

// Fields are [bytes, value], lowest byte first.
function fields(...list) {
    const view = new DataView(new ArrayBuffer(list.reduce((sum, [size]) => sum + size, 0)));
    let at = 0;
    for (const [size, value] of list) {
        for (let byte = 0; byte < size; ++byte) {
            view.setUint8(at + byte, Math.floor(value / 2 ** (8 * byte)) % 256);
        }
        at += size;
    }
    return new Uint8Array(view.buffer);
}

function dosTime(milliseconds) {
    const date = new Date(milliseconds);
    const year = Math.min(Math.max(date.getFullYear(), 1980), 2107);
    const time = (date.getHours() << 11) | (date.getMinutes() << 5) | (date.getSeconds() >> 1);
    return [time, ((year - 1980) << 9) | ((date.getMonth() + 1) << 5) | date.getDate()];
}

const full16 = 0xffff;
const full32 = 0xffffffff;
const utf8Names = 0x0800;

/** What a zip archive of [{path, blob, crc, time}] consists of, one behind the other. */
export function zipParts(entries) {
    const parts = [];
    const directory = [];
    let offset = 0;
    for (const { path, blob, crc, time } of entries) {
        const name = encoder.encode(path);
        const size = blob.size;
        const [clock, day] = dosTime(time);
        const isLong = size >= full32 || offset >= full32;
        const version = isLong ? 45 : 20;
        const shown = isLong ? full32 : size;
        const common = [[2, version], [2, utf8Names], [2, 0], [2, clock], [2, day], [4, crc], [4, shown], [4, shown], [2, name.length]];
        const local = fields([4, 0x04034b50], ...common, [2, isLong ? 20 : 0]);
        const localExtra = isLong ? fields([2, 1], [2, 16], [8, size], [8, size]) : fields();
        parts.push(local, name, localExtra, blob);
        directory.push(
            fields([4, 0x02014b50], [2, version], ...common, [2, isLong ? 28 : 0], [2, 0], [2, 0], [2, 0], [4, 0], [4, isLong ? full32 : offset]),
            name,
            isLong ? fields([2, 1], [2, 24], [8, size], [8, size], [8, offset]) : fields(),
        );
        offset += local.length + name.length + localExtra.length + size;
    }

    const length = directory.reduce((sum, part) => sum + part.length, 0);
    const count = entries.length;
    if (count >= full16 || offset + length >= full32) {
        directory.push(
            fields([4, 0x06064b50], [8, 44], [2, 45], [2, 45], [4, 0], [4, 0], [8, count], [8, count], [8, length], [8, offset]),
            fields([4, 0x07064b50], [4, 0], [8, offset + length], [4, 1]),
        );
    }
    const shownCount = Math.min(count, full16);
    directory.push(
        fields([4, 0x06054b50], [2, 0], [2, 0], [2, shownCount], [2, shownCount], [4, Math.min(length, full32)], [4, Math.min(offset, full32)], [2, 0]),
    );
    return [...parts, ...directory];
}

export const zip = (entries) => new Blob(zipParts(entries), { type: "application/zip" });
