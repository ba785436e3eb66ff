// The checksum that zip archives hold, four bytes at a time.
const tables = [new Uint32Array(256), new Uint32Array(256), new Uint32Array(256), new Uint32Array(256)];
for (let byte = 0; byte < 256; ++byte) {
    let value = byte;
    for (let bit = 0; bit < 8; ++bit) {
        value = value & 1 ? (value >>> 1) ^ 0xedb88320 : value >>> 1;
    }
    tables[0][byte] = value;
}
for (let byte = 0; byte < 256; ++byte) {
    for (let table = 1; table < 4; ++table) {
        const value = tables[table - 1][byte];
        tables[table][byte] = (value >>> 8) ^ tables[0][value & 255];
    }
}

export class Crc32 {
    #state = -1;

    update(bytes) {
        const [one, two, three, four] = tables;
        let state = this.#state;
        let at = 0;
        for (; at + 4 <= bytes.length; at += 4) {
            state ^= bytes[at] | (bytes[at + 1] << 8) | (bytes[at + 2] << 16) | (bytes[at + 3] << 24);
            state = four[state & 255] ^ three[(state >>> 8) & 255] ^ two[(state >>> 16) & 255] ^ one[state >>> 24];
        }
        for (; at < bytes.length; ++at) {
            state = (state >>> 8) ^ one[(state ^ bytes[at]) & 255];
        }
        this.#state = state;
    }

    get value() {
        return ~this.#state >>> 0;
    }
}
