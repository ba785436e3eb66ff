// A file of 100 MB: the page stays smooth, and memory does not grow with the file. Time is that of the processor, so that a busy
// machine does not fail the test.
import assert from "node:assert/strict";
import { closeSync, mkdtempSync, openSync, readFileSync, rmSync, statSync, writeSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { launch, open, saved, serve } from "./browser.js";
import { encode } from "./texts.js";

const longestTask = 50; // ms
const mostMemory = 200; // MB more than before

function largeFile(folder) {
    const path = join(folder, "large.log");
    const text = "2026-04-02 01:00:07 INFO [server-12] GET /index.html 200 in 12 ms: 処理が完了しました\r\n";
    const line = encode(text, "CP932");
    const linesAtOnce = 10_000;
    const block = Buffer.concat(Array(linesAtOnce).fill(line));
    const file = openSync(path, "w");
    let lines = 0;
    for (; lines * line.length < 100e6; lines += linesAtOnce) {
        writeSync(file, block);
    }
    writeSync(file, Buffer.from([0x81, 0x20, 0x0a]));
    closeSync(file);
    return { path, expected: lines * Buffer.byteLength(text) + 5 }; // U+FFFD, a space and a line end
}

async function memory(session) {
    const { processInfo } = await session.send("SystemInfo.getProcessInfo");
    const sizes = processInfo.filter(({ type }) => type === "renderer").map(({ id }) => Number(readFileSync(`/proc/${id}/status`, "utf8").match(/VmHWM:\s+(\d+)/)[1]) / 1024);
    return Math.max(...sizes);
}

function longest(trace) {
    const { traceEvents } = JSON.parse(trace);
    const isMain = new Set(traceEvents.filter(({ name, args }) => name === "thread_name" && args.name === "CrRendererMain").map(({ pid, tid }) => `${pid} ${tid}`));
    const tasks = traceEvents.filter(({ name, pid, tid }) => name === "RunTask" && isMain.has(`${pid} ${tid}`));
    assert.ok(tasks.length > 100);
    return Math.max(...tasks.map(({ tdur = 0 }) => tdur)) / 1000;
}

test("100 MB are detected, looked through and converted", async (context) => {
    const folder = mkdtempSync(join(tmpdir(), "page-test-"));
    context.after(() => rmSync(folder, { recursive: true }));
    const { path, expected } = largeFile(folder);
    const { server, url } = await serve("site");
    const browser = await launch();
    const page = await open(browser, url);
    page.setDefaultTimeout(120_000);
    const session = await browser.newBrowserCDPSession();
    const before = await memory(session);

    await browser.startTracing(page, { categories: ["disabled-by-default-devtools.timeline"] });
    const begin = performance.now();
    const told = (what) => context.diagnostic(`${what} after ${((performance.now() - begin) / 1000).toFixed(1)} s`);
    await page.setInputFiles("#files-input", path);
    await page.locator("#list .chip", { hasText: "Shift_JIS" }).waitFor();
    told("detected");
    await page.getByText("1 in all").waitFor();
    told("looked through");
    const { path: result } = await saved(page, () => page.click("#save-one"));
    told("converted");
    await page.locator(".places button").click();
    await page.locator(".hex b", { hasText: "81" }).waitFor();
    const task = longest(await browser.stopTracing());
    const grown = (await memory(session)) - before;
    const size = statSync(result).size;

    await page.click("#save-one");
    await page.click("#cancel");
    await page.getByText("Stopped").waitFor({ state: "attached" });

    await browser.close();
    server.close();
    context.diagnostic(`longest task ${task.toFixed(0)} ms, memory grew by ${grown.toFixed(0)} MB`);
    assert.ok(task < longestTask, `a task took ${task} ms`);
    assert.ok(grown < mostMemory, `memory grew by ${grown} MB`);
    assert.equal(size, expected);
});
