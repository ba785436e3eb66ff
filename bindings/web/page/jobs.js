// The long jobs, one after another: looking at files, converting them. Tells how far they are; they can be stopped.
import { find, tell } from "./dom.js";
import { say } from "./strings.js";

let queue = Promise.resolve();
let controller = null;

/** Runs work(signal, progress) when the jobs before it are through; progress(text, share). What a stopped job throws is told. */
export function run(work) {
    queue = queue.then(async () => {
        controller = new AbortController();
        const bar = find("progress-bar");
        const text = find("progress-text");
        try {
            await work(controller.signal, (words, share) => {
                find("progress").hidden = false;
                text.textContent = words;
                bar.value = share;
            });
        } catch (error) {
            tell(error.name === "AbortError" ? say("stopped") : error.message);
        } finally {
            find("progress").hidden = true;
            controller = null;
        }
    });
    return queue;
}

export const stop = () => controller?.abort();

export function startJobs() {
    find("cancel").onclick = stop;
}
