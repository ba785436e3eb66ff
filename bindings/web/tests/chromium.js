// Runs the tests in Chromium: serves them and the package (JKC_PACKAGE) on a port of this machine, opens the page that
// runs them, and prints what it sends back.
import { spawn } from "node:child_process";
import { mkdtemp, readFile, rm } from "node:fs/promises";
import { createServer } from "node:http";
import { tmpdir } from "node:os";
import { extname, join } from "node:path";
import { pathToFileURL } from "node:url";

const SECONDS = 120;
const folders = {
    package: pathToFileURL(`${process.env.JKC_PACKAGE}/`),
    tests: new URL("./", import.meta.url),
    data: new URL("../../../tests/data/", import.meta.url),
};
const types = { ".js": "text/javascript", ".wasm": "application/wasm", ".html": "text/html", ".txt": "text/plain" };

async function bodyOf(request) {
    let text = "";
    for await (const chunk of request.setEncoding("utf8")) {
        text += chunk;
    }
    return text;
}

let finish;
const finished = new Promise((resolve) => {
    finish = resolve;
});
const server = createServer(async (request, response) => {
    const [, folder, name] = new URL(request.url, "http://localhost").pathname.split("/");
    if (request.method === "POST") {
        const { line, failed } = JSON.parse(await bodyOf(request));
        console.log(line);
        response.end();
        failed === undefined || finish(failed === 0);
        return;
    }
    try {
        const body = await readFile(new URL(name, folders[folder]));
        response.writeHead(200, { "Content-Type": types[extname(name)] ?? "application/octet-stream" }).end(body);
    } catch {
        response.writeHead(404).end();
    }
});
await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));

const profile = await mkdtemp(join(tmpdir(), "jkc-chromium-"));
const browser = spawn(process.env.CHROMIUM ?? "chromium", [
    "--headless", "--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run",
    "--disable-background-networking", "--disable-component-update", "--disable-sync", "--disable-dev-shm-usage", `--user-data-dir=${profile}`,
    `http://127.0.0.1:${server.address().port}/tests/page.html`,
], { stdio: "ignore" });
const ended = new Promise((resolve) => {
    browser.on("exit", resolve);
});
browser.on("error", (error) => (console.log(error.message), finish(false)));
ended.then((code) => (console.log(`chromium has ended with ${code}`), finish(false)));
const timer = setTimeout(() => (console.log(`not done in ${SECONDS} seconds`), finish(false)), SECONDS * 1000);
const passed = await finished;
clearTimeout(timer);
process.exitCode = passed ? 0 : 1;
if (browser.exitCode === null && browser.pid !== undefined) {
    console.log = () => {};
    browser.kill();
    await ended;
}
server.closeAllConnections?.();
server.close();
await rm(profile, { recursive: true, force: true, maxRetries: 5, retryDelay: 200 });
