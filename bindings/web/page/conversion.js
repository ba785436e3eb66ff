// Converts a file piece by piece. What comes out is handed to the browser as it grows, which keeps large blobs on the disk.
import { pieces } from "./pieces.js";
import { Crc32 } from "./crc32.js";

const partSize = 4 << 20;

class Parts {
    parts = [];
    pending = [];
    size = 0;
    crc = new Crc32();

    put(bytes) {
        this.crc.update(bytes);
        this.pending.push(bytes);
        this.size += bytes.length;
        if (this.size >= partSize) {
            this.flush();
        }
    }

    flush() {
        this.parts.push(new Blob(this.pending));
        this.pending = [];
        this.size = 0;
    }

    finish() {
        this.flush();
        return { blob: new Blob(this.parts), crc: this.crc.value };
    }
}

async function feedAll(jkc, { file, options }, job, put) {
    const converter = jkc.createConverter(options);
    try {
        for await (const piece of pieces(file, job)) {
            put(converter.feed(piece));
        }
        put(converter.finish());
        return { losses: converter.losses, lossCount: converter.lossCount };
    } finally {
        converter.free();
    }
}

/** What a conversion would lose. */
export function checkFile(jkc, values, job) {
    return feedAll(jkc, values, job, () => {});
}

/** {blob, crc, losses, lossCount} */
export async function convertFile(jkc, values, job) {
    const parts = new Parts();
    const lost = await feedAll(jkc, values, job, (bytes) => parts.put(bytes));
    return { ...parts.finish(), ...lost };
}
