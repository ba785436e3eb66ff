// Writes the modules of a folder anew as CommonJS, beside themselves: each import stands on a line of its own, and what
// is exported is declared where it is.
import { readFileSync, readdirSync, writeFileSync } from "node:fs";
import { join } from "node:path";

const [folder] = process.argv.slice(2);
for (const name of readdirSync(folder).filter((name) => name.endsWith(".js"))) {
    const exported = [];
    const remember = (names) => exported.push(...names.split(",").map((name) => name.trim()));
    const text = readFileSync(join(folder, name), "utf8")
        .replace(/^import (\{.*\}) from "(.*)\.js";$/gm, 'const $1 = require("$2.cjs");')
        .replace(/^export \{(.*)\};\n/gm, (_, names) => (remember(names), ""))
        .replace(/^export ((?:class|function|const) (\w+))/gm, (_, declared, name) => (remember(name), declared))
        .replaceAll("import.meta.url", 'require("node:url").pathToFileURL(__filename)');
    if (/^(import|export) /m.test(text)) {
        throw new Error(`${name}: an import or export in another form`);
    }
    const module = `"use strict";\n${text}\nmodule.exports = { ${exported.join(", ")} };\n`;
    writeFileSync(join(folder, name.replace(/js$/, "cjs")), module);
}
