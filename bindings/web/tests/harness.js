// What the tests use of Node and of browsers alike.

const inHex = (bytes) => [...bytes].map((byte) => byte.toString(16)).join(" ");
const shown = (value) => JSON.stringify(value, (_, part) => (part instanceof Uint8Array ? inHex(part) : part));

export function equal(found, wanted, what = "") {
    if (shown(found) !== shown(wanted)) {
        throw new Error(`${what}: ${shown(found).slice(-2000)} instead of ${shown(wanted).slice(-2000)}`);
    }
}

/** The error with which a function fails, or a promise. */
export async function failure(run) {
    try {
        await run();
    } catch (error) {
        return error;
    }
    throw new Error("nothing has failed");
}

/** All that a stream gives, as one array. */
export async function collected(stream) {
    const chunks = [];
    for (const reader = stream.getReader(); ;) {
        const { done, value } = await reader.read();
        if (done) {
            return Uint8Array.from(chunks.flatMap((chunk) => [...chunk]));
        }
        chunks.push(value);
    }
}

/** A stream of `count` times the same chunk. */
export function streamOf(chunk, count = 1) {
    return new ReadableStream({
        pull(controller) {
            count-- > 0 ? controller.enqueue(chunk) : controller.close();
        },
    });
}
