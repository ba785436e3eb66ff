// Files that are dropped or chosen, also in folders.
import { find } from "./dom.js";

async function* walk(entry, path) {
    try {
        if (entry.isFile) {
            yield { path, file: await new Promise((resolve, reject) => entry.file(resolve, reject)) };
            return;
        }
        const reader = entry.createReader();
        for (;;) {
            // Browsers hand out so many at a time.
            const some = await new Promise((resolve, reject) => reader.readEntries(resolve, reject));
            if (some.length === 0) {
                return;
            }
            for (const inner of some) {
                yield* walk(inner, `${path}/${inner.name}`);
            }
        }
    } catch (error) {
        yield { path, error: error.message };
    }
}

async function takeDropped(transfer, take) {
    // The list is gone once this function has waited.
    const entries = [...transfer.items].filter((item) => item.kind === "file").map((item) => item.webkitGetAsEntry?.() ?? item.getAsFile());
    let found = [];
    for (const entry of entries) {
        if (entry instanceof File) {
            found.push({ path: entry.name, file: entry });
            continue;
        }
        for await (const one of walk(entry, entry.name)) {
            found.push(one);
            if (found.length === 500) {
                take(found);
                found = [];
            }
        }
    }
    take(found);
}

/** Calls `take` with [{path, file | error}]. */
export function startIntake(take) {
    for (const [button, input] of [["choose-files", "files-input"], ["choose-folder", "folder-input"]]) {
        find(button).onclick = () => find(input).click();
        find(input).onchange = ({ target }) => {
            take([...target.files].map((file) => ({ path: file.webkitRelativePath || file.name, file })));
            target.value = "";
        };
    }

    let depth = 0;
    const mark = (change) => {
        depth = Math.max(0, depth + change);
        document.body.classList.toggle("dropping", depth > 0);
    };
    const hasFiles = (event) => event.dataTransfer?.types.includes("Files");
    document.addEventListener("dragenter", (event) => hasFiles(event) && mark(1));
    document.addEventListener("dragleave", (event) => hasFiles(event) && mark(-1));
    document.addEventListener("dragover", (event) => hasFiles(event) && event.preventDefault());
    document.addEventListener("drop", (event) => {
        if (hasFiles(event)) {
            event.preventDefault();
            mark(-depth);
            takeDropped(event.dataTransfer, take);
        }
    });
}
