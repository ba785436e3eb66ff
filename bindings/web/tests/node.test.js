// Runs the tests in Node, and those of the package's files. JKC_PACKAGE is the folder of the package.
import { spawnSync } from "node:child_process";
import { readFile, readdir } from "node:fs/promises";
import { createRequire } from "node:module";
import { test } from "node:test";
import { pathToFileURL } from "node:url";
import { setFlagsFromString } from "node:v8";
import { runInNewContext } from "node:vm";
import { gzipSync } from "node:zlib";

import behaviour from "./behaviour.js";
import cases from "./cases.js";
import { equal, failure } from "./harness.js";

const root = new URL("../../../", import.meta.url);
const folder = pathToFileURL(`${process.env.JKC_PACKAGE}/`);
const { load } = await import(new URL("jkc.js", folder));
const jkc = await load();
const context = {
    test,
    jkc,
    read: (name) => readFile(new URL(`tests/data/${name}`, root), "utf8"),
    loadAnew: async () => (await import(new URL("jkc.js?anew", folder))).load(),
};

cases(context);
behaviour(context);

test("CommonJS has something else", async () => {
    const common = createRequire(import.meta.url)(new URL("jkc.cjs", folder).pathname);
    const other = await common.load();
    equal(Object.keys(common), Object.keys(await import(new URL("jkc.js", folder))));
    equal(other.detect(Uint8Array.of(0x82, 0xa0)), jkc.detect(Uint8Array.of(0x82, 0xa0)));
    equal((await failure(() => other.encode("a", "?"))) instanceof common.JkcError, true);
});

test("what is loaded otherwise is none, or another one the next time", async () => {
    const { load } = await import(new URL("jkc.js?otherwise", folder));
    equal((await failure(() => load(new URL("none.wasm", folder)))).code, "ENOENT");
    equal((await failure(() => load(Uint8Array.of(0)))).name, "CompileError");
    const made = await load(new WebAssembly.Module(await readFile(new URL("jkc.wasm", folder))));
    equal(made.decode(Uint8Array.of(0x82, 0xa0)), "あ");
    equal((await load()) === made, true);
});

test("what is not freed stays", async () => {
    setFlagsFromString("--expose-gc");
    const collect = runInNewContext("gc");
    for (let i = 0; i < 30; ++i) {
        for (let j = 0; j < 1000; ++j) {
            jkc.createConverter({ from: "UTF-8", to: "EUC-JP" }).feed(Uint8Array.of(0x61));
        }
        collect();
        await new Promise((resolve) => setTimeout(resolve));
    }
    equal(jkc.memorySize < 64 * 2 ** 20, true, `${jkc.memorySize} bytes`);
});

test("the package has too much or too little", async () => {
    const modules = ["conversion", "converter", "detector", "encodings", "error", "jkc", "native", "unmojibake"];
    const files = ["LICENSE", "README.md", "jkc.d.cts", "jkc.d.ts", "jkc.wasm", "package.json"];
    files.push(...modules.flatMap((name) => [`${name}.js`, `${name}.cjs`]));
    equal((await readdir(folder)).sort(), files.sort());
    const packed = spawnSync("npm", ["pack", "--dry-run", "--json", "--offline"], { cwd: folder, encoding: "utf8" });
    if (packed.error === undefined) {
        equal(JSON.parse(packed.stdout)[0].files.map(({ path }) => path).sort(), files.sort());
    }
    const wasm = await readFile(new URL("jkc.wasm", folder));
    const imports = WebAssembly.Module.imports(new WebAssembly.Module(wasm)).map(({ name }) => name);
    equal(imports.sort(), ["lose", "memory_is_short", "proc_exit", "write"]);
    const size = gzipSync(wasm).length;
    equal(size < 600000, true, `${size} bytes with gzip`);
});

test("an encoding that the program knows has no name here", async () => {
    const program = await readFile(new URL("cli/code_types.cpp", root), "utf8");
    const rows = [...program.matchAll(/CodeType\{JKC_TYPE_(\w+),[^}]*?"([^"]*)"\}/g)];
    equal(rows.length, jkc.encodings.length);
    for (const [index, [, , names]] of rows.entries()) {
        for (const name of names.split(" ")) {
            equal(jkc.convert(new Uint8Array(), { from: name, to: "UTF-8" }).from, jkc.encodings[index].name, name);
        }
    }
});
