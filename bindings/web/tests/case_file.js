// Reads the case files of tests/data; tests/support/case_file.h tells their format.

/** "82A0 61*3" as bytes. */
export function parseBytes(hex) {
    const bytes = [];
    for (const word of hex.split(/[\s/]+/).filter(Boolean)) {
        const [digits, times = "1"] = word.split("*");
        const unit = digits.match(/../g).map((digit) => parseInt(digit, 16));
        for (let i = 0; i < Number(times); ++i) {
            bytes.push(...unit);
        }
    }
    return Uint8Array.from(bytes);
}

const parseOptions = (words) =>
    [...words.matchAll(/([^\s=]+)(?:=(\S*))?/g)].map(([, name, value = ""]) => [name, value]);

/** Yields name, options, input and output of each case. */
export function* readCases(text) {
    let name, shared, input;
    for (const [index, line] of text.split("\n").entries()) {
        const cells = line.replace(/^> /, "").split("|");
        if (line === "" || line.startsWith("#")) {
            continue;
        } else if (line.startsWith("> ")) {
            const options = Object.fromEntries([...shared, ...parseOptions(cells[0])]);
            yield { name, line: index + 1, options, input, output: cells.slice(1).join("|").trim() };
        } else {
            [name, shared, input] = [cells[0].trim(), parseOptions(cells[1]), parseBytes(cells[2])];
        }
    }
}
