// Finds out what each file is in.
import { tell } from "./dom.js";
import { ask } from "./engine.js";
import { changed, items } from "./items.js";
import { run } from "./jobs.js";
import { count, say } from "./strings.js";

export function look() {
    return run(async (signal, progress) => {
        const waiting = items.filter((item) => item.state === "waiting");
        let done = 0;
        for (const item of waiting) {
            const words = say("progressLooking", count(done + 1), count(waiting.length));
            item.state = "looking";
            try {
                Object.assign(
                    item,
                    await ask("detect", { file: item.file }, {
                        signal,
                        progress: (share) => {
                            item.share = share;
                            progress(words, (done + share) / waiting.length);
                            changed(item);
                        },
                    }),
                    { state: "ready" },
                );
            } catch (error) {
                if (error.name === "AbortError") {
                    item.state = "waiting";
                    throw error;
                }
                Object.assign(item, { state: "failed", error: error.message });
            } finally {
                item.share = 0;
                changed(item);
            }
            ++done;
        }
        if (done > 0) {
            tell(say("looked", count(done)));
        }
    });
}
