// Everything that takes time happens here, so that the page never waits. Each request is answered under its number; between
// two pieces of a file other requests get their turn.
import { load } from "./jkc/jkc.js";
import { convertFile, checkFile } from "./conversion.js";
import { detectFile } from "./detection.js";
import { findPlace, readWindow } from "./window.js";
import { mendFile } from "./mend_file.js";

const loaded = load();
const stopped = new Set();
const tasks = {
    encodings: (jkc) => jkc.encodings.map(({ name, type, label, aliases }) => ({ name, type, label, aliases })),
    detect: detectFile,
    check: checkFile,
    convert: convertFile,
    window: readWindow,
    place: findPlace,
    mend: (jkc, { text }) => jkc.unmojibake(text),
    mendFile,
};

onmessage = async ({ data: { id, task, values } }) => {
    if (task === "stop") {
        stopped.add(values.id);
        return;
    }
    let told = 0;
    const job = {
        isStopped: () => stopped.has(id),
        progress(share) {
            if (performance.now() - told > 80) {
                told = performance.now();
                postMessage({ id, progress: share });
            }
        },
    };
    try {
        postMessage({ id, result: await tasks[task](await loaded, values, job) });
    } catch (error) {
        postMessage({ id, error: { name: error.name, message: error.message } });
    }
    stopped.delete(id);
};
