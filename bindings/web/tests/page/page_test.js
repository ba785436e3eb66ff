// The page as people use it: with the mouse, with keys alone, offline.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { cpSync, mkdirSync, mkdtempSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { createRequire } from "node:module";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { after, before, test } from "node:test";
import { drop, failures, launch, open, requests, saved, serve } from "./browser.js";
import { encode, file, files, lossy } from "./texts.js";

const axe = createRequire(import.meta.url).resolve("axe-core/axe.min.js");
let browser;
let site;

before(async () => {
    site = await serve("site");
    browser = await launch();
});

after(async () => {
    await browser.close();
    site.server.close();
});

const add = async (page, added) => {
    await page.setInputFiles("#files-input", added);
    await page.locator("#progress").waitFor({ state: "hidden" });
    await page.locator("#list .chip").nth(added.length - 1).waitFor();
};
const select = (page, name) => page.locator("#list button", { hasText: name }).click();
const hex = (page) => page.locator(".hex b").textContent();
const zipContent = (path) => JSON.parse(execFileSync("/usr/bin/python3", ["zip_content.py", path]));

test("axe finds nothing in both languages and colours, and nothing is wider than a phone", async () => {
    const page = await open(browser, site.url, { bypassCSP: true, reducedMotion: "reduce", viewport: { width: 360, height: 740 } });
    await page.addScriptTag({ path: axe });
    const look = async (state) => {
        for (const language of ["en", "ja"]) {
            await page.selectOption("#language", language);
            for (const theme of ["light", "dark"]) {
                await page.selectOption("#theme", theme);
                await page.locator(".places, .fine, .compare .line, .verdict.none, body:not(.working)").first().waitFor();
                const { violations } = await page.evaluate(() => globalThis.axe.run());
                assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.map(({ html }) => html)]), [], `${language} ${theme} ${state}`);
            }
            assert.equal(await page.evaluate(() => document.documentElement.scrollWidth), 360, state);
        }
    };
    await look("nothing");
    await add(page, files);
    await page.selectOption("#to", "Shift_JIS");
    for (const name of ["lossy", "short", "binary"]) {
        await select(page, name);
        await look(name);
    }
    await page.context().close();
});

test("a folder is dropped, and its files come converted in a zip", async (context) => {
    const folder = mkdtempSync(join(tmpdir(), "page-test-"));
    context.after(() => rmSync(folder, { recursive: true }));
    cpSync("examples/archive", join(folder, "古い/archive"), { recursive: true });
    mkdirSync(join(folder, "古い/empty"));
    const chapter = encode("これは章です：", "CP932");
    for (let number = 0; number < 120; ++number) {
        writeFileSync(join(folder, `古い/${number}.txt`), Buffer.concat([chapter, Buffer.from(`${number}`)]));
    }
    const page = await open(browser, site.url);
    await drop(page, [join(folder, "古い")]);
    await page.getByText("124 files", { exact: true }).waitFor();
    await page.locator("#progress").waitFor({ state: "hidden" });
    await page.selectOption("#to", "UTF-16LE");
    await page.check("#bom");
    await page.selectOption("#eol", "crlf");
    const { name, path } = await saved(page, () => page.click("#save-all"));
    assert.equal(name, "converted.zip");
    const content = zipContent(path);
    const text = (member) => Buffer.from(content[member], "base64").toString("utf16le");
    assert.equal(Object.keys(content).length, 122); // neither the mixed log nor the picture
    assert.equal(text("古い/7.txt"), "\ufeffこれは章です：7");
    assert.equal(text("古い/archive/notes.txt"), `\ufeff${readFileSync("examples/archive/notes.txt", "utf8").replaceAll("\n", "\r\n")}`);
    assert.match(await page.locator("#told").textContent(), /122 saved, 2 left out/);

    await page.click("#list-on");
    assert.equal(await page.locator("#list li").count(), 24);
    await page.context().close();
});

test("what is lost is marked in place, and listed", async () => {
    const page = await open(browser, site.url);
    await add(page, files.slice(0, 3));
    assert.equal(await page.locator(".losses .fine").count(), 1);
    await page.selectOption("#to", "Shift_JIS");
    assert.equal(await page.locator(".losses .alarm").textContent(), "15 in all");
    assert.deepEqual(await page.locator(".line >> nth=0 >> mark").allTextContents(), ["𠮟", "鷗", "🍣"]);
    await page.locator(".places button").nth(1).click();
    assert.equal(await page.locator(".hex b").textContent(), "E9 B7 97");
    assert.match(await page.locator("#told").textContent(), /鷗, not in Shift_JIS, U\+9DD7/);

    await page.selectOption("#on-loss", "escape");
    const { path } = await saved(page, () => page.click("#save-one"));
    assert.equal(encode(lossy.repeat(3).replace(/[𠮟鷗🍣ñé]/gu, (lost) => `&#x${lost.codePointAt(0).toString(16).toUpperCase()};`), "CP932").compare(readFileSync(path)), 0);
    await page.selectOption("#on-loss", "stop");
    await page.click("#save-one");
    await page.getByText("left out", { exact: false }).first().waitFor();

    await select(page, "damaged");
    await page.getByText("2 in all").waitFor();
    assert.deepEqual(await page.locator(".text mark").allTextContents(), ["\ufffd", "\ufffd"]);
    await page.context().close();
});

test("pointing and arrow keys show the bytes of a character", async () => {
    const page = await open(browser, site.url);
    const line = "ab漢字𠮷かな\n";
    const rows = [
        ["UTF-8", "E6 BC A2", "F0 A0 AE B7", "E3 81 AA"],
        ["UTF-16LE", "22 6F", "42 D8 B7 DF", "6A 30"],
        ["CP932", "8A BF", null, "82 C8"],
        ["EUC-JP", "B4 C1", null, "A4 CA"],
        ["ISO-2022-JP", "1B 24 42 34 41", null, "24 4A"],
    ];
    const longer = (text) => `昔、${text.repeat(2)}と書かれた箱がありました。\n${text}`;
    await add(page, rows.map(([encoding, , beyond]) => file(`${encoding}.txt`, encode(longer(beyond ? line : line.replace("𠮷", "")), encoding))));
    for (const [encoding, kanji, beyond, kana] of rows) {
        await select(page, encoding);
        const last = page.locator(".text .line").nth(3);
        await last.waitFor();
        await page.locator(".text").focus();
        for (const key of ["ArrowDown", "ArrowDown", "ArrowDown", "ArrowDown", "ArrowRight", "ArrowRight"]) {
            await page.keyboard.press(key);
        }
        await page.locator(".hex b", { hasText: new RegExp(`^${kanji}$`) }).waitFor();
        if (beyond) {
            await page.keyboard.press("ArrowRight");
            await page.keyboard.press("ArrowRight");
            await page.locator(".hex b", { hasText: beyond }).waitFor();
        }
        const { width, height } = await last.evaluate((element) => {
            const range = document.createRange();
            range.selectNodeContents(element);
            return range.getBoundingClientRect();
        });
        for (const from of [0.6, 0.1]) {
            // both halves of the last character, which takes about a tenth of the line
            await last.hover({ position: { x: width - from * (width / 12), y: height / 2 } });
            await page.locator(".hex b", { hasText: kana }).waitFor();
        }
    }
    await page.context().close();
});

test("an open text is read side by side, and as the user says", async () => {
    const page = await open(browser, site.url);
    await add(page, [files[1]]);
    assert.deepEqual(await page.locator(".compare h4").allTextContents(), ["Shift_JIS", "EUC-JP"]);
    await page.locator(".compare .line").nth(1).waitFor();
    assert.deepEqual(await page.locator(".compare .line").allTextContents(), ["蒭螂", "籔絅"]);
    assert.equal(await page.locator(".evidence .chip.open").count(), 2);
    await page.getByRole("button", { name: "Read as EUC-JP" }).click();
    const { path } = await saved(page, () => page.click("#save-one"));
    assert.equal(readFileSync(path, "utf8"), "籔絅\n");
    await page.context().close();
});

test("mojibake is proposed to be mended, pasted or in a file, and stays as it is", async () => {
    const page = await open(browser, site.url);
    const sound = "日本語の文字が化けました。困ったものです。";
    const broken = execFileSync("iconv", ["-f", "ISO-8859-1", "-t", "UTF-8"], { input: sound }).toString();
    await page.fill("#mend-text", broken);
    await page.getByText(sound).waitFor();
    assert.match(await page.locator("#mend-result").textContent(), /How it was broken: UTF-8 read as ISO-8859-1/);
    await page.fill("#mend-text", sound);
    await page.getByText("No misreading found").waitFor();
    await page.fill("#mend-text", "");

    await add(page, [file("broken.txt", broken), file("sound.txt", sound)]);
    assert.equal(await page.locator("#list .alarm").textContent(), "garbled?");
    const mended = await saved(page, () => page.getByRole("button", { name: "Save the mended text" }).click());
    assert.equal(readFileSync(mended.path, "utf8"), sound);
    const { path } = await saved(page, () => page.click("#save-one"));
    assert.equal(readFileSync(path, "utf8"), broken);
    await page.context().close();
});

test("keys alone convert a file", async () => {
    const page = await open(browser, site.url, { locale: "ja-JP" });
    const reach = async (id) => {
        for (let press = 0; press < 60; ++press) {
            await page.keyboard.press("Tab");
            if ((await page.evaluate(() => document.activeElement.id)) === id) {
                return;
            }
        }
        assert.fail(`${id} is not reached`);
    };
    const chooser = page.waitForEvent("filechooser");
    await reach("choose-files");
    await page.keyboard.press("Enter");
    await (await chooser).setFiles([file("a.txt", "日本語\n")]);
    await page.locator("#save-one").waitFor();
    await reach("to");
    await page.keyboard.type("EUC");
    await page.locator("#save-one").waitFor();
    await reach("save-one");
    const { path } = await saved(page, () => page.keyboard.press("Enter"));
    assert.equal(encode("日本語\n", "EUC-JP").compare(readFileSync(path)), 0);
    await page.context().close();
});

test("it works offline once it was open, and remembers language and colours", async () => {
    const page = await open(browser, site.url);
    await page.getByText("Ready for offline use.").waitFor();
    await page.selectOption("#language", "ja");
    await page.selectOption("#theme", "dark");
    await page.context().setOffline(true);
    await page.reload();
    await page.locator("body.ready").waitFor();
    assert.equal(await page.locator("html").getAttribute("data-theme"), "dark");
    await add(page, [file("a.txt", encode("拝啓　若葉の季節になりました", "CP932"))]);
    await page.getByText("若葉の季節", { exact: false }).waitFor();
    await page.context().close();
});

test("nothing leaves, nothing fails", async () => {
    const other = await serve("site");
    const page = await open(browser, site.url);
    const isLet = await page.evaluate((url) => fetch(url, { mode: "no-cors" }).then(() => true, () => false), other.url);
    other.server.close();
    assert.equal(isLet, false);
    assert.deepEqual(requests.filter((url) => !url.startsWith(site.url) && !url.startsWith("blob:")), []);
    assert.deepEqual(failures.filter((failure) => !failure.includes(other.url)), []);
    await page.context().close();
});
