// A proposal how garbled text may be mended, with the way it was broken.
import { make, tell } from "./dom.js";
import { say } from "./strings.js";

/** Elements that show a mending; `action` is a button beside the one that copies, or null. */
export function mendingView(mending, action) {
    const how = mending.steps.map(({ was, readAs }) => say("mendStep", was, readAs)).reverse().join(say("mendThen"));
    const facts = [say("mendHow", how), say("mendConfidence", mending.confidence), mending.lost ? say("mendLost", mending.lost) : null];
    const copy = make("button", {
        type: "button",
        onclick: async () => {
            const words = await navigator.clipboard.writeText(mending.text).then(() => say("mendCopied"), (error) => error.message);
            tell(words);
            copy.textContent = words;
        },
    }, say("mendCopy"));
    return [
        make("p", { className: "proposal", lang: "ja" }, mending.text),
        make("p", { className: "faint" }, facts.filter(Boolean).join(" · ")),
        make("p", { className: "buttons" }, copy, action),
    ];
}
