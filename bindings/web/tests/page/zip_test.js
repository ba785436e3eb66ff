// Archives of more than 4 GB: what stands in front of the contents and behind them, in a file with a hole for these.
import assert from "node:assert/strict";
import { execFileSync } from "node:child_process";
import { closeSync, mkdtempSync, openSync, rmSync, writeSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { test } from "node:test";
import { zipParts } from "./site/zip.js";

test("an archive of more than 4 GB can be read", (context) => {
    const long = { size: 5e9 };
    const short = Buffer.from("ok");
    const time = new Date(2026, 3, 2, 1, 2, 4).getTime();
    const parts = zipParts([
        { path: "long.txt", blob: long, crc: 1, time },
        { path: "日本.txt", blob: Object.assign(short, { size: short.length }), crc: 0x79dcdd47, time },
    ]);
    const folder = mkdtempSync(join(tmpdir(), "page-test-"));
    context.after(() => rmSync(folder, { recursive: true }));
    const path = join(folder, "long.zip");
    const file = openSync(path, "w");
    let at = 0;
    for (const part of parts) {
        if (part !== long) {
            writeSync(file, part, 0, part.length, at);
        }
        at += part === long ? long.size : part.length;
    }
    closeSync(file);
    const code = "import sys, zipfile; z = zipfile.ZipFile(sys.argv[1]); print([(i.filename, i.file_size, i.date_time) for i in z.infolist()], z.read('日本.txt'))";
    const told = execFileSync("/usr/bin/python3", ["-c", code, path]).toString().trim();
    assert.equal(told, `[('long.txt', ${long.size}, (2026, 4, 2, 1, 2, 4)), ('日本.txt', 2, (2026, 4, 2, 1, 2, 4))] b'ok'`);
});
