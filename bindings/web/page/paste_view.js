// The box for garbled text that is pasted.
import { find, make } from "./dom.js";
import { ask } from "./engine.js";
import { mendingView } from "./mending_view.js";
import { say } from "./strings.js";

let timer;

async function look() {
    const { value } = find("mend-text");
    const result = find("mend-result");
    if (value.trim() === "") {
        result.replaceChildren();
        return;
    }
    const mending = await ask("mend", { text: value });
    if (value !== find("mend-text").value) {
        return; // it has changed meanwhile
    }
    if (mending) {
        result.replaceChildren(make("h3", {}, say("mendProposal")), ...mendingView(mending, null));
    } else {
        result.replaceChildren(make("p", { className: "faint" }, say("mendNone")));
    }
}

export function startPaste() {
    find("mend-text").oninput = () => {
        clearTimeout(timer);
        timer = setTimeout(look, 150);
    };
}

export const redrawPaste = look;
