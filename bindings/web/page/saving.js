// Converts files and hands them to the browser to save.
import { make, tell } from "./dom.js";
import { ask } from "./engine.js";
import { changed, encodingOf, fileName, items } from "./items.js";
import { run } from "./jobs.js";
import { count, say } from "./strings.js";
import { target } from "./target.js";
import { zip } from "./zip.js";

export function save(blob, name) {
    const url = URL.createObjectURL(blob);
    make("a", { href: url, download: name }).click();
    setTimeout(() => URL.revokeObjectURL(url), 60_000);
}

async function convert(item, signal, progress) {
    item.state = "converting";
    changed(item);
    try {
        const made = await ask("convert", { file: item.file, options: target(encodingOf(item)) }, {
            signal,
            progress: (share) => {
                item.share = share;
                progress(share);
                changed(item);
            },
        });
        Object.assign(item, { state: "converted", losses: made.losses, lossCount: made.lossCount });
        return made;
    } catch (error) {
        if (error.name === "AbortError") {
            item.state = "ready";
            throw error;
        }
        // What the library refuses is a loss; the rest is the file's.
        Object.assign(item, error.name === "JkcError" ? { state: "leftOut" } : { state: "failed", error: error.message });
        return null;
    } finally {
        item.share = 0;
        changed(item);
    }
}

export function saveOne(item) {
    return run(async (signal, progress) => {
        const made = await convert(item, signal, (share) => progress(say("progressConverting", 1, 1), share));
        if (made) {
            save(made.blob, fileName(item));
        }
        tell(made ? say("saved", 1) : say("savedSome", 0, 1));
    });
}

export function saveAll() {
    return run(async (signal, progress) => {
        const entries = [];
        const ready = items.filter((item) => item.detection && encodingOf(item));
        for (const [done, item] of ready.entries()) {
            const words = say("progressConverting", count(done + 1), count(ready.length));
            const made = await convert(item, signal, (share) => progress(words, (done + share) / ready.length));
            if (made) {
                entries.push({ path: item.path, blob: made.blob, crc: made.crc, time: item.file.lastModified });
            }
        }
        if (entries.length === 0) {
            tell(say("nothingToSave"));
            return;
        }
        save(zip(entries), "converted.zip");
        const left = items.length - entries.length;
        tell(left ? say("savedSome", count(entries.length), count(left)) : say("saved", count(entries.length)));
    });
}
