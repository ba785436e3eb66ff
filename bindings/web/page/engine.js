// Asks the worker. Each request is a promise; it can tell its progress, and be stopped by an AbortSignal.
const worker = new Worker("worker.js", { type: "module" });
const requests = new Map();
let last = 0;

worker.onmessage = ({ data: { id, progress, result, error } }) => {
    const request = requests.get(id);
    if (!request) {
        return;
    }
    if (progress !== undefined) {
        request.progress?.(progress);
        return;
    }
    requests.delete(id);
    if (error) {
        request.reject(Object.assign(new Error(error.message), { name: error.name }));
    } else {
        request.resolve(result);
    }
};

worker.onerror = (event) => {
    for (const request of requests.values()) {
        request.reject(new Error(event.message || "worker"));
    }
    requests.clear();
};

export function ask(task, values = {}, { progress, signal } = {}) {
    return new Promise((resolve, reject) => {
        signal?.throwIfAborted();
        const id = ++last;
        requests.set(id, { resolve, reject, progress });
        signal?.addEventListener("abort", () => {
            if (requests.delete(id)) {
                worker.postMessage({ task: "stop", values: { id } });
                reject(signal.reason);
            }
        });
        worker.postMessage({ id, task, values });
    });
}
