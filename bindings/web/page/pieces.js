// Reads a file in pieces, of which only one is in memory at a time.
const pieceSize = 1 << 20;

export async function* pieces(file, job) {
    for (let at = 0; at < file.size; at += pieceSize) {
        const piece = new Uint8Array(await file.slice(at, at + pieceSize).arrayBuffer());
        if (job.isStopped()) {
            throw new DOMException("stopped", "AbortError");
        }
        yield piece;
        job.progress(Math.min(1, (at + pieceSize) / file.size));
    }
}
