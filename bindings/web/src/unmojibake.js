import { check } from "./error.js";

const STEPS = 4;

/** Proposes how a text that was decoded wrongly was meant; null where there is nothing to mend, or no way to. */
export function unmojibake(native, text) {
    const bytes = new TextEncoder().encode(text);
    const at = native.callInto(null, "web_allocate", bytes.length + 1);
    native.bytes(at, bytes.length).set(bytes);
    const row = native.call("web_unmojibake", at, bytes.length);
    native.call("web_free", at);
    const [status, mended, length, confidence, lost, count, ...steps] = native.numbers(row, 6 + 2 * STEPS);
    check(status);
    if (count === 0) {
        return null;
    }
    const nameOf = (encoding) => native.string(native.call("web_misread", encoding));
    const mending = { text: new TextDecoder().decode(native.bytes(mended, length)), confidence, lost, steps: [] };
    native.call("web_free", mended);
    for (let i = 0; i < count; ++i) {
        mending.steps.push({ was: nameOf(steps[2 * i]), readAs: nameOf(steps[2 * i + 1]) });
    }
    return mending;
}
