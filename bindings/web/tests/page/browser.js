// The page in a headless Chromium, served from this machine. What it asks for is noted.
import { createReadStream, existsSync } from "node:fs";
import { createServer } from "node:http";
import { extname, join } from "node:path";
import { chromium } from "playwright-core";

const types = { ".html": "text/html", ".js": "text/javascript", ".css": "text/css", ".svg": "image/svg+xml", ".wasm": "application/wasm" };

export async function serve(folder) {
    const server = createServer((request, response) => {
        const { pathname } = new URL(request.url, "http://localhost");
        const path = join(folder, pathname.endsWith("/") ? `${pathname}index.html` : pathname);
        if (!existsSync(path)) {
            response.writeHead(404).end();
            return;
        }
        response.writeHead(200, { "content-type": types[extname(path)] });
        createReadStream(path).pipe(response);
    });
    await new Promise((resolve) => server.listen(0, "127.0.0.1", resolve));
    return { server, url: `http://127.0.0.1:${server.address().port}/` };
}

export const launch = () => chromium.launch({ executablePath: process.env.CHROMIUM ?? "/usr/bin/chromium", args: ["--no-sandbox"] });

export const failures = [];
export const requests = [];

export async function open(browser, url, options = {}) {
    const context = await browser.newContext({ locale: "en-US", viewport: { width: 1280, height: 900 }, ...options });
    context.on("request", (request) => requests.push(request.url()));
    const page = await context.newPage();
    page.setDefaultTimeout(10_000);
    page.on("pageerror", (error) => failures.push(error.stack));
    page.on("console", (message) => message.type() === "error" && failures.push(message.text()));
    await page.goto(url);
    await page.locator("body.ready").waitFor();
    return page;
}

/** Drops files and folders of the disk, as a hand would. */
export async function drop(page, paths) {
    const session = await page.context().newCDPSession(page);
    const box = await page.locator("#drop").boundingBox();
    const at = { x: box.x + box.width / 2, y: box.y + box.height / 2, data: { items: [], files: paths, dragOperationsMask: 1 } };
    for (const type of ["dragEnter", "dragOver", "drop"]) {
        await session.send("Input.dispatchDragEvent", { type, ...at });
    }
}

/** What is saved when `act` is done: {name, path}. */
export async function saved(page, act) {
    const [download] = await Promise.all([page.waitForEvent("download", { timeout: 60_000 }), act()]);
    return { name: download.suggestedFilename(), path: await download.path() };
}
