// The files that the page knows, and what it knows of each:
// {path, file, error, state, detection, mending, from, share, losses, lossCount}
// state: waiting, looking, ready, converting, converted, failed, leftOut. `from`: what the user reads it as.
export const items = [];
const paths = new Set();
const listeners = [];

/** Calls back with the item that has changed, or null when the list has. */
export const whenChanged = (listener) => listeners.push(listener);

export function changed(item = null) {
    for (const listener of listeners) {
        listener(item);
    }
}

export function add(found) {
    for (const { path, file, error } of found) {
        const item = { path: unusedPath(path), file, error, state: error ? "failed" : "waiting" };
        paths.add(item.path);
        items.push(item);
    }
    changed();
}

export function clear() {
    items.length = 0;
    paths.clear();
    changed();
}

/** The encoding that an item is read in; null where that is open, or it is no text. */
export function encodingOf(item) {
    return item.from ?? (item.detection?.kind === "encoding" ? item.detection.encoding : null);
}

export const fileName = ({ path }) => path.slice(path.lastIndexOf("/") + 1);

function unusedPath(path) {
    const [, stem, ending] = path.match(/^(.*?)(\.[^./]*)?$/s);
    let unused = path;
    for (let number = 2; paths.has(unused); ++number) {
        unused = `${stem} (${number})${ending ?? ""}`;
    }
    return unused;
}
