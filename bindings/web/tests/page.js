// Runs the tests in a browser and sends what comes of each to tests/chromium.js.
import behaviour from "./behaviour.js";
import cases from "./cases.js";
import { collected, equal } from "./harness.js";

const send = (outcome) => fetch("/report", { method: "POST", body: JSON.stringify(outcome) });
let [passed, failed] = [0, 0];
addEventListener("error", ({ message }) => send({ line: message, failed: 1 }));
addEventListener("unhandledrejection", ({ reason }) => send({ line: String(reason), failed: 1 }));

const { load } = await import("/package/jkc.js");
const tests = [];
const context = {
    test: (name, run) => tests.push([name, run]),
    jkc: await load(),
    read: async (name) => (await fetch(`/data/${name}`)).text(),
    loadAnew: async () => (await import("/package/jkc.js?anew")).load(await fetch("/package/jkc.wasm")),
};
cases(context);
behaviour(context);
context.test("a file does not come through a stream", async () => {
    const file = new File([context.jkc.encode("日本語\n", "Shift_JIS")], "text");
    const output = file.stream().pipeThrough(context.jkc.convertStream({ from: "Shift_JIS", to: "UTF-8" }));
    equal(new TextDecoder().decode(await collected(output)), "日本語\n");
});
context.test("a worker has no library", async () => {
    const source = `import { load } from "${location.origin}/package/jkc.js";
        postMessage((await load()).decode(Uint8Array.of(0x82, 0xa0)));`;
    const worker = new Worker(URL.createObjectURL(new Blob([source], { type: "text/javascript" })), { type: "module" });
    const text = await new Promise((resolve, reject) => {
        worker.onmessage = ({ data }) => resolve(data);
        worker.onerror = ({ message }) => reject(new Error(message));
    });
    worker.terminate();
    equal(text, "あ");
});

for (const [name, run] of tests) {
    try {
        await run();
        ++passed;
        await send({ line: `ok - ${name}` });
    } catch (error) {
        ++failed;
        await send({ line: `not ok - ${name}: ${error.message}` });
    }
}
await send({ line: `${navigator.userAgent.match(/\w*Chrome\S*/)}: ${passed} passed, ${failed} failed`, failed });
